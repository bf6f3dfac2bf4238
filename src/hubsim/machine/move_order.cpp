// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/machine/move_order.h"

#include <cmath>

namespace tavlo::hubsim {
namespace {

constexpr double kOutputWidthUnit = 0.002;

/// A position from a variable has its own sign, and so has a distance; a distance below 0 goes the other way.
double SignedDistance(const MoveStatement& move, const Machine& machine, double now) {
  const double value = machine.Value(move.distance);
  if (!move.to_position) return move.direction * value;
  const double target = move.distance.variable ? value : move.direction * value;
  return target - machine.At(move.axis).Position(now);
}

MarkedOutput OutputOf(const MoveStatement::Output& output, const Machine& machine, double end) {
  const double at = output.at ? machine.Value(*output.at) : end;
  return {at, *output.output, output.action, output.width_2ms * kOutputWidthUnit};
}

}  // namespace

MoveOrder OrderOf(const MoveStatement& move, const Machine& machine, int line, double now) {
  const int axis = move.axis;
  MoveOrder order;
  order.line = line;
  order.concurrent = move.wait == MoveWait::None;
  order.limits = {machine.StepsPerSecond(axis, move.speed), machine.StepsPerSecond2(axis, move.accel),
                  machine.StepsPerSecond2(axis, move.decel)};
  order.home = move.home;
  if (move.home) {
    order.direction = move.direction;
  } else {
    const double way = SignedDistance(move, machine, now);
    order.direction = way < 0 ? -1 : 1;
    order.distance = std::abs(way);
    if (way == 0) order.direction = move.direction;
  }
  if (move.change) {
    const double at = machine.Value(move.change->at);
    order.change = SpeedChange{at > 0 ? at : 0, machine.StepsPerSecond(axis, move.change->speed)};
  }
  if (move.output && move.output->output) order.output = OutputOf(*move.output, machine, order.distance);
  if (move.sensor) order.sensor = SensorStop{move.sensor->input, move.sensor->condition};
  if (move.safety) order.safety = SafetyStop{static_cast<double>(move.safety->distance), move.safety->line};
  if (move.trip)
    order.trip = ReturnTrip{machine.StepsPerSecond(axis, move.trip->speed), move.trip->rest * kHundredth};
  return order;
}

}  // namespace tavlo::hubsim
