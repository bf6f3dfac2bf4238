// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QDialog>
#include <QElapsedTimer>
#include <QString>
#include <functional>

#include "session/views.h"

class QHBoxLayout;

namespace tavlo {

/// The picker: a button for each kind of line, in groups, and those that insert and delete a line. A letter
/// that is typed goes to the next kind that begins with it, several to the kind that begins with all of them.
class PickProg : public QDialog {
  Q_OBJECT

 public:
  explicit PickProg(QWidget* parent);

  /// Comes up for a line 0..199 and passes each press on. It closes by a press for which `act` returns true,
  /// or without one.
  void Run(int line, const std::function<bool(const Picked&)>& act);

 protected:
  void changeEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void AddKinds(QHBoxLayout& columns);
  [[nodiscard]] QHBoxLayout* MakeButtons();
  void DrawImages();
  void Press(const Picked& picked);
  void GoToKind(QChar letter);

  std::function<bool(const Picked&)> act_;
  /// The letters that were typed without a pause, and when the last was.
  QString typed_;
  QElapsedTimer since_letter_;
};

}  // namespace tavlo
