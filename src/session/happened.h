// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string>

#include "session/desk.h"

namespace tavlo {

/// How many of the last events are kept.
inline constexpr std::size_t kHappenings = 10;

/// Something has happened that the operator may want to know later: "Saved cut-to-length.TVH".
void Happened(Desk& desk, std::string text);

/// Seconds since midnight as "17:44", and as "17:44:05".
[[nodiscard]] std::string TimeText(double seconds);
[[nodiscard]] std::string TimeTextWithSeconds(double seconds);

/// "3,180 bytes"
[[nodiscard]] std::string BytesText(int bytes);
/// The same and the time that they took: "3,180 bytes in 1.9 s". Both times are seconds since midnight, which
/// may have passed between them.
[[nodiscard]] std::string PaceText(int bytes, double from, double to);

}  // namespace tavlo
