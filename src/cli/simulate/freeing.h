// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string>
#include <string_view>

#include "hubsim/program/statement.h"

namespace tavlo::cli {

/// Stands for an input that is not there, or for the inputs of a line that names none.
inline constexpr std::string_view kNothing = "nothing";

/// Returns what the world must do for a line to go on, or to branch elsewhere, in the words of a script:
/// "axis 1 input 3 low". It is read from the bytes in the hub, so it is what the hub waits for. Empty for a
/// line that does not depend on the world.
[[nodiscard]] std::string FreedBy(const hubsim::Statement& statement);

/// Returns a line of the hub's memory as the hub reads it.
[[nodiscard]] hubsim::Statement StatementOf(hubsim::MemoryView memory, int line, int firmware);

}  // namespace tavlo::cli
