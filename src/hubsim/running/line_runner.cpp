// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/running/line_runner.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "hubsim/machine/cannot_move.h"
#include "hubsim/machine/move_order.h"
#include "hubsim/terminal/jog.h"
#include "hubsim/terminal/knob.h"
#include "hubsim/terminal/prompt.h"

namespace tavlo::hubsim {
namespace {

/// Pulse ticks are 1/12.8 ms, and the hub needs 44 of them on top of what it is told.
constexpr double kTicksPerSecond = 12800;
constexpr int kTicksOnTop = 44;

bool TakeAxis(Axis& axis, double now) {
  if (axis.Endless()) axis.Stop(now);
  return axis.Idle();
}

/// Whether the axis can be set turning now: it is at rest, or it turns that way already.
bool TakeAxisToStart(Axis& axis, int direction, double now) {
  return (axis.Endless() && axis.Direction() == direction) || TakeAxis(axis, now);
}

class Gate {
 public:
  explicit Gate(const LineContext& context) : context_(context) {}

  bool operator()(const MoveStatement& move) const {
    return TakeAxis(context_.machine.At(move.axis), context_.now);
  }
  bool operator()(const StartStopStatement& order) const {
    if (order.kind != StartStopKind::Start) return true;
    return TakeAxisToStart(context_.machine.At(order.axis), order.direction, context_.now);
  }
  template <typename T>
  bool operator()(const T& statement) const {
    if constexpr (requires { statement.wait_for_moves; }) {
      return !statement.wait_for_moves || context_.machine.AllMovesDone();
    } else {
      return true;
    }
  }

 private:
  const LineContext& context_;
};

class Execution {
 public:
  explicit Execution(const LineContext& context) : context_(context) {}

  LineOutcome operator()(const SilentStatement& /*none*/) const { return Next(); }

  LineOutcome operator()(const MoveStatement& move) const {
    if (auto halt = CannotMove(move.axis, context_.machine, context_.bay)) return Halted(*halt);
    Machine& machine = context_.machine;
    machine.Begin(move.axis, OrderOf(move, machine, context_.line, context_.now), context_.now);
    LineOutcome outcome = Next();
    switch (move.wait) {
      case MoveWait::None: outcome.concurrent = true; break;
      case MoveWait::ThisMove:
        outcome.over = [&machine, axis = move.axis] { return machine.At(axis).Idle(); };
        break;
      case MoveWait::AllMoves: outcome.over = [&machine] { return machine.AllMovesDone(); }; break;
    }
    return outcome;
  }

  LineOutcome operator()(const StartStopStatement& order) const {
    Machine& machine = context_.machine;
    LineOutcome outcome = Next();
    switch (order.kind) {
      case StartStopKind::Start:
        if (auto halt = CannotMove(order.axis, machine, context_.bay)) return Halted(*halt);
        machine.At(order.axis).RunOn(order.direction, LimitsOf(order), context_.now);
        break;
      case StartStopKind::ChangeSpeed:
        machine.At(order.axis).ChangeSpeed(machine.StepsPerSecond(order.axis, order.speed), context_.now);
        break;
      case StartStopKind::Stop:
        machine.At(order.axis).Stop(context_.now);
        outcome.over = [&machine, axis = order.axis] { return machine.At(axis).Idle(); };
        break;
      case StartStopKind::StopAll:
        machine.StopAll(context_.now);
        outcome.over = [&machine] { return machine.AllMovesDone(); };
        break;
    }
    return outcome;
  }

  LineOutcome operator()(const WaitTimeStatement& wait) const {
    LineOutcome outcome = Next();
    outcome.wake = context_.now + wait.hundredths * kHundredth;
    return outcome;
  }

  LineOutcome operator()(const WaitInputStatement& wait) const {
    if (wait.jog) return With(WaitWithJog(wait, context_.line, context_.machine, context_.bay));
    LineOutcome outcome = Next();
    context_.machine.Io().ForgetEdges(wait.input);
    outcome.over = [&io = context_.machine.Io(), wait] { return io.Holds(wait.input, wait.condition); };
    return outcome;
  }

  LineOutcome operator()(const WaitInputsStatement& wait) const {
    LineOutcome outcome = Next();
    outcome.over = [&machine = context_.machine, wait] { return machine.Matches(wait.pattern); };
    return outcome;
  }

  LineOutcome operator()(const GoToStatement& go) const { return To(go.line); }

  LineOutcome operator()(const IfInputStatement& branch) const {
    IoBoard& io = context_.machine.Io();
    const bool holds = io.Holds(branch.input, branch.condition);
    io.ForgetEdges(branch.input);
    return holds ? To(branch.line) : Next();
  }

  LineOutcome operator()(const IfInputsStatement& branch) const {
    return context_.machine.Matches(branch.pattern) ? To(branch.line) : Next();
  }

  LineOutcome operator()(const IfMovingStatement& branch) const {
    return context_.machine.At(branch.axis).Idle() ? Next() : To(branch.line);
  }

  LineOutcome operator()(const RepeatStatement& repeat) const {
    const CountDisplay counting = repeat.count_up ? CountDisplay::Up : CountDisplay::Down;
    context_.flow.Repeat(repeat.loop, context_.machine.Value(repeat.count),
                         repeat.show_count ? counting : CountDisplay::None);
    ShowCount(repeat.loop);
    return Next();
  }

