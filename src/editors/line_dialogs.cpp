// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "editors/line_dialogs.h"

#include "editors/editor_dialog.h"
#include "editors/hardware_dialog.h"
#include "editors/pick_prog.h"
#include "forms/registry.h"

namespace tavlo {

LineDialogs::LineDialogs(MessageBoxes& boxes, Help& help, QWidget* main_window)
    : boxes_(boxes), help_(help), main_window_(main_window) {}

LineDialogs::~LineDialogs() = default;

void LineDialogs::ShowPickProg(int line, const std::function<bool(const Picked&)>& act) {
  if (!picker_) picker_ = std::make_unique<PickProg>(main_window_);
  picker_->Run(line, act);
}

bool LineDialogs::Edit(Program& program, int line, DialogPage page) {
  const FormRow* row = FormOf(program.Prog[line].Type);
  if (row == nullptr) return false;
  std::unique_ptr<EditorDialog>& dialog = dialogs_[row->name];
  if (!dialog) dialog = std::make_unique<EditorDialog>(*row, boxes_, help_, main_window_);
  return dialog->Edit(program, line, page);
}

bool LineDialogs::EditHardware(Program& program, const std::function<DriveScan()>& scan) {
  if (!hardware_) hardware_ = std::make_unique<HardwareDialog>(boxes_, help_, main_window_);
  return hardware_->Edit(program, scan);
}

}  // namespace tavlo
