// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "session/desk.h"

namespace tavlo {

/// How a download ended. Every end but Done has been reported to the operator.
enum class DownloadResult {
  Done,
  Refused,        ///< by a check; the hub was not touched
  CannotCompile,  ///< the hub was not touched
  NoAnswer,       ///< to the download command
  StoppedInLines,
  StoppedInSystem,
  StoppedInPool,
  NoSum,
  WrongSum,
};

/// Sends the whole program and checks it by the sum that the hub returns. All lines and settings are compiled
/// before the first byte is sent, from a copy: a program that cannot be compiled stays as it is. From
/// firmware 1.19 on, the drives are set up afterwards. `rev` is the hub's firmware.
DownloadResult DownloadProg(Program& program, const Link& link, const TransferGauge& gauge, float rev);

/// The `Download` button: asks the hub for its identity, checks the program and sends it. Returns nothing if
/// another operation is under way or the hub did not identify itself. A refused download leaves every line as
/// it was.
std::optional<DownloadResult> Download(Desk& desk);

}  // namespace tavlo
