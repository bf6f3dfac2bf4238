// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <optional>

#include "desk/desk.h"

namespace tavlo {

/// The hub's memory and the 16-bit sum behind it.
inline constexpr int kUploadBytes = 8194;
/// How long the whole of it may take, in seconds; at the line's speed it takes 4.3.
inline constexpr double kUploadLimit = 5.0;

/// How a transfer ended. All but Done have been told to the operator and leave the program as it was.
enum class UploadResult {
  Done,
  Stopped,       ///< not all bytes came in time, or none
  WrongSum,      ///< receive events stay off until the next command sets them
  CannotDecode,  ///< the sum agrees, but a line's bytes cannot be read
};

/// Reads the hub's memory and puts its lines and settings in the place of the program's, and shows them. What
/// the memory does not carry stays as it was. `rev` is the hub's firmware.
UploadResult UploadProg(Desk& desk, float rev);

/// The `Upload` button. Gives how it ended; nothing if it did not come to a transfer.
std::optional<UploadResult> Upload(Desk& desk);

}  // namespace tavlo
