// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/run_windows.h"

#include <utility>

#include "link/execution.h"
#include "windows/mmi_form.h"
#include "windows/run_form.h"
#include "windows/servo_fault.h"

namespace tavlo {

RunWindows::RunWindows(QWidget* main_window, std::function<void(bool)> hold)
    : main_window_(main_window), hold_(std::move(hold)) {}

RunForm& RunWindows::Form(RunWindow window) {
  if (window == RunWindow::fakeMMI) {
    if (fake_mmi_ == nullptr) fake_mmi_ = new MmiForm(*desk_, main_window_, hold_);
    return *fake_mmi_;
  }
  if (exec_status_ == nullptr) exec_status_ = new RunForm(*desk_, window, main_window_, hold_);
  return *exec_status_;
}

RunWindow RunWindows::Active() const {
  if (exec_status_ != nullptr && exec_status_->isVisible()) return RunWindow::ExecStatus;
  if (fake_mmi_ != nullptr && fake_mmi_->isVisible()) return RunWindow::fakeMMI;
  return RunWindow::None;
}

RunForm* RunWindows::Shown() const {
  switch (Active()) {
    case RunWindow::ExecStatus: return exec_status_;
    case RunWindow::fakeMMI: return fake_mmi_;
    case RunWindow::None: break;
  }
  return nullptr;
}

void RunWindows::Stop() {
  if (RunForm* form = Shown()) return form->Stop();
  StopHubNow(*desk_);
}

void RunWindows::BoxGone() {
  if (RunForm* form = Shown()) form->ActivateAgain();
}

void RunWindows::ShowModal(RunWindow window) {
  Form(window).ShowModal();
}

void RunWindows::Hide() {
  if (RunForm* form = Shown()) form->hide();
}

void RunWindows::StatusChanged(int axis) {
  if (RunForm* form = Shown()) form->ShowAxis(axis);
}

void RunWindows::ControlsChanged() {
  if (RunForm* form = Shown()) form->ShowControls();
}

void RunWindows::TextLinesChanged() {
  if (fake_mmi_ != nullptr) fake_mmi_->TextLinesChanged();
}

void RunWindows::ShowServoFault(const ServoFaultPanel& panel) {
  if (servo_fault_ == nullptr) servo_fault_ = new ServoFaultForm(main_window_);
  servo_fault_->Show(panel);
  // A second fault only refreshes what stands.
  if (!servo_fault_->isVisible()) servo_fault_->exec();
}

}  // namespace tavlo
