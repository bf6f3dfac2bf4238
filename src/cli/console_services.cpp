// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/console_services.h"

#include "desk/desk.h"

namespace tavlo::cli {

Answer ConsoleBoxes::MsgBox(std::string_view text, std::string_view title, Buttons buttons, Icon icon) {
  shown_.push_back({std::string(text), std::string(title), buttons, icon});
  const bool own_title = !title.empty() && title != kApplicationTitle;
  const std::string message = own_title ? std::string(title) + ": " + std::string(text) : std::string(text);
  return console_.Ask(message, buttons, by_);
}

}  // namespace tavlo::cli
