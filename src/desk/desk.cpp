// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "desk/desk.h"

namespace tavlo {

Answer MsgBox(Desk& desk, std::string_view text, Icon icon, std::string_view title, Buttons buttons) {
  return desk.boxes.MsgBox(text, title, buttons, icon);
}

void WaitSecs(Desk& desk, double seconds) {
  desk.loop.YieldFor(seconds);
}

}  // namespace tavlo
