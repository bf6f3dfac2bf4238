// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/output_block.h"

#include <algorithm>
#include <string>

#include "platform/number_format.h"

namespace tavlo {
namespace {

constexpr int kMainOutputs = 4;
constexpr int kFirstY = 128;
constexpr int kLongestPulse = 500;
constexpr int kHighPulse = 2;

/// What a record calls the output of this option.
int IONumOf(std::size_t option) {
  const int index = static_cast<int>(option);
  return index < kMainOutputs ? index : kFirstY + index - kMainOutputs;
}

/// The main outputs are those of the further block, and there are no others.
bool HasOnlyY(int model) {
  return PlainModel(model) || ProgModel(model);
}

}  // namespace

void OutputBlock::AddTo(ControlTable& controls, const Names& outputs) {
  for (std::size_t i = 0; i < kOutputs; ++i) {
    controls.Add(std::string(outputs[i]), &outputs_[i], [this, i] {
      io_num_ = IONumOf(i);
      for (std::size_t other = 0; other < kOutputs; ++other) outputs_[other].value = other == i;
    });
  }
  state_.AddTo(controls, {"OptState(0)", "OptState(1)", "OptState(2)", "OptState(3)"});
  controls.Add("pw", &pw_, [this] { CleanUp(); });
  controls.Add("lblmsec", &msec_);
}

void OutputBlock::Fill(AxisUnits axis, const Instruction& record) {
  io_num_ = record.IONum;
  for (std::size_t i = 0; i < kOutputs; ++i) outputs_[i].value = IONumOf(i) == io_num_;
  state_.Fill(std::clamp<int>(record.State, 0, 3));
  PutPulse(record.Time);
  LabelOutputs(axis);
}

void OutputBlock::PutPulse(std::int32_t time) {
  time_ = time;
  pw_.text = Joined(static_cast<double>(time) * pulse_unit_);
  pw_.touched = false;
}

void OutputBlock::CleanUp() {
  const double ms = pw_.touched ? Val(pw_.text) : static_cast<double>(time_) * pulse_unit_;
  const double held = std::clamp(ms, 0.0, static_cast<double>(kLongestPulse));
  if (!pw_.touched && held == ms) return;
  PutPulse(static_cast<std::int32_t>(RoundHalfEven(held / pulse_unit_)));
}

void OutputBlock::LabelOutputs(AxisUnits axis) {
  const int model = DriveModelOf(axis.program, axis.axis);
  const bool only_y = !IsHubIO(axis.program, axis.axis) && HasOnlyY(model);
  for (int i = 0; i < kMainOutputs; ++i) {
    OptionButton& output = outputs_[static_cast<std::size_t>(i)];
    output.caption = (only_y ? "Y" : "") + Joined(i + 1);
    output.visible = i < kMainOutputs - 1 || FourOutputs(axis.program, axis.axis);
  }
  for (std::size_t i = kMainOutputs; i < kOutputs; ++i) {
    outputs_[i].caption = "Y" + Joined(static_cast<int>(i) - kMainOutputs + 1);
    outputs_[i].visible = !IsHubIO(axis.program, axis.axis) && ExtIO(model);
  }
}

void OutputBlock::ShowHide() {
  pw_.enabled = msec_.enabled = state_.Chosen() >= kHighPulse;
}

void OutputBlock::Write(AxisUnits axis, Instruction& record) const {
  record.IONum = static_cast<std::int16_t>(io_num_);
  const int last = FourOutputs(axis.program, axis.axis) ? kMainOutputs - 1 : kMainOutputs - 2;
  const bool has_block = !IsHubIO(axis.program, axis.axis) && ExtIO(DriveModelOf(axis.program, axis.axis));
  const bool in_block =
      has_block && std::ranges::any_of(outputs_, [](const OptionButton& o) { return o.value; });
  if (!in_block && (io_num_ < 0 || io_num_ > last)) record.IONum = 0;
  record.State = static_cast<std::int16_t>(state_.Chosen());
  record.Time = time_;
}

}  // namespace tavlo
