// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/desk/console_services.h"

namespace tavlo::cli {

Answer ConsoleBoxes::Show(const Box& box) {
  shown_.push_back(box);
  const bool own_title = !box.title.empty() && box.title != kApplicationTitle;
  return console_.Ask(own_title ? box.title + ": " + box.text : box.text, box.buttons, by_);
}

}  // namespace tavlo::cli
