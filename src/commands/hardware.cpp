// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "commands/hardware.h"

#include "commands/editing_now.h"
#include "session/grid.h"

namespace tavlo {

void ChangeRes(Desk& desk, const std::function<DriveScan()>& scan) {
  // Under a transfer or a run the program stays what the hub was given.
  if (desk.source.link.Busy || desk.run.Active() != RunWindow::None || desk.source.Editing) return;
  if (desk.editors == nullptr) return;
  {
    const EditingNow editing(desk.source);
    if (desk.editors->EditHardware(desk.program(), scan)) desk.source.Changed = true;
  }
  ShowDrive(desk.view);
  ShowAllDescs(desk.grid());
}

}  // namespace tavlo
