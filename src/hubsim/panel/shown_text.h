// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <QString>
#include <string_view>

namespace tavlo::hubsim {

/// The hub's texts are single bytes, Latin-1 where they are no ASCII.
[[nodiscard]] inline QString ShownText(std::string_view text) {
  return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}

}  // namespace tavlo::hubsim
