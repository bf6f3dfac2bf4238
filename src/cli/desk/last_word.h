// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string_view>

#include "cli/console/environment.h"

namespace tavlo::cli {

/// For as long as it lives, a crash of the process sends these bytes to the hub.
class LastWord {
 public:
  LastWord(HubLine& line, std::string_view bytes) : line_(line) { line_.SetLastWord(bytes); }
  ~LastWord() { line_.SetLastWord(""); }
  LastWord(const LastWord&) = delete;
  LastWord& operator=(const LastWord&) = delete;

 private:
  HubLine& line_;
};

}  // namespace tavlo::cli
