// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QWidget>
#include <array>
#include <functional>

#include "desk/desk.h"

class QEventLoop;
class QLabel;
class QPushButton;

namespace tavlo {

/// The window that stands while a program runs: what runs, the operator terminal's display if the program
/// uses it, and Stop. It has no panel of inputs and outputs.
///
/// It is modal in that ShowModal() returns when it is gone and no command of the main window can be reached
/// meanwhile; the grid and its scroll bar can be used.
class RunBar : public QWidget, public RunView {
  Q_OBJECT

 public:
  /// `hold` is told when the run begins and ends.
  RunBar(QWidget* main_window, std::function<void(bool)> hold);
  void Attach(Desk& desk) { desk_ = &desk; }

  [[nodiscard]] RunWindow Active() const override { return window_; }
  void ShowModal(RunWindow window) override;
  void Hide() override;
  void StatusChanged(int) override {}
  void ControlsChanged() override {}
  void TextLinesChanged() override;
  void ShowServoFault(const ServoFaultPanel& panel) override;

 protected:
  bool event(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  void PlaceBesideGrid();
  void Stop();

  Desk* desk_ = nullptr;
  std::function<void(bool)> hold_;
  RunWindow window_ = RunWindow::None;
  QEventLoop* loop_ = nullptr;
  QLabel* state_;
  QWidget* display_;
  std::array<QLabel*, 4> textline_{};
  QPushButton* stop_;
  bool fault_shown_ = false;
  bool fault_again_ = false;
  std::string fault_text_;
};

}  // namespace tavlo
