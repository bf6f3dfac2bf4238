// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <QWidget>
#include <optional>

#include "hubsim/hub.h"

class QComboBox;
class QLabel;
class QPushButton;
class QSpinBox;

namespace tavlo::hubsim {

/// The hub as a whole: what it does, its power and its cable, what goes wrong, the operator's display.
class HubControls : public QWidget {
  Q_OBJECT

 public:
  explicit HubControls(QWidget* parent);
  void Show(const Hub& hub);

 signals:
  void StopClicked();
  void PowerClicked();
  /// Takes the cable off, or puts it back.
  void CableClicked();
  void FailureChosen(const FailurePlan& plan);

 private:
  QWidget* MakeButtons();
  QWidget* MakeFailure();
  QWidget* MakeDisplay();
  void Choose();
  void ShowFailure(const FailurePlan& plan);

  QLabel* state_;
  QPushButton* cable_;
  QComboBox* mode_;
  QSpinBox* number_;
  QLabel* meaning_;
  QLabel* option_;
  QLabel* display_;
  std::optional<bool> unplugged_;
  std::optional<FailurePlan> plan_;
};

}  // namespace tavlo::hubsim