  LineOutcome operator()(const EndRepeatStatement& end) const {
    const bool again = context_.flow.EndRound(end.loop);
    ShowCount(end.loop);
    return again ? To(end.line + 1) : Next();
  }

  LineOutcome operator()(const ResetLoopStatement& reset) const {
    context_.flow.ResetLoop(reset.loop);
    return Next();
  }

  LineOutcome operator()(const CallStatement& call) const {
    if (!context_.flow.Call(context_.line + 1)) return Halted({HaltKind::StackOverflow, 0, 0});
    return To(call.line);
  }

  LineOutcome operator()(const ReturnStatement& /*none*/) const {
    const auto line = context_.flow.Return();
    return line ? To(*line) : Halted({HaltKind::StackUnderflow, 0, 0});
  }

  LineOutcome operator()(const SetOutputStatement& set) const {
    const double width = (set.ticks + kTicksOnTop) / kTicksPerSecond;
    if (set.output) context_.machine.Io().Act(set.axis, *set.output, set.action, width, context_.now);
    return Next();
  }

  LineOutcome operator()(const MotorPowerStatement& power) const {
    Machine& machine = context_.machine;
    machine.SetMotor(power.axis, power.on);
    if (power.on) machine.SetAmps(power.axis, machine.Settings(power.axis).current_amps);
    return Next();
  }

  LineOutcome operator()(const MotorCurrentStatement& current) const {
    context_.machine.SetMotor(current.axis, true);
    context_.machine.SetAmps(current.axis, current.amps);
    return Next();
  }

  LineOutcome operator()(const SetPositionStatement& set) const {
    Axis& axis = context_.machine.At(set.axis);
    if (axis.Idle()) axis.SetPosition(set.position);
    return Next();
  }

  LineOutcome operator()(const LearnPositionStatement& learn) const {
    constexpr double kLowest = std::numeric_limits<int>::min();
    constexpr double kHighest = std::numeric_limits<int>::max();
    const double position = std::round(context_.machine.At(learn.axis).Position(context_.now));
    context_.machine.SetVariable(learn.variable, static_cast<int>(std::clamp(position, kLowest, kHighest)));
    return Next();
  }

  // Without the terminal a prompt is passed over: its variable keeps its value and its branch is not taken.

  LineOutcome operator()(const DisplayStatement& prompt) const {
    if (context_.display != nullptr) context_.display->Show(TextOf(prompt));
    return Next();
  }

  LineOutcome operator()(const ValueStatement& prompt) const {
    if (context_.display == nullptr) return Next();
    context_.display->Show(TextOf(prompt), kEntryRow);
    return With(AskValue(prompt, context_.line, context_.machine, *context_.display));
  }

  LineOutcome operator()(const EnterStatement& prompt) const {
    if (context_.display == nullptr) return Next();
    context_.display->Show(TextOf(prompt));
    return With(WaitForEnter(prompt, context_.line, context_.machine, context_.bay));
  }

  LineOutcome operator()(const YesNoStatement& prompt) const {
    if (context_.display == nullptr) return Next();
    context_.display->Show(TextOf(prompt));
    return With(AskYesNo(prompt, context_.line));
  }

  LineOutcome operator()(const MenuStatement& menu) const {
    if (context_.display == nullptr) return Next();
    context_.display->Show(TextOf(menu));
    return With(AskMenu(menu, context_.line));
  }

  LineOutcome operator()(const FollowKnobStatement& knob) const {
    if (knob.until_enter) {
      if (context_.display == nullptr) return Next();
      context_.display->Show(knob.pool_offset ? knob.text + context_.memory.PoolText(*knob.pool_offset)
                                              : knob.text);
    }
    return With(FollowKnob(knob, context_.line, context_.machine, context_.bay));
  }

 private:
  [[nodiscard]] LineOutcome Next() const { return To(context_.line + 1); }

  [[nodiscard]] static LineOutcome To(int line) {
    LineOutcome outcome;
    outcome.next = line;
    return outcome;
  }

  [[nodiscard]] static LineOutcome Halted(const Halt& halt) {
    LineOutcome outcome;
    outcome.halt = halt;
    return outcome;
  }

  [[nodiscard]] static LineOutcome With(std::unique_ptr<Interaction> interaction) {
    LineOutcome outcome;
    outcome.interaction = std::move(interaction);
    return outcome;
  }

  template <typename T>
  [[nodiscard]] std::string TextOf(const T& prompt) const {
    return context_.memory.PoolText(prompt.pool_offset);
  }

  void ShowCount(int loop) const {
    if (context_.display == nullptr || !context_.flow.ShowsCount(loop)) return;
    const auto count = context_.flow.ShownCount(loop);
    context_.display->WriteRow(kEntryRow, count ? "Count " + std::to_string(*count) : std::string());
  }

  [[nodiscard]] MotionLimits LimitsOf(const StartStopStatement& order) const {
    const double rate = context_.machine.StepsPerSecond2(order.axis, order.accel);
    return {context_.machine.StepsPerSecond(order.axis, order.speed), rate, rate};
  }

  const LineContext& context_;
};

}  // namespace

bool MayGo(const Statement& statement, const LineContext& context) {
  return std::visit(Gate(context), statement);
}

LineOutcome RunLine(const Statement& statement, const LineContext& context) {
  return std::visit(Execution(context), statement);
}

}  // namespace tavlo::hubsim
