// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "cli/console/exit_code.h"
#include "cli/simulate/happening.h"
#include "model/program.h"

namespace tavlo::cli {

// What is said of a simulated run, in rows and in JSON alike. Texts of the program are single bytes.

/// Returns "end", "halt", "waits", "stuck", "limit" or "stopped".
[[nodiscard]] std::string_view NameOf(Ending ending);
[[nodiscard]] ExitCode ExitOf(Ending ending);
/// Returns how the run ended, as a sentence. `limit` is its limit of time in seconds.
[[nodiscard]] std::string EndingText(const RunSummary& summary, double limit);

/// Returns the lines that do something when they run, and never did.
[[nodiscard]] std::vector<int> NeverRan(const Program& program, const RunSummary& summary);

/// Returns the name of an axis, "hub" for the Hub Quad's own inputs and outputs.
[[nodiscard]] std::string NameOfAxis(const Program& program, int axis);
/// Returns "1" to "4", or "Y1" to "Y3".
[[nodiscard]] std::string NameOfOutput(int output);
[[nodiscard]] std::string_view NameOfLevel(bool high);

/// Rounds to the microsecond, far below what a machine keeps to.
[[nodiscard]] double RoundedSeconds(double seconds);

}  // namespace tavlo::cli
