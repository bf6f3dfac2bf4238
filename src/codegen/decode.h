// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <stdexcept>
#include <string_view>

#include "model/program.h"

namespace tavlo {

/// Bytes that no line can have been compiled to and that cannot be read. what() is a clause, or from
/// `DecodeImage` a sentence, for the operator.
class DecodeError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The way back from `Compile`, `SysString` and `ImageOf`. Any bytes are allowed; fewer than are asked for
// count as if zeros stood behind them. What the way back does not restore stands in `kDecodeExceptions`.

/// Reads the 32 bytes of a line into the record `line`, 0..199. `pool` is the hub's pool of prompt texts.
///
/// Nothing is cleared first: a field that this type of line does not carry keeps what it held. A type that
/// there is not only sets `Type`. `HubVersion` and the drive models must be those of the bytes. Throws
/// DecodeError; some fields of the line have then been set.
void Decode(Program& program, int line, std::string_view slot, std::string_view pool);

/// Reads the 256 bytes of axis settings into the eight axes, the limit list and its line. `StepResCode` is
/// not among them, so the axis keeps its own. A limit action that the list cannot show leaves the list as it
/// was.
void DecodeSystem(Program& program, std::string_view system);

/// Reads the hub's memory, 8192 bytes, and runs `ScanLoops`. `HubVersion` must be that of the bytes.
/// Throws DecodeError, the program being as it was.
void DecodeImage(Program& program, std::string_view image);

}  // namespace tavlo
