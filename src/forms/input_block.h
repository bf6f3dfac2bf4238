// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <array>

#include "forms/entries.h"
#include "forms/input_labels.h"

namespace tavlo {

/// Which input a line asks for, and in which state: the options `OptIn` and `OptState`.
class InputBlock {
 public:
  explicit InputBlock(InputsOf dialog) : dialog_(dialog) {}

  void AddTo(ControlTable& controls);
  void Fill(AxisUnits axis, const Instruction& record);
  /// Captions and shows the inputs that the axis has, and dims those that its limit switches take.
  void LabelInputs(AxisUnits axis);
  /// The axis has changed: an input that the new one does not offer gives way to the first that it does.
  void CleanUpIOnum(AxisUnits axis);
  void Enable(bool enabled);
  /// An input that may be chosen is.
  [[nodiscard]] bool IsValid() const;
  /// The input chosen is one that jogs the axis.
  [[nodiscard]] bool JogCWused() const { return Use() == InputUse::JogCW; }
  [[nodiscard]] bool JogCCWused() const { return Use() == InputUse::JogCCW; }
  [[nodiscard]] bool OffersIndex() const { return inputs_[kMainInputs].offered; }
  /// An input that may not be chosen falls back to the first that may.
  void Write(Instruction& record) const;

 private:
  void Choose(int io_num);
  [[nodiscard]] int FirstValid() const;
  [[nodiscard]] InputUse Use() const;

  InputsOf dialog_;
  std::array<Input, kInputs> inputs_;
  int io_num_ = 0;
  bool enabled_ = true;
  std::array<OptionButton, kInputs> options_;
  OptionGroup<4> state_;
};

}  // namespace tavlo
