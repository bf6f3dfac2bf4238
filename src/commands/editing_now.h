// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "session/desk.h"

namespace tavlo {

/// While it lives, a dialog is up and `CurLine` stays.
class EditingNow {
 public:
  explicit EditingNow(Source& source) : source_(source) { source_.Editing = true; }
  ~EditingNow() { source_.Editing = false; }
  EditingNow(const EditingNow&) = delete;
  EditingNow& operator=(const EditingNow&) = delete;

 private:
  Source& source_;
};

/// Whether the program must stay as it is: under a transfer or a run, when the hub is given it, and while a
/// dialog is up.
[[nodiscard]] inline bool ProgramHeld(const Desk& desk) {
  return desk.source.link.Busy || desk.run.Active() != RunWindow::None || desk.source.Editing;
}

}  // namespace tavlo
