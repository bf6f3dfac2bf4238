// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <array>
#include <cstdint>

#include "forms/entries.h"
#include "forms/input_labels.h"

namespace tavlo {

/// Which inputs a line asks for at once, in the frame `FrameSum`: a row of options for each, `OptSum1` to
/// `OptSum16`, how they are taken together, and the sentence that says so, `LogicDesc`.
class InputRows {
 public:
  void AddTo(ControlTable& controls);
  void Fill(AxisUnits axis, const Instruction& record);
  /// Captions and shows the rows of the inputs that the axis has. What was chosen in the others stays for the
  /// case that the axis comes back.
  void ShowHideInputs(AxisUnits axis);
  void Show(bool visible) { frame_.visible = visible; }
  /// An input is to be high or low.
  [[nodiscard]] bool AnyChosen() const;
  /// Writes what is chosen. The masks of the further block stay as they were where there is none.
  void ReadOptions(Instruction& record) const;

 private:
  void SetOptions(int place, int mask, int state);
  void UpdateSumDesc();
  [[nodiscard]] bool IsChosen(int place) const;
  void Read(int first, std::int16_t& mask, std::int16_t& state) const;

  Frame frame_;
  std::array<Input, kInputs> inputs_;
  std::array<Label, kInputs> numbers_;
  std::array<OptionGroup<3>, kInputs> rows_;
  OptionGroup<2> logic_;
  Label description_;
};

}  // namespace tavlo
