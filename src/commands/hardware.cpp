// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "commands/hardware.h"

#include "commands/editing_now.h"
#include "session/edit_step.h"
#include "session/grid.h"

namespace tavlo {

void ChangeRes(Desk& desk, const std::function<DriveScan()>& scan) {
  if (ProgramHeld(desk) || desk.editors == nullptr) return;
  {
    const EditStep step(desk, "hardware settings");
    const EditingNow editing(desk.source);
    if (desk.editors->EditHardware(desk.program(), scan)) desk.source.Changed = true;
  }
  ShowDrive(desk.view);
  ShowAllDescs(desk.grid());
}

}  // namespace tavlo
