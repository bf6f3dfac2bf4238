// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/running/runner.h"

#include <utility>

namespace tavlo::hubsim {
namespace {

bool LooksAtInputs(const Statement& statement) {
  return std::holds_alternative<WaitInputStatement>(statement) ||
         std::holds_alternative<WaitInputsStatement>(statement);
}

}  // namespace

LineContext Runner::Context(double now) {
  return {machine_, flow_, bay_, memory_, terminal_ ? &display_ : nullptr, line_, now};
}

std::optional<int> Runner::Line() const {
  if (state_ != RunState::Running || !LineUnderWay()) return std::nullopt;
  return line_;
}

void Runner::Forget() {
  for (int axis = 0; axis < kAxisCount; ++axis) machine_.At(axis).Disown();
  flow_.Clear();
  jump_.reset();
  outcome_ = {};
  phase_ = Phase::Between;
  stepping_ = false;
  line_ = 0;
}

void Runner::Start(bool terminal, double now) {
  machine_.StopAll(now);
  machine_.Load(memory_);
  machine_.Io().ForgetAllEdges();
  settings_ = ReadHubSettings(memory_);
  Forget();
  paused_ = false;
  marker_shown_ = false;
  owed_acknowledgements_ = 0;
  terminal_ = terminal;
  if (terminal_) display_.Clear();
  state_ = RunState::Running;
  Pump(now);
}

void Runner::Stop(double now) {
  machine_.StopAll(now);
  Forget();
  paused_ = false;
  marker_shown_ = false;
  terminal_ = false;
  state_ = RunState::Idle;
}

void Runner::Reset(double now) {
  machine_.CutAll(now);
  machine_.Io().ReleaseOutputs();
  machine_.Load(memory_);
  Stop(now);
}

void Runner::PowerUp(double now) {
  Reset(now);
  machine_.ForgetValues();
  display_.Forget();
}

void Runner::Pause(double now) {
  if (!Active()) return;
  paused_ = true;
  Pump(now);
}

void Runner::Resume(double now) {
  if (!Active() || !paused_) return;
  paused_ = false;
  HideMarker();
  if (phase_ == Phase::Held) phase_ = Phase::Between;
  Pump(now);
}

void Runner::Step(double now) {
  if (!Active() || !paused_) return;
  if (state_ == RunState::Ended) {
    reporter_.StepDone();
    return;
  }
  stepping_ = true;
  if (phase_ != Phase::Held) return;
  HideMarker();
  phase_ = Phase::Between;
  Pump(now);
}

void Runner::Rewind(double now) {
  if (!Active()) return;
  for (int axis = 0; axis < kAxisCount; ++axis) Release(axis);
  machine_.StopAll(now);
  flow_.Clear();
  state_ = RunState::Running;
  HideMarker();
  JumpTo(0, now);
  if (terminal_) display_.Clear();
  Pump(now);
}

void Runner::Acknowledge(double now) {
  if (owed_acknowledgements_ == 0) return;
  if (--owed_acknowledgements_ > 0) return;
  if (phase_ == Phase::Started) phase_ = Phase::Gated;
  if (phase_ == Phase::Concurrent) GoOn();
  Pump(now);
}

bool Runner::HitLimit(int axis, double now) {
  if (!UnderWay() || bay_.PluggedModel(axis) == 0 || !machine_.Settings(axis).limits_used) return false;
  switch (settings_.limit_action) {
    case LimitAction::Halt: HaltProgram({HaltKind::Limit, axis, 0}, now); break;
    case LimitAction::Continue:
      if (machine_.At(axis).Idle()) return false;
      machine_.At(axis).Stop(now);
      break;
    case LimitAction::Branch:
      Release(axis);
      machine_.At(axis).Stop(now);
      state_ = RunState::Running;
      JumpTo(settings_.limit_line, now);
      break;
  }
  Pump(now);
  return true;
}

bool Runner::PressStop(double now) {
  if (!UnderWay()) return false;
  HaltProgram({HaltKind::StopButton, 0, 0}, now);
  return true;
}

bool Runner::Fail(int axis, int code, double now) {
  if (bay_.PluggedModel(axis) == 0) return false;
  machine_.At(axis).Cut(now);
  HaltProgram({HaltKind::Fault, axis, code}, now);
  return true;
}

void Runner::SetInput(int axis, int input, bool high, double now) {
  if (machine_.Io().SetInput(axis, input, high)) Advance(now);
}

void Runner::PressKey(char key, double now) {
  if (state_ != RunState::Running || phase_ != Phase::Executing || !outcome_.interaction) return;
  outcome_.interaction->Key(key, now);
  Pump(now);
}

bool Runner::TurnKnob(int axis, int counts, double now) {
  if (state_ != RunState::Running || phase_ != Phase::Executing || !outcome_.interaction) return false;
  const bool follows = outcome_.interaction->TurnKnob(axis, counts, now);
  Pump(now);
  return follows;
}

WaitsFor Runner::Waits() const {
  if (state_ != RunState::Running) return WaitsFor::Nothing;
  switch (phase_) {
    case Phase::Between: break;
    case Phase::Held: return WaitsFor::Resume;
    case Phase::Started:
    case Phase::Concurrent: return WaitsFor::Acknowledge;
    case Phase::Gated: return WaitsFor::Motion;
    case Phase::Executing:
      if (outcome_.interaction) return outcome_.interaction->Waits();
      if (outcome_.wake) return WaitsFor::Time;
      return LooksAtInputs(statement_) ? WaitsFor::Input : WaitsFor::Motion;
  }
  return WaitsFor::Nothing;
}

std::optional<double> Runner::NextEvent() const {
  std::optional<double> next = machine_.NextEvent();
  const auto consider = [&next](const std::optional<double>& when) {
    if (when && (!next || *when < *next)) next = when;
  };
  if (state_ != RunState::Running || phase_ != Phase::Executing) return next;
  consider(outcome_.wake);
  if (outcome_.interaction) consider(outcome_.interaction->NextEvent());
  return next;
}

void Runner::Advance(double now) {
  for (const MoveEnd& end : machine_.Advance(now)) HandleEnd(end);
  Pump(now);
}

void Runner::HandleEnd(const MoveEnd& end) {
  if (!Active()) return;
  const MoveOrder& order = machine_.At(end.axis).Order();
  if (order.concurrent) reporter_.LineFinished(order.line);
  if (end.event != AxisEvent::GaveUp) return;
  // The line that ordered the move may be long over; then the branch is taken after the present one.
  if (order.concurrent) {
    jump_ = order.safety->line;
  } else {
    outcome_.next = order.safety->line;
  }
}

/// Ends soon whatever the program is: taking up a line tells of it, and that waits for the PC.
void Runner::Pump(double now) {
  while (state_ == RunState::Running && Progress(now)) {
  }
}

/// One zero-time step; false when only time, the PC or an input can bring the program on.
bool Runner::Progress(double now) {
  switch (phase_) {
    case Phase::Between: BeginLine(); return false;
    case Phase::Gated:
      if (!MayGo(statement_, Context(now))) return false;
      Execute(now);
      return true;
    case Phase::Executing:
      if (!LineOver(now)) return false;
      if (phase_ == Phase::Executing) FinishLine();
      return true;
    case Phase::Held:
    case Phase::Started:
    case Phase::Concurrent: break;
  }
  return false;
}

void Runner::SkipSilentLines() {
  while (line_ < kLineCount) {
    statement_ = ReadStatement(memory_.Line(line_), firmware_);
    if (!std::holds_alternative<SilentStatement>(statement_)) return;
    ++line_;
  }
}

void Runner::BeginLine() {
  if (jump_) line_ = *std::exchange(jump_, std::nullopt);
  SkipSilentLines();
  if (line_ >= kLineCount) return End();
  if (paused_ && !stepping_) {
    phase_ = Phase::Held;
    marker_shown_ = true;
    reporter_.ProgramCounter(line_);
    return;
  }
  phase_ = Phase::Started;
  ++owed_acknowledgements_;
  reporter_.LineStarted(line_);
  if (const auto axis = AxisOf(statement_)) ReportStatus(*axis);
}

void Runner::Execute(double now) {
  outcome_ = RunLine(statement_, Context(now));
  if (outcome_.halt) return HaltProgram(*outcome_.halt, now);
  phase_ = outcome_.concurrent ? Phase::Concurrent : Phase::Executing;
  if (!outcome_.concurrent) return;
  ++owed_acknowledgements_;
  reporter_.LineConcurrent(line_);
}

/// What the operator does may halt the program; then the line is gone.
bool Runner::InteractionOver(double now) {
  Interaction& interaction = *outcome_.interaction;
  interaction.Advance(now);
  if (const auto halt = interaction.Trouble()) {
    HaltProgram(*halt, now);
    return true;
  }
  const auto next = interaction.Next();
  if (next) outcome_.next = *next;
  return next.has_value();
}

bool Runner::LineOver(double now) {
  if (outcome_.interaction) return InteractionOver(now);
  if (outcome_.wake && now >= *outcome_.wake) return true;
  if (outcome_.over) return outcome_.over();
  return !outcome_.wake;
}

void Runner::FinishLine() {
  reporter_.LineFinished(line_);
  GoOn();
}

void Runner::GoOn() {
  line_ = outcome_.next;
  phase_ = Phase::Between;
  if (!std::exchange(stepping_, false)) return;
  reporter_.StepDone();
}

void Runner::End() {
  state_ = RunState::Ended;
  phase_ = Phase::Between;
  if (std::exchange(stepping_, false)) reporter_.StepDone();
}

void Runner::HaltProgram(const Halt& halt, double now) {
  machine_.StopAll(now);
  HideMarker();
  reporter_.Halted(halt, line_);
  Forget();
  paused_ = false;
  terminal_ = false;
  state_ = RunState::Halted;
}

/// Leaves the line under way; the PC is told that it is over, for it would stay lit.
void Runner::JumpTo(int line, double now) {
  if (outcome_.interaction) {
    outcome_.interaction->Leave(now);
    if (terminal_) display_.Clear();
  }
  if (LineUnderWay()) reporter_.LineFinished(line_);
  for (int axis = 0; axis < kAxisCount; ++axis) {
    if (!machine_.At(axis).Order().concurrent) machine_.At(axis).Disown();
  }
  outcome_ = {};
  phase_ = Phase::Between;
  jump_ = line;
  if (std::exchange(stepping_, false)) reporter_.StepDone();
}

/// Lets go of the move on an axis; the line of a concurrent one would stay lit.
void Runner::Release(int axis) {
  Axis& motor = machine_.At(axis);
  if (motor.Owned() && motor.Order().concurrent) reporter_.LineFinished(motor.Order().line);
  motor.Disown();
}

void Runner::HideMarker() {
  if (std::exchange(marker_shown_, false)) reporter_.ProgramCounter(std::nullopt);
}

void Runner::ReportStatus(int axis) {
  if (!bay_.HasIo(axis)) return;
  const IoBoard& io = machine_.Io();
  reporter_.Status(axis, io.MainInputs(axis), io.Outputs(axis));
  if (!HasExtendedIo(bay_.PluggedModel(axis))) return;
  reporter_.ExtendedStatus(axis, io.XInputs(axis), io.Outputs(axis));
}

void Runner::ReportAllStatus() {
  for (int axis = 0; axis < kAxisCount; ++axis) ReportStatus(axis);
}

}  // namespace tavlo::hubsim
