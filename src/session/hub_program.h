// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <cstdint>
#include <string>

namespace tavlo {

/// The program in the hub, as far as this session knows it.
struct HubProgram {
  enum class By {
    Nothing,
    Download,  ///< proven by its sum
    Upload,    ///< read, and confirmed by its sum
  };
  By by = By::Nothing;
  /// The hub's memory. After a download it is 0 where nothing was sent.
  std::string image = {};
  /// Model and firmware of the hub, for which its lines were compiled.
  std::int16_t HubIndex = 0;
  float HubVersion = 0;
  /// How many bytes passed the line.
  int bytes = 0;
  /// The file of the program that was sent, with its folder; `kUntitled` if it had none.
  std::string file_name = {};
  /// Seconds since midnight.
  double at = 0;
};

/// What the hub holds beside the program that is shown.
enum class Holds { Unknown, TheProgramShown, Another };

}  // namespace tavlo
