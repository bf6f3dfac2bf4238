// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QWidget>
#include <array>

#include "session/desk.h"

class QLabel;
class QToolButton;

namespace tavlo {

/// Play, Pause, SingleStep, Reset and Stop of a run, and the display of its status.
class RunControls : public QWidget {
  Q_OBJECT

 public:
  explicit RunControls(QWidget* parent);
  void Show(const RunPanel& panel);

 signals:
  void PlayClicked();
  void PauseClicked();
  void SingleStepClicked();
  void ResetClicked();
  void StopClicked();

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void DrawPictures();
  QToolButton* Add(const char* name, const QString& caption, const QString& tool_tip);

  QToolButton* play_;
  QToolButton* pause_;
  QToolButton* single_step_;
  QToolButton* reset_;
  QToolButton* stop_;
  QLabel* update_;
  QLabel* state_;
  /// The pictures of Play, Pause and SingleStep.
  std::array<Picture, 3> shown_ = {Picture::PlayGray, Picture::PauseGray, Picture::StepGray};
};

}  // namespace tavlo
