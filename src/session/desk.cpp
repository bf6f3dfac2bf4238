// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "session/desk.h"

#include <utility>

namespace tavlo {

Answer MsgBox(Desk& desk, Box box) {
  return desk.boxes.MsgBox(std::move(box));
}

Answer MsgBoxAbout(Desk& desk, std::optional<int> line, Box box) {
  if (line) desk.view.GoTo(*line);
  return MsgBox(desk, std::move(box));
}

void WaitSecs(Desk& desk, double seconds) {
  desk.loop.YieldFor(seconds);
}

}  // namespace tavlo
