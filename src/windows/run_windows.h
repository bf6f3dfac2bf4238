// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <functional>

#include "session/desk.h"

class QEventLoop;
class QWidget;

namespace tavlo {

class MmiForm;
class RunForm;
class ServoFaultForm;

/// The windows of a run. They are children of the main window and are created at their first use.
class RunWindows : public RunView {
 public:
  /// `hold` is called when a run begins and when it ends.
  RunWindows(QWidget* main_window, std::function<void(bool)> hold);
  void Attach(Desk& desk) { desk_ = &desk; }
  /// `StopButton`, and the key that stops: the Stop of the window that is up, and where none is up, the hub.
  void Stop();
  /// A box has gone: whatever had the focus before it, the operator belongs in the window of the run now.
  void BoxGone();

  [[nodiscard]] RunWindow Active() const override;
  void ShowModal(RunWindow window) override;
  void Hide() override;
  void StatusChanged(int axis) override;
  void ControlsChanged() override;
  void TextLinesChanged() override;
  void ShowServoFault(const ServoFaultPanel& panel) override;

 private:
  [[nodiscard]] RunForm& Form(RunWindow window);
  [[nodiscard]] RunForm* Shown() const;

  QWidget* main_window_;
  std::function<void(bool)> hold_;
  Desk* desk_ = nullptr;
  RunForm* exec_status_ = nullptr;
  MmiForm* fake_mmi_ = nullptr;
  ServoFaultForm* servo_fault_ = nullptr;
};

}  // namespace tavlo
