// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/machine/io_board.h"

#include <algorithm>

namespace tavlo::hubsim {
namespace {

constexpr std::uint8_t kAllOutputs = (1U << kOutputCount) - 1;

std::size_t Index(int axis) {
  return static_cast<std::size_t>(axis);
}
std::uint16_t Bit(int number) {
  return static_cast<std::uint16_t>(1U << number);
}

}  // namespace

IoBoard::IoBoard() {
  inputs_.fill(0xFFFF);
  outputs_.fill(kAllOutputs);
}

bool IoBoard::SetInput(int axis, int input, bool high) {
  if (Input(axis, input) == high) return false;
  inputs_[Index(axis)] = static_cast<std::uint16_t>(inputs_[Index(axis)] ^ Bit(input));
  auto& edges = high ? risen_ : fallen_;
  edges[Index(axis)] |= Bit(input);
  return true;
}

bool IoBoard::Input(int axis, int input) const {
  return (inputs_[Index(axis)] & Bit(input)) != 0;
}

std::uint8_t IoBoard::MainInputs(int axis) const {
  return static_cast<std::uint8_t>(inputs_[Index(axis)]);
}

std::uint8_t IoBoard::XInputs(int axis) const {
  return static_cast<std::uint8_t>(inputs_[Index(axis)] >> kFirstXInput);
}

std::uint8_t IoBoard::Outputs(int axis) const {
  return outputs_[Index(axis)];
}

bool IoBoard::Holds(const InputRef& input, Condition condition) const {
  if (!input.input) return condition == Condition::High;
  const std::uint16_t bit = Bit(*input.input);
  switch (condition) {
    case Condition::High: return Input(input.axis, *input.input);
    case Condition::Low: return !Input(input.axis, *input.input);
    case Condition::RisingEdge: return (risen_[Index(input.axis)] & bit) != 0;
    case Condition::FallingEdge: return (fallen_[Index(input.axis)] & bit) != 0;
  }
  return false;
}

void IoBoard::ForgetEdges(const InputRef& input) {
  if (!input.input) return;
  const auto keep = static_cast<std::uint16_t>(~Bit(*input.input));
  risen_[Index(input.axis)] &= keep;
  fallen_[Index(input.axis)] &= keep;
}

void IoBoard::ForgetAllEdges() {
  risen_.fill(0);
  fallen_.fill(0);
}

void IoBoard::Act(int axis, int output, OutputAction action, double width_s, double now) {
  std::erase_if(pulses_, [&](const Pulse& pulse) { return pulse.axis == axis && pulse.output == output; });
  const bool high = action == OutputAction::High || action == OutputAction::HighPulse;
  SetOutput(axis, output, high);
  const bool pulse = action == OutputAction::HighPulse || action == OutputAction::LowPulse;
  if (pulse) pulses_.push_back({now + width_s, axis, output, !high});
}

void IoBoard::ReleaseOutputs() {
  outputs_.fill(kAllOutputs);
  pulses_.clear();
}

std::optional<double> IoBoard::NextEvent() const {
  if (pulses_.empty()) return std::nullopt;
  return std::ranges::min_element(pulses_, {}, &Pulse::end)->end;
}

void IoBoard::Advance(double now) {
  for (const Pulse& pulse : pulses_) {
    if (pulse.end <= now) SetOutput(pulse.axis, pulse.output, pulse.level_after);
  }
  std::erase_if(pulses_, [now](const Pulse& pulse) { return pulse.end <= now; });
}

void IoBoard::SetOutput(int axis, int output, bool high) {
  const auto bit = static_cast<std::uint8_t>(1U << output);
  auto& levels = outputs_[Index(axis)];
  levels = static_cast<std::uint8_t>(high ? levels | bit : levels & ~bit);
}

}  // namespace tavlo::hubsim
