// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "platform/help.h"

#include <string>

namespace tavlo {

void Help::OpenHelp(std::string_view file, MessageBoxes& boxes) {
  if (const int error = StartViewer(); error != 0) {
    boxes.MsgBox(
        {.text = "Error " + std::to_string(error), .title = "Cannot launch help", .icon = Icon::Stop});
  } else if (!SetIndex(file)) {
    boxes.MsgBox({.text = "Cannot set help index"});
  }
}

}  // namespace tavlo
