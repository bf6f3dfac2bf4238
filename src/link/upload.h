// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <optional>
#include <string>

#include "session/desk.h"

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

/// What a reading of the hub's memory gave.
struct ImageReading {
  /// Done, Stopped or WrongSum.
  UploadResult result = UploadResult::Stopped;
  /// The 8192 bytes, proven by their sum; empty unless Done.
  std::string image;
};

/// Reads the hub's memory and touches nothing else. `upbox` stands from the start on; a failure has been told
/// and hides it again, after Done it is the caller's to hide. Receive events must be off.
[[nodiscard]] ImageReading ReadImage(const Link& link, const TransferGauge& gauge);

/// Reads the hub's memory and puts its lines and settings in the place of the program's, and shows them. What
/// the memory does not carry stays as it was. `rev` is the hub's firmware.
UploadResult UploadProg(Desk& desk, float rev);

/// The `Upload` button. Gives how it ended; nothing if it did not come to a transfer.
std::optional<UploadResult> Upload(Desk& desk);

}  // namespace tavlo
