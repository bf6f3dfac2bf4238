// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "model/program.h"

namespace tavlo {

/// Returns the one-line text of a program line, in the operator's words. Returns nothing for types that leave
/// the row's text unchanged: FE, the hub's code for the menu, and any type that does not exist.
[[nodiscard]] std::optional<std::string> ShortDesc(const Program& program, int line);

[[nodiscard]] std::string MultiIfShort(const Program& program, int line);
[[nodiscard]] std::string MultiWaitShort(const Program& program, int line);

/// Doubles each "&", so that a label shows it unchanged.
[[nodiscard]] std::string DoubleAmps(std::string_view text);

/// Returns the caption as it is shown, with "&" for each "&&".
[[nodiscard]] std::string ShownCaption(std::string_view caption);

/// Drops characters from the end until the drawn text fits. No mark shows that it was cut.
[[nodiscard]] std::string FitText(std::string text, double limit,
                                  const std::function<double(std::string_view)>& drawn_width);

}  // namespace tavlo
