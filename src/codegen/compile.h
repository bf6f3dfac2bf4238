// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <array>
#include <string>

#include "codegen/encodings.h"
#include "model/program.h"
#include "model/wire.h"

namespace tavlo {

/// The texts of the prompts of the lines compiled so far, in line order, each followed by a 255. It may grow
/// beyond the hub's 1536 bytes.
struct StringPool {
  std::string Pool;
  /// Offset of the next entry.
  int PoolPtr = 0;
  /// Size of the entry just added, its end mark included.
  int PoolItem = 0;
};

/// The hub's byte string of a line; at most 32 bytes for every line that the editors make. A line with a
/// prompt adds its text to the pool, so compile each line once, in order, starting with an empty pool.
///
/// Compiling changes the record in one place: an FLSO pulse above 255 becomes 255. Throws EncodeError for a
/// line that cannot be encoded.
[[nodiscard]] std::string Compile(Program& program, int line, StringPool& pool);

/// The 256 bytes of axis settings. Longer only if a unit or axis name is longer than its field.
///
/// Building it changes the settings in one place: `PeakCurrent` takes the idle current of the stepper
/// families. Throws EncodeError, which names the axis, for a setting that cannot be encoded.
[[nodiscard]] std::string SysString(Program& program);

/// Throws EncodeError for a name that is longer than its field and would shift the rest of its axis's block.
void RefuseLongNames(const Program& program);

/// Everything a download sends, compiled before a byte of it goes out.
struct CompiledProgram {
  std::array<std::string, kLines> lines;
  std::string system;
  /// With its final 0x00.
  std::string pool;
  /// The 16-bit sum that the hub will answer with.
  int checksum = 0;
};

/// Compiles the lines 0..199 in order, then the system string. Runs `ScanLoops` first. Throws EncodeError,
/// which knows its line and whose text is the whole message for the operator. It does so too for a text that
/// contains the hub's end mark and for settings that are not 256 bytes long.
[[nodiscard]] CompiledProgram CompileProgram(Program& program);

/// The hub's memory after a download of the program: 8192 bytes, unused ones 0. Whatever is longer than its
/// place is cut.
[[nodiscard]] std::string ImageOf(const CompiledProgram& compiled);

}  // namespace tavlo
