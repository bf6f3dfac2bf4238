// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QElapsedTimer>
#include <QWidget>
#include <functional>
#include <optional>

#include "session/desk.h"

class QEventLoop;
class QHBoxLayout;
class QScrollArea;

namespace tavlo {

class LedPanel;
class RunControls;
class RunWatch;

/// Where a window of this size goes beside the main window: at its right, else at its left, where the room on
/// the screen is wide enough, else at `told`; all of it in the room, if it can be.
[[nodiscard]] QPoint PlaceBeside(const QRect& main, const QRect& room, const QSize& size, const QPoint& told);

/// A window that stands while a program runs: `ExecStatus` as it is, `fakeMMI` with a display and keys beside
/// the same panel and the same controls.
///
/// It is modal in that ShowModal() returns when it is gone and no command of the main window can be reached
/// meanwhile; the grid and its scroll bar can be used. Escape stops the run, whichever of our windows has the
/// focus. It is hidden and not destroyed.
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
  /// What has the focus when the window comes up.
  [[nodiscard]] virtual QWidget* FirstFocus();
  bool event(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  void ConnectControls();
  void Place();
  void FitLights();
  [[nodiscard]] QSize Frame() const;
  [[nodiscard]] QRect Room() const;
  void ActivateAgain();
  void Stop();

  Desk& desk_;
  RunWindow window_;
  std::function<void(bool)> hold_;
  QHBoxLayout* body_;
  QScrollArea* lights_;
  LedPanel* leds_;
  RunControls* controls_;
  RunWatch* watch_;
  QEventLoop* loop_ = nullptr;
  bool stopping_ = false;
  /// Where it came up last, and where the operator moved it.
  QPoint placed_;
  std::optional<QPoint> chosen_;
  QElapsedTimer shown_;
};

}  // namespace tavlo
