// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <variant>

#include "hubsim/program/fixed4.h"
#include "hubsim/program/io.h"
#include "hubsim/program/line_codes.h"
#include "hubsim/program/memory.h"

namespace tavlo::hubsim {

/// A number of the line itself, or the number of one of the hub's 50 variables.
struct Operand {
  int value = 0;
  bool variable = false;
};

/// When the program goes on after a move.
enum class MoveWait : std::uint8_t { AllMoves, ThisMove, None };

/// Seconds of a unit in which times come.
inline constexpr double kHundredth = 0.01;

/// All feeds and the search for home. Speeds are 1/40 rev/s, accelerations rev/s/s, distances steps, times
/// hundredths of a second, as the wire has them.
struct MoveStatement {
  int axis = 0;
  int direction = 1;
  bool to_position = false;  ///< `distance` is a position, signed by `direction`
  Operand distance;
  Operand speed;
  int accel = 1;
  int decel = 1;
  MoveWait wait = MoveWait::AllMoves;

  struct Change {
    Operand at;
    Operand speed;
  };
  struct Output {
    std::optional<int> output;
    OutputAction action = OutputAction::High;
    int width_2ms = 0;
    std::optional<Operand> at;  ///< without it, at the end of the move
  };
  struct Sensor {
    InputRef input;
    Condition condition = Condition::Low;
  };
  struct Safety {
    int distance = 0;
    int line = 0;
  };
  struct Trip {
    int speed = 1;
    int rest = 1;
  };
  std::optional<Change> change;
  std::optional<Output> output;
  std::optional<Sensor> sensor;
  std::optional<Safety> safety;
  std::optional<Trip> trip;
  bool home = false;
};

/// A line that does nothing and is not reported: an empty one, a comment, a code that means nothing.
struct SilentStatement {};
struct WaitTimeStatement {
  int hundredths = 1;
};
/// How an axis is turned by hand. Speed in 1/40 rev/s, acceleration in rev/s/s.
struct JogRate {
  int axis = 0;
  int speed = 1;
  int accel = 1;
};
struct WaitInputStatement {
  InputRef input;
  Condition condition = Condition::High;
  std::optional<JogRate> jog;  ///< the drive's jog inputs turn the axis meanwhile
};
/// Several inputs at once. `states` and `mask` are the main inputs; `drive_states` and `drive_mask` are the
/// drive's own ones, bit i being Xi.
struct InputPattern {
  int axis = 0;
  std::uint8_t states = 0;
  std::uint8_t mask = 0;
  std::uint8_t drive_states = 0;
  std::uint8_t drive_mask = 0;
  /// True: the pattern holds if every input is as `states` says. False: it holds if at least one is not.
  bool all = true;
};
struct WaitInputsStatement {
  InputPattern pattern;
};
struct GoToStatement {
  int line = 0;
  bool wait_for_moves = true;
};
struct IfInputStatement {
  InputRef input;
  Condition condition = Condition::High;
  int line = 0;
  bool wait_for_moves = true;
};
struct IfInputsStatement {
  InputPattern pattern;
  int line = 0;
  bool wait_for_moves = true;
};
struct IfMovingStatement {
  int axis = 0;
  int line = 0;
};
struct RepeatStatement {
  int loop = 0;
  Operand count;
  bool show_count = false;
  bool count_up = false;
  bool wait_for_moves = true;
};
struct EndRepeatStatement {
  int loop = 0;
  int line = 0;
  bool wait_for_moves = true;
};
struct ResetLoopStatement {
  int loop = 0;
};
struct CallStatement {
  int line = 0;
};
struct ReturnStatement {};
struct SetOutputStatement {
  int axis = 0;
  std::optional<int> output;
  OutputAction action = OutputAction::High;
  int ticks = 1;
};
struct MotorPowerStatement {
  int axis = 0;
  bool on = false;
};
struct MotorCurrentStatement {
  int axis = 0;
  double amps = 0;
};
struct SetPositionStatement {
  int axis = 0;
  int position = 0;
};
struct LearnPositionStatement {
  int axis = 0;
  int variable = 0;
};
enum class StartStopKind : std::uint8_t { StopAll = 0, ChangeSpeed = 1, Stop = 2, Start = 3 };
struct StartStopStatement {
  StartStopKind kind = StartStopKind::StopAll;
  int axis = 0;
  int direction = 1;
  Operand speed;
  int accel = 1;
};
/// The prompts: a text of the pool on the operator terminal, and what is asked there.
struct DisplayStatement {
  int pool_offset = 0;
};
enum class ValueKind : std::uint8_t { Distance = 0, Speed = 1, Count = 2 };
struct ValueStatement {
  int pool_offset = 0;
  ValueKind kind = ValueKind::Distance;
  int variable = 0;
  Fixed4 lower = 0;  ///< limits in the operator's units, both allowed
  Fixed4 upper = 0;
  int units_axis = 0;  ///< axis whose units they are; 0..255
};
struct EnterStatement {
  int pool_offset = 0;
  std::optional<JogRate> left_right;  ///< what the arrow keys turn meanwhile
  std::optional<JogRate> up_down;
};
struct YesNoStatement {
  int pool_offset = 0;
  int line = 0;
};
inline constexpr int kMenuKeys = 8;
struct MenuStatement {
  int pool_offset = 0;
  std::array<std::optional<int>, kMenuKeys>
      lines;  ///< by number key, from 1; empty where the key is not in use
};
/// The axis follows a hand wheel until the input's condition holds, or until ENTER in the form with a text,
/// which names no axis.
struct FollowKnobStatement {
  InputRef input;
  Condition condition = Condition::High;
  bool until_enter = false;
  int steps_per_count = 1;
  std::string text;                ///< what stands in the line itself
  std::optional<int> pool_offset;  ///< where the text goes on, if it does
};

using Statement =
    std::variant<SilentStatement, MoveStatement, WaitTimeStatement, WaitInputStatement, WaitInputsStatement,
                 GoToStatement, IfInputStatement, IfInputsStatement, IfMovingStatement, RepeatStatement,
                 EndRepeatStatement, ResetLoopStatement, CallStatement, ReturnStatement, SetOutputStatement,
                 MotorPowerStatement, MotorCurrentStatement, SetPositionStatement, LearnPositionStatement,
                 StartStopStatement, DisplayStatement, ValueStatement, EnterStatement, YesNoStatement,
                 MenuStatement, FollowKnobStatement>;

/// Reads a slot. Any 32 bytes are a statement; a line that names an axis above 7 is a silent one. `firmware`
/// is the hub's revision byte at the download of the line.
[[nodiscard]] Statement ReadStatement(Slot slot, std::uint8_t firmware);

/// Returns the axis that a statement names; empty if it names none.
[[nodiscard]] std::optional<int> AxisOf(const Statement& statement);

}  // namespace tavlo::hubsim
