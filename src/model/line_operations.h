// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "model/program.h"

namespace tavlo {

/// Returns how many bytes the prompt texts of the program take in the hub's pool: each with its end, and the
/// end of the pool.
[[nodiscard]] std::size_t PoolSize(const Program& program);

/// Whether the hub's pool of prompt texts would overflow if the target line held a text of this length.
/// Counts one byte for the end of each text and one for the end of the pool.
[[nodiscard]] bool StringsTooLong(const Program& program, std::size_t text_length, int target_line);

/// Pushes the line 0..199 and those below it down by one and leaves its place empty; the last line is lost.
/// The lines that name a line from there on follow it, and so does the branch of a limit. Only the kind of
/// the new line is written: its other fields keep what they held.
void InsertLine(Program& program, int line);
/// Takes the line 0..199 out and moves those below it up. What named it names its successor now.
void DeleteLine(Program& program, int line);

}  // namespace tavlo
