// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "model/axis_config.h"
#include "model/inputs.h"
#include "model/program.h"

namespace tavlo {

struct Lights;

/// What a light shows. Limit switches use the two red states.
enum class Led { GreenOff, Green, RedOff, Red, Unknown };

/// The groups of lights. Within a group, the index of a light is its bit in the message.
enum class LedRow {
  INlo,   ///< main inputs 1 to 8
  INX,    ///< inputs X1 to X7
  OUTlo,  ///< main outputs 1 to 4
  OUTY,   ///< outputs Y1 to Y3
};
inline constexpr std::array kLedRows = {LedRow::INlo, LedRow::INX, LedRow::OUTlo, LedRow::OUTY};
inline constexpr int kXInputs = 7;
inline constexpr int kMainOutputs = 4;
inline constexpr int kYOutputs = 3;
[[nodiscard]] int LedsOf(LedRow row);

/// Pictures of the three controls that show the state of the run.
enum class Picture { PlayGreen, PlayGray, PauseRed, PauseGray, StepYellow, StepGray };

/// How far a run has come. It is pausing until the hub says before which line it stands.
enum class RunPhase { Running, Pausing, Paused, Stepping, Stopped };
/// Returns "running", "pausing", "paused", "stepping" or "stopped".
[[nodiscard]] std::string_view PhaseText(RunPhase phase);

/// The panel of inputs and outputs and the run controls, the same in both run windows.
struct RunPanel {
  /// By axis 0..7, then by bit.
  std::array<std::array<Led, kMainInputs>, kAxes> INlo;
  std::array<std::array<Led, kXInputs>, kAxes> INX;
  std::array<std::array<Led, kMainOutputs>, kAxes> OUTlo;
  std::array<std::array<Led, kYOutputs>, kAxes> OUTY;
  /// The program runs freely and is not paused.
  bool Running = false;
  Picture Play = Picture::PlayGray;
  Picture Pause = Picture::PauseGray;
  Picture SingleStep = Picture::StepGray;
  std::string_view lblUpdate;
  RunPhase phase = RunPhase::Stopped;

  [[nodiscard]] Led At(LedRow row, int axis, int bit) const;
};

/// Sets all lights to rest, as before the first status. Limit switches are red where they are among the main
/// inputs or X1 to X7.
void MakeLimitsRed(RunPanel& panel, const Program& program);

/// Whether the bit is a limit switch of the drive and therefore drawn red.
[[nodiscard]] bool RedLED(const Program& program, int bit, int axis);

// Take the status of axis 0..7 as the hub sends it; a clear bit means on.
void ShowStatus(const Lights& lights, int axis, int inputs, int outputs);
void ShowXStatus(const Lights& lights, int axis, int inputs);
void ShowOutStatus(const Lights& lights, int axis, int outputs);

/// Returns the number of columns of the panel. On the Hub Quad the fifth shows the hub's own inputs and
/// outputs.
[[nodiscard]] int PanelColumns(const Program& program);
/// Returns "1" to "8", or "Hub".
[[nodiscard]] std::string ColumnCaption(const Program& program, int axis);
/// Whether the axis has this light.
[[nodiscard]] bool ShowsLed(const Program& program, LedRow row, int axis, int bit);
/// Returns the caption beside the light: "2", "X2", "Y2".
[[nodiscard]] std::string LedCaption(LedRow row, int bit);
/// Returns what the light is and shows, for those who cannot see it: "axis 3 input 2: on".
[[nodiscard]] std::string LedName(const Program& program, LedRow row, int axis, int bit, Led led);

}  // namespace tavlo
