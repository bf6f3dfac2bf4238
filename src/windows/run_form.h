// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QWidget>
#include <functional>

#include "desk/desk.h"

class QEventLoop;
class QHBoxLayout;
class QScrollArea;

namespace tavlo {

class LedPanel;
class RunControls;

/// A window that stands while a program runs: `ExecStatus` as it is, `fakeMMI` with a display and keys beside
/// the same panel and the same controls.
///
/// It is modal in that ShowModal() returns when it is gone and no command of the main window can be reached
/// meanwhile; the grid and its scroll bar can be used. It is hidden and not destroyed.
class RunForm : public QWidget {
  Q_OBJECT

 public:
  /// `hold` is told when the run begins and ends.
  RunForm(Desk& desk, RunWindow window, QWidget* main_window, std::function<void(bool)> hold);

  void ShowModal();
  void ShowAxis(int axis);
  void ShowControls();

 protected:
  [[nodiscard]] Desk& Handlers() { return desk_; }
  /// The row of the panel; what is added stands to its left.
  [[nodiscard]] QHBoxLayout& Body() { return *body_; }
  bool event(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  void ConnectControls();
  void PlaceOverMain();
  void FitLights();
  [[nodiscard]] QRect Room() const;
  void Stop();

  Desk& desk_;
  RunWindow window_;
  std::function<void(bool)> hold_;
  QHBoxLayout* body_;
  QScrollArea* lights_;
  LedPanel* leds_;
  RunControls* controls_;
  QEventLoop* loop_ = nullptr;
  bool placed_ = false;
};

}  // namespace tavlo
