// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/simulate/circling.h"

#include <utility>

namespace tavlo::cli {
namespace {

/// Few programs run so many lines in one moment, and it costs time to look.
constexpr int kUnwatchedLines = 20;

}  // namespace

void Circling::Restart() {
  lines_ = 0;
  kept_ = false;
  lines_to_keep_it_ = 1;
  since_.clear();
  round_.clear();
}

Circling::Moment Circling::Of(const hubsim::Hub& hub, int line) {
  Moment moment;
  moment.line = line;
  moment.flow = hub.OpenFlow();
  for (int number = 0; number < hubsim::kVariableCount; ++number) {
    moment.variables[static_cast<std::size_t>(number)] = hub.Variable(number);
  }
  for (int axis = 0; axis < hubsim::kAxisCount; ++axis) {
    const hubsim::AxisView view = hub.Axis(axis);
    moment.axes[static_cast<std::size_t>(axis)] = {view.position_steps, view.speed_steps_s, view.amps,
                                                   view.motor_on, view.outputs};
  }
  return moment;
}

/// One round that changed nothing is not enough: an edge of an input is seen once, and forgotten then.
bool Circling::Closes(const hubsim::Hub& hub, int line) {
  if (++lines_ <= kUnwatchedLines) return false;
  if (kept_ && line == moment_.line && Of(hub, line) == moment_) {
    if (since_ == round_) return true;
    round_ = std::exchange(since_, {});
  } else if (!kept_ || since_.size() >= lines_to_keep_it_) {
    moment_ = Of(hub, line);
    if (std::exchange(kept_, true)) lines_to_keep_it_ *= 2;
    since_.clear();
    round_.clear();
  }
  since_.push_back(line);
  return false;
}

}  // namespace tavlo::cli
