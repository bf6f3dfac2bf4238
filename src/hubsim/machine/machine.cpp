// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/machine/machine.h"

#include <algorithm>

namespace tavlo::hubsim {
namespace {

bool Earlier(const std::optional<double>& a, const std::optional<double>& b) {
  return a && (!b || *a < *b);
}

}  // namespace

void Machine::Load(const Memory& memory) {
  for (int axis = 0; axis < kAxisCount; ++axis) {
    const auto index = static_cast<std::size_t>(axis);
    settings_[index] = ReadAxisSettings(memory.Axis(axis));
    motor_on_[index] = true;
    amps_[index] = settings_[index].current_amps;
  }
}

int Machine::Variable(int number) const {
  return number >= 0 && number < kVariableCount ? variables_[static_cast<std::size_t>(number)] : 0;
}

void Machine::SetVariable(int number, int value) {
  if (number >= 0 && number < kVariableCount) variables_[static_cast<std::size_t>(number)] = value;
}

int Machine::Value(const Operand& operand) const {
  return operand.variable ? Variable(operand.value) : operand.value;
}

double Machine::StepsPerSecond(int axis, const Operand& speed) const {
  return StepsPerSecond(axis, Value(speed));
}

double Machine::StepsPerSecond(int axis, int speed) const {
  return std::max(speed, 1) / kSpeedUnitsPerRev * std::max(Settings(axis).steps_per_rev, 1.0);
}

double Machine::StepsPerSecond2(int axis, int accel) const {
  return std::max(accel, 1) * std::max(Settings(axis).steps_per_rev, 1.0);
}

void Machine::ForgetValues() {
  for (auto& axis : axes_) axis.SetPosition(0);
  variables_.fill(0);
}

void Machine::Begin(int axis, const MoveOrder& order, double now) {
  if (order.sensor) io_.ForgetEdges(order.sensor->input);
  At(axis).Begin(order, now);
  CheckSensor(At(axis), now);
}

void Machine::StopAll(double now) {
  for (auto& axis : axes_) axis.Stop(now);
}

void Machine::CutAll(double now) {
  for (auto& axis : axes_) axis.Cut(now);
}

bool Machine::AllMovesDone() const {
  return std::ranges::all_of(axes_, [](const Axis& axis) { return axis.Idle() || axis.Endless(); });
}

bool Machine::AnythingMoves() const {
  return !std::ranges::all_of(axes_, &Axis::Idle);
}

bool Machine::Matches(const InputPattern& pattern) const {
  const int main = (io_.MainInputs(pattern.axis) ^ pattern.states) & pattern.mask;
  const int drive = (io_.XInputs(pattern.axis) ^ pattern.drive_states) & pattern.drive_mask;
  const bool same = main == 0 && drive == 0;
  return pattern.all ? same : !same;
}

std::optional<double> Machine::NextEvent() const {
  std::optional<double> next = io_.NextEvent();
  for (const auto& axis : axes_) {
    const auto event = axis.NextEvent();
    if (Earlier(event, next)) next = event;
  }
  return next;
}

std::vector<MoveEnd> Machine::Advance(double now) {
  std::vector<MoveEnd> ends;
  io_.Advance(now);
  for (int number = 0; number < kAxisCount; ++number) {
    auto& axis = At(number);
    CheckSensor(axis, now);
    while (const auto event = axis.Advance(now)) {
      if (*event != AxisEvent::Mark) {
        ends.push_back({number, *event});
        continue;
      }
      const MarkedOutput& output = *axis.Order().output;
      io_.Act(number, output.output, output.action, output.width_s, now);
    }
  }
  return ends;
}

void Machine::CheckSensor(Axis& axis, double now) const {
  if (!axis.Seeking()) return;
  const auto& sensor = *axis.Order().sensor;
  if (io_.Holds(sensor.input, sensor.condition)) axis.SensorSeen(now);
}

}  // namespace tavlo::hubsim
