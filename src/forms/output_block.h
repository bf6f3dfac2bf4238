// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <array>
#include <string_view>

#include "forms/entries.h"

namespace tavlo {

/// Which output a line sets, and how: the options of the outputs, `OptState` and `pw`.
class OutputBlock {
 public:
  /// The outputs 1 to 4 and the outputs of the further block, Y1 to Y3.
  static constexpr std::size_t kOutputs = 7;
  using Names = std::array<std::string_view, kOutputs>;

  /// A record counts its pulse in so many ms.
  explicit OutputBlock(int pulse_unit) : pulse_unit_(pulse_unit) {}

  void AddTo(ControlTable& controls, const Names& outputs);
  void Fill(AxisUnits axis, const Instruction& record);
  void CleanUp();
  /// Captions and shows the outputs that the axis has.
  void LabelOutputs(AxisUnits axis);
  /// Dims the pulse unless one is chosen.
  void ShowHide();
  /// An output that the drive lacks falls back to the first.
  void Write(AxisUnits axis, Instruction& record) const;

  [[nodiscard]] int State() const { return state_.Chosen(); }
  /// ms
  [[nodiscard]] int Pulse() const { return time_ * pulse_unit_; }

 private:
  void PutPulse(std::int32_t time);

  int pulse_unit_;
  int io_num_ = 0;
  std::array<OptionButton, kOutputs> outputs_;
  OptionGroup<4> state_;
  TextBox pw_;
  Label msec_{{}, "msec"};
  std::int32_t time_ = 0;
};

}  // namespace tavlo
