// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/input_block.h"

#include <algorithm>
#include <cstddef>
#include <string>

#include "platform/number_format.h"

namespace tavlo {

void InputBlock::AddTo(ControlTable& controls) {
  for (int place = 0; place < kInputs; ++place) {
    if (dialog_ == InputsOf::Home && place >= kMainInputsOfHome && place < kMainInputs) continue;
    const int io_num = InputNumber(place);
    controls.Add("OptIn(" + Joined(io_num) + ")", &options_[static_cast<std::size_t>(place)],
                 [this, io_num] { Choose(io_num); });
  }
  state_.AddTo(controls, {"OptState(0)", "OptState(1)", "OptState(2)", "OptState(3)"});
}

void InputBlock::Choose(int io_num) {
  io_num_ = io_num;
  for (int place = 0; place < kInputs; ++place) {
    options_[static_cast<std::size_t>(place)].value = InputNumber(place) == io_num;
  }
}

void InputBlock::Fill(AxisUnits axis, const Instruction& record) {
  Choose(record.IONum);
  state_.Fill(std::clamp<int>(record.State, 0, 3));
  LabelInputs(axis);
}

void InputBlock::LabelInputs(AxisUnits axis) {
  inputs_ = tavlo::LabelInputs(axis.program, axis.axis, dialog_);
  for (std::size_t place = 0; place < inputs_.size(); ++place) {
    options_[place].visible = inputs_[place].offered;
    options_[place].caption = inputs_[place].caption;
  }
  Enable(enabled_);
}

void InputBlock::Enable(bool enabled) {
  enabled_ = enabled;
  for (std::size_t place = 0; place < inputs_.size(); ++place) {
    options_[place].enabled = enabled && inputs_[place].valid;
  }
  state_.Enable(enabled);
}

void InputBlock::CleanUpIOnum(AxisUnits axis) {
  LabelInputs(axis);
  if (!IsValid()) Choose(FirstValid());
}

bool InputBlock::IsValid() const {
  for (std::size_t place = 0; place < inputs_.size(); ++place) {
    if (options_[place].value) return inputs_[place].valid;
  }
  return false;
}

int InputBlock::FirstValid() const {
  const auto first = std::ranges::find(inputs_, true, &Input::valid);
  return first == inputs_.end() ? 0 : InputNumber(static_cast<int>(first - inputs_.begin()));
}

InputUse InputBlock::Use() const {
  for (std::size_t place = 0; place < inputs_.size(); ++place) {
    if (options_[place].value) return inputs_[place].use;
  }
  return InputUse::None;
}

void InputBlock::Write(Instruction& record) const {
  record.IONum = static_cast<std::int16_t>(IsValid() ? io_num_ : FirstValid());
  record.State = static_cast<std::int16_t>(state_.Chosen());
}

}  // namespace tavlo
