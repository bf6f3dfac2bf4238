// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <stdexcept>
#include <string_view>

#include "model/program.h"

namespace tavlo {

/// Bytes that cannot be read, and that no line can have been compiled to. what() is a clause for the
/// operator; if it comes from `DecodeImage`, it is a sentence.
class DecodeError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The way back from `Compile`, `SysString` and `ImageOf`. Any bytes are allowed; if there are fewer than are
// read, the missing ones count as zeros. `kDecodeExceptions` lists what the way back does not restore.

/// Reads the 32 bytes of a line into the record `line`, 0..199. `pool` is the hub's pool of prompt texts.
///
/// Nothing is cleared first: a field that this type of line does not carry keeps its value. An unknown type
/// sets `Type` and nothing else. `HubVersion` and the drive models must be those that the bytes were made
/// for. Throws DecodeError; some fields of the line may have been set by then.
void Decode(Program& program, int line, std::string_view slot, std::string_view pool);

/// Reads the 256 bytes of axis settings into the eight axes, the limit list and the limit's line. The bytes
/// do not hold `StepResCode`, so each axis keeps its own. A limit action that the list does not have leaves
/// the list as it was.
void DecodeSystem(Program& program, std::string_view system);

/// Reads the hub's memory, 8192 bytes, and runs `ScanLoops`. `HubVersion` must be that of the bytes. If it
/// throws DecodeError, the program is unchanged.
void DecodeImage(Program& program, std::string_view image);

}  // namespace tavlo
