// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <optional>
#include <string>

#include "session/desk.h"

namespace tavlo {

/// The hub's memory, followed by its 16-bit sum.
inline constexpr int kUploadBytes = 8194;
/// How long the whole upload may take, in seconds. At the line's speed it takes 4.3.
inline constexpr double kUploadLimit = 5.0;

/// How an upload ended. Every end but Done has been reported to the operator and leaves the program as it
/// was.
enum class UploadResult {
  Done,
  Stopped,       ///< some or all of the bytes did not arrive in time
  WrongSum,      ///< receive events stay off until the next command sets them
  CannotDecode,  ///< the sum agrees, but a line's bytes cannot be read
};

/// The result of reading the hub's memory.
struct ImageReading {
  /// Done, Stopped or WrongSum.
  UploadResult result = UploadResult::Stopped;
  /// The 8192 bytes, confirmed by their sum; empty unless Done.
  std::string image;
};

/// Reads the hub's memory and changes nothing else. `upbox` is shown from the start; a failure is reported
/// and hides it, and after Done the caller must hide it. Receive events must be off.
[[nodiscard]] ImageReading ReadImage(const Link& link, const TransferGauge& gauge);

/// Reads the hub's memory, replaces the program's lines and settings by it, and shows them. What the memory
/// does not carry stays as it was. `rev` is the hub's firmware.
UploadResult UploadProg(Desk& desk, float rev);

/// The `Upload` button. Asks before changes are lost. Returns how the upload ended; nothing if none was
/// begun.
std::optional<UploadResult> Upload(Desk& desk);

}  // namespace tavlo
