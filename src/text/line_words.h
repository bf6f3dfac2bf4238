// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string>
#include <string_view>

#include "model/program.h"

namespace tavlo {

/// Returns the name of input `n` in texts about several inputs: 0..7 are main inputs; 8 and above, and 128
/// and above, are the drive's own, from "X0" on.
[[nodiscard]] std::string InputName(const Program& program, int n, int axis);

/// Whether the sensor that the move looks for is the encoder's index, and not an input.
[[nodiscard]] bool SeeksEncoderIndex(const Instruction& line);

/// Returns "0%", "25%", "50%" or "100%" by `IdlePct`; otherwise empty.
[[nodiscard]] std::string_view IdleText(int idle_pct);

/// The pieces that the texts of a line share, whether short or long. What stands in them comes from the
/// record and may be anything; a number that stands for nothing gives an empty piece.
class LineWords {
 public:
  /// Both must outlive it.
  LineWords(const Program& program, int line)
      : program_(program), line_(program.Prog[line]), name_(AxisNameOf(program, line_.Drive)) {}

 protected:
  [[nodiscard]] const Program& program() const { return program_; }
  [[nodiscard]] const Instruction& line() const { return line_; }
  /// The operator's name of the axis.
  [[nodiscard]] const std::string& Name() const { return name_; }
  /// `LineNum` as the operator counts, as a number and as a text.
  [[nodiscard]] int Target() const { return line_.LineNum + 1; }
  [[nodiscard]] std::string ToLine() const { return std::to_string(Target()); }

  [[nodiscard]] bool UsesUnits() const;
  [[nodiscard]] std::string UnitName() const;
  /// A speed in user units, a number alone: "2.0".
  [[nodiscard]] std::string UserSpeed(double rev_s) const;
  /// The user unit of speeds: " rps" if the unit is "rev".
  [[nodiscard]] std::string UserSpeedUnit() const;
  /// A distance in user units: "2.0 rev".
  [[nodiscard]] std::string UserDist(double steps) const;

  /// "cw" or "ccw".
  [[nodiscard]] std::string Way() const { return line_.Dir != 0 ? "ccw" : "cw"; }
  /// The level that an input must have: " high", " low", " rising edge" or " falling edge".
  [[nodiscard]] std::string Level() const;
  /// What an output does: "high", "low", "high pulse" or "low pulse".
  [[nodiscard]] std::string_view Action() const;
  [[nodiscard]] bool IsPulse() const;
  /// The same after a blank, a pulse with its length: " high pulse 10 msec".
  [[nodiscard]] std::string TimedAction() const;

  /// Whether the drive's inputs and outputs are named with letters.
  [[nodiscard]] bool NamesXandY() const;
  /// Output `IONum`: "Y1" or "1".
  [[nodiscard]] std::string OutName() const;
  /// The inputs that the line tests, by the level that they must have: "1,3 high and 2 low". `joint` stands
  /// between two main inputs of the same level. Empty if the line tests none.
  [[nodiscard]] std::string SeveralInputs(std::string_view joint) const;
  /// " and " if all inputs must match, " or " if one is enough.
  [[nodiscard]] std::string AndOr() const { return line_.WaitAND ? " and " : " or "; }

  /// The motor current with its idle current: "1.00 A (25% idle)".
  [[nodiscard]] std::string Current() const;
  /// What follows the count of a Repeat that is to be displayed.
  [[nodiscard]] std::string CountDisplay() const { return line_.SpeedIsMMI ? ", display count" : ""; }

 private:
  const Program& program_;
  const Instruction& line_;
  std::string name_;
};

}  // namespace tavlo
