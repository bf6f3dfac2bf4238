// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "model/program.h"

namespace tavlo {

/// The one-line text of a program line, in the operator's words. Nothing for a type that leaves the
/// row's text as it was: FE, the menu's hub code, and any type that there is not.
[[nodiscard]] std::optional<std::string> ShortDesc(const Program& program, int line);

/// Name of input `n` in the texts of several inputs: 0..7 inputs, 8.. and 128.. the drive's own, "X0" on.
[[nodiscard]] std::string InputName(const Program& program, int n, int axis);

[[nodiscard]] std::string MultiIfShort(const Program& program, int line);
[[nodiscard]] std::string MultiWaitShort(const Program& program, int line);

/// Doubles each "&", so that a label shows it as it stands.
[[nodiscard]] std::string DoubleAmps(std::string_view text);

/// "0%", "25%", "50%", "100%" by `IdlePct`, else empty.
[[nodiscard]] std::string_view IdleText(int idle_pct);

/// Drops characters from the end until the text's drawn width fits; no mark shows that it was cut.
[[nodiscard]] std::string FitText(std::string text, double limit,
                                  const std::function<double(std::string_view)>& drawn_width);

}  // namespace tavlo
