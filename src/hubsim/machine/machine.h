// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "hubsim/machine/axis.h"
#include "hubsim/machine/io_board.h"
#include "hubsim/program/axis_settings.h"
#include "hubsim/program/memory.h"
#include "hubsim/program/statement.h"

namespace tavlo::hubsim {

inline constexpr int kVariableCount = 50;

/// The end of a move.
struct MoveEnd {
  int axis = 0;
  AxisEvent event = AxisEvent::Finished;  ///< never `Mark`
};

/// What the program acts upon: eight axes with their motors, the inputs and outputs, the variables.
class Machine {
 public:
  [[nodiscard]] Axis& At(int axis) { return axes_[static_cast<std::size_t>(axis)]; }
  [[nodiscard]] const Axis& At(int axis) const { return axes_[static_cast<std::size_t>(axis)]; }
  [[nodiscard]] IoBoard& Io() { return io_; }
  [[nodiscard]] const IoBoard& Io() const { return io_; }

  /// Reads the settings of the axes from the memory, as at the start of a program, and gives all motors their
  /// normal current.
  void Load(const Memory& memory);
  [[nodiscard]] const AxisSettings& Settings(int axis) const {
    return settings_[static_cast<std::size_t>(axis)];
  }

  [[nodiscard]] bool MotorOn(int axis) const { return motor_on_[static_cast<std::size_t>(axis)]; }
  void SetMotor(int axis, bool on) { motor_on_[static_cast<std::size_t>(axis)] = on; }
  [[nodiscard]] double Amps(int axis) const { return amps_[static_cast<std::size_t>(axis)]; }
  void SetAmps(int axis, double amps) { amps_[static_cast<std::size_t>(axis)] = amps; }

  /// 0 for a number that no variable has.
  [[nodiscard]] int Variable(int number) const;
  /// Does nothing for a number that no variable has.
  void SetVariable(int number, int value);
  [[nodiscard]] int Value(const Operand& operand) const;
  /// Steps/s of a speed in 1/40 rev/s; always above 0.
  [[nodiscard]] double StepsPerSecond(int axis, const Operand& speed) const;
  [[nodiscard]] double StepsPerSecond(int axis, int speed) const;
  /// Steps/s/s of an acceleration in rev/s/s; always above 0.
  [[nodiscard]] double StepsPerSecond2(int axis, int accel) const;

  /// All positions and variables 0.
  void ForgetValues();

  void Begin(int axis, const MoveOrder& order, double now);
  /// Brings every axis to rest.
  void StopAll(double now);
  void CutAll(double now);
  /// No axis moves, except those that turn with no end.
  [[nodiscard]] bool AllMovesDone() const;
  [[nodiscard]] bool AnythingMoves() const;
  [[nodiscard]] bool Matches(const InputPattern& pattern) const;

  [[nodiscard]] std::optional<double> NextEvent() const;
  /// Carries out what is due at `now`, sensors included, and returns the moves that ended.
  [[nodiscard]] std::vector<MoveEnd> Advance(double now);

 private:
  void CheckSensor(Axis& axis, double now) const;

  std::array<Axis, kAxisCount> axes_;
  std::array<AxisSettings, kAxisCount> settings_{};
  std::array<bool, kAxisCount> motor_on_{};
  std::array<double, kAxisCount> amps_{};
  std::array<int, kVariableCount> variables_{};
  IoBoard io_;
};

}  // namespace tavlo::hubsim
