// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tavlo::cli {

/// What can be done to a simulated machine.
enum class Doing { Input, Limit, Fault, Wheel, StopButton, Keys };

/// One act. Axes and inputs count from 0.
struct Act {
  Doing doing = Doing::StopButton;
  int axis = 0;
  int input = 0;  ///< 0..7 for the inputs 1..8, 8..15 for X0..X7
  bool high = false;
  int code = 0;  ///< of a fault
  int counts = 0;
  std::string keys;  ///< the bytes of the keypad
  std::string text;  ///< as an operator writes it
  int row = 0;       ///< of the script, from 1

  bool operator==(const Act&) const = default;
};

struct Step {
  double delay = 0;  ///< seconds after its cue
  Act act;
};

/// When something is done.
enum class CueAt {
  Time,
  EachWait,  ///< whenever a line waits for the world
  OneWait,   ///< the first time that it does so and no such cue is left from before
};

/// Steps that follow one cue, in the order of the script.
struct Cue {
  CueAt at = CueAt::Time;
  double seconds = 0;  ///< since the start of the program
  int line = 0;        ///< 0-based
  std::vector<Step> steps;
};

/// What the operator and the world do while a program is simulated.
struct InputScript {
  std::vector<Cue> cues;
};

/// A row of a script that is not understood.
struct ScriptError {
  int row = 0;
  std::string message;
};

/// Reads a script, a row for each act; docs/command-line.md tells how they are written. Adds an error for
/// each row that is not understood, and leaves it out.
[[nodiscard]] InputScript ReadInputScript(std::string_view text, std::vector<ScriptError>& errors);

}  // namespace tavlo::cli
