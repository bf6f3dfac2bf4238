// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "model/inputs.h"
#include "model/program.h"

namespace tavlo {

/// What a drive does with an input of its own accord.
enum class InputUse : std::uint8_t { None, Index, JogCW, JogCCW, LimitCW, LimitCCW };

/// The dialogs that choose an input: those that wait for inputs or test them, those of moves to a sensor, and
/// that of the home sensor.
enum class InputsOf : std::uint8_t { Tests, Sensors, Home };

/// With X0 to X7 of the further block behind them.
inline constexpr int kInputs = 16;
/// The dialog of the home sensor has options for no more of the main inputs.
inline constexpr int kMainInputsOfHome = 6;

/// Returns the `IONum` of the input at a place 0..15.
[[nodiscard]] constexpr int InputNumber(int place) {
  return place < kMainInputs ? place : kFirstDriveInput + place - kMainInputs;
}

/// An input as a dialog offers it.
struct Input {
  /// The drive has it, and the dialog offers it.
  bool offered = false;
  /// It may be chosen: the drive does not guard it as its limit switch.
  bool valid = false;
  InputUse use = InputUse::None;
  std::string caption = {};
  /// Before its row, where several inputs are chosen at once.
  std::string row = {};
};

/// Returns the inputs that the axis, or on a Hub Quad the hub itself, offers to a dialog, by their places.
[[nodiscard]] std::array<Input, kInputs> LabelInputs(const Program& program, int axis, InputsOf dialog);

/// Whether the axis can be jogged by inputs during a wait.
[[nodiscard]] bool HasJogInputs(const Program& program, int axis);

}  // namespace tavlo
