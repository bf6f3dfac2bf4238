// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/input_rows.h"

#include <cstddef>
#include <string>

#include "platform/number_format.h"

namespace tavlo {
namespace {

/// The buttons of a row.
enum Level : std::uint8_t { High, Low, DontCare };

std::size_t At(int place) {
  return static_cast<std::size_t>(place);
}

}  // namespace

void InputRows::AddTo(ControlTable& controls) {
  controls.Add("FrameSum", &frame_);
  const auto changed = [this] { UpdateSumDesc(); };
  for (int place = 0; place < kInputs; ++place) {
    controls.Add("LblInputNo(" + Joined(place) + ")", &numbers_[At(place)]);
    const std::string row = "OptSum" + Joined(place + 1);
    rows_[At(place)].AddTo(controls, {row + "(0)", row + "(1)", row + "(2)"}, changed);
  }
  logic_.AddTo(controls, {"OptAND", "OptOR"}, changed);
  controls.Add("LogicDesc", &description_);
}

void InputRows::SetOptions(int place, int mask, int state) {
  const int bit = place % kMainInputs;
  const bool taken = (mask >> bit & 1) != 0;
  rows_[At(place)].Fill(!taken ? DontCare : (state >> bit & 1) != 0 ? High : Low);
}

void InputRows::Fill(AxisUnits axis, const Instruction& record) {
  for (int place = 0; place < kMainInputs; ++place) SetOptions(place, record.InMask, record.InState);
  for (int place = kMainInputs; place < kInputs; ++place) {
    SetOptions(place, record.DrvMask, record.DrvState);
  }
  logic_.Fill(record.WaitAND ? 0 : 1);
  ShowHideInputs(axis);
}

void InputRows::ShowHideInputs(AxisUnits axis) {
  inputs_ = LabelInputs(axis.program, axis.axis, InputsOf::Tests);
  for (int place = 0; place < kInputs; ++place) {
    const Input& input = inputs_[At(place)];
    numbers_[At(place)].caption = input.row;
    numbers_[At(place)].visible = input.offered;
    rows_[At(place)].Show(input.offered);
  }
  UpdateSumDesc();
}

bool InputRows::IsChosen(int place) const {
  return inputs_[At(place)].offered && rows_[At(place)].Chosen() != DontCare;
}

bool InputRows::AnyChosen() const {
  for (int place = 0; place < kInputs; ++place) {
    if (IsChosen(place)) return true;
  }
  return false;
}

void InputRows::UpdateSumDesc() {
  std::string sentence;
  for (int place = 0; place < kInputs; ++place) {
    if (!IsChosen(place)) continue;
    if (!sentence.empty()) sentence += logic_.Chosen() == 0 ? " and " : " or ";
    sentence += place < kMainInputs ? "IN" + Joined(place + 1) : "X" + Joined(place - kMainInputs);
    sentence += rows_[At(place)].Chosen() == High ? " hi" : " lo";
  }
  description_.caption =
      sentence.empty() ? " Please select at least one input to be HI or LO." : std::move(sentence);
}

void InputRows::Read(int first, std::int16_t& mask, std::int16_t& state) const {
  int taken = 0;
  int high = 0;
  for (int bit = 0; bit < kMainInputs; ++bit) {
    if (!IsChosen(first + bit)) continue;
    taken |= 1 << bit;
    if (rows_[At(first + bit)].Chosen() == High) high |= 1 << bit;
  }
  mask = static_cast<std::int16_t>(taken);
  state = static_cast<std::int16_t>(high);
}

void InputRows::ReadOptions(Instruction& record) const {
  Read(0, record.InMask, record.InState);
  if (inputs_[kMainInputs].offered) Read(kMainInputs, record.DrvMask, record.DrvState);
  record.WaitAND = logic_.Chosen() == 0;
}

}  // namespace tavlo
