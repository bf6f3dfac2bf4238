// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <cstdint>
#include <optional>

namespace tavlo::hubsim {

// Inputs and outputs as the lines of a program name them.

/// Inputs 0..7 are a drive's main inputs, 8..15 its inputs X0..X7.
inline constexpr int kInputCount = 16;
inline constexpr int kFirstXInput = 8;
/// Outputs 0..3 are a drive's main outputs, 4..6 its outputs Y1..Y3.
inline constexpr int kOutputCount = 7;
inline constexpr int kFirstYOutput = 4;

/// As the wire counts them.
enum class Condition : std::uint8_t { High = 0, Low = 1, RisingEdge = 2, FallingEdge = 3 };
enum class OutputAction : std::uint8_t { High = 0, Low = 1, HighPulse = 2, LowPulse = 3 };

/// An input that a line names. `input` is empty where the drive has none of that number; such an input reads
/// high, as an open contact does.
struct InputRef {
  int axis = 0;
  std::optional<int> input;
};

}  // namespace tavlo::hubsim
