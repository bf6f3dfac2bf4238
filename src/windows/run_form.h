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

/// Returns where a window of this size goes beside the main window: to its right, or else to its left, if the
/// screen has room there; otherwise at `told`. It is moved so that it lies within the room if it can.
[[nodiscard]] QPoint PlaceBeside(const QRect& main, const QRect& room, const QSize& size, const QPoint& told);

/// A window that is up while a program runs: `ExecStatus` as it is, and `fakeMMI` with a display and keys
/// beside the same panel and the same controls.
///
/// It is modal in that ShowModal() returns only when it is hidden, and in that the commands of the main
/// window are disabled meanwhile; the grid, its scroll bar and its Stop can be used. The window
/// is hidden, not destroyed.
class RunForm : public QWidget {
  Q_OBJECT

 public:
  /// `hold` is called when the run begins and when it ends.
  RunForm(Desk& desk, RunWindow window, QWidget* main_window, std::function<void(bool)> hold);

  void ShowModal();
  void ShowAxis(int axis);
  void ShowControls();
  /// `btnStop`, pressed once: a press while the last one is being taken in does nothing.
  void Stop();
  /// Makes it the active window soon, unless a box is in front of it.
  void ActivateAgain();

 protected:
  [[nodiscard]] Desk& Handlers() { return desk_; }
  /// Returns the row of the panel. What is added goes to the left of the panel.
  [[nodiscard]] QHBoxLayout& Body() { return *body_; }
  /// Returns the widget that has the focus when the window comes up.
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

  Desk& desk_;
  RunWindow window_;
  std::function<void(bool)> hold_;
  QHBoxLayout* body_;
  QScrollArea* lights_;
  LedPanel* leds_;
  RunControls* controls_;
  QEventLoop* loop_ = nullptr;
  bool stopping_ = false;
  /// Where the window last came up, and where the operator moved it.
  QPoint placed_;
  std::optional<QPoint> chosen_;
  QElapsedTimer shown_;
};

}  // namespace tavlo
