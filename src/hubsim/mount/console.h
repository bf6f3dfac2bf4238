// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "hubsim/hub.h"

namespace tavlo::hubsim {

/// Does to a hub what lines of text say: inputs, limits, faults, the cable. Axes, inputs and lines count from
/// 1, as an operator counts them.
class Console {
 public:
  explicit Console(Hub& hub) : hub_(hub) {}

  /// Carries out one line and returns the answer: "ok", a line of JSON, the help, or what was wrong, each
  /// ending in a line feed. The answer to an empty line is empty.
  [[nodiscard]] std::string Execute(std::string_view line, double now);
  /// `quit` was given.
  [[nodiscard]] bool Quitting() const { return quitting_; }

  using Words = std::vector<std::string_view>;

 private:
  std::string Input(const Words& words, double now);
  std::string Limit(const Words& words, double now);
  std::string Fault(const Words& words, double now);
  std::string Stop(const Words& words, double now);
  std::string Knob(const Words& words, double now);
  std::string Greet(const Words& words, double now);
  std::string Unplug(const Words& words, double now);
  std::string Replug(const Words& words, double now);
  std::string Say(const Words& words, double now);
  std::string SetFailure(const Words& words, double now);
  std::string State(const Words& words, double now);
  std::string Help(const Words& words, double now);
  std::string Quit(const Words& words, double now);

  struct Row;
  static const std::vector<Row>& Rows();

  Hub& hub_;
  bool quitting_ = false;
};

/// Returns the state of the hub as one line of JSON, without a line feed. Lines and axes count from 1.
[[nodiscard]] std::string DescribeState(const Hub& hub);

}  // namespace tavlo::hubsim
