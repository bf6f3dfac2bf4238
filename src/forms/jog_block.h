// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string_view>

#include "forms/jog_settings.h"

namespace tavlo {

/// A pair of arrow keys that jogs an axis while a prompt waits for Enter: whether it does, which axis, how
/// fast.
class JogBlock {
 public:
  /// The controls of the block and the fields that they edit.
  struct Parts {
    std::string_view allowed;
    std::string_view drive;
    std::string_view speed;
    std::string_view speed_unit;
    std::string_view accel;
    std::string_view accel_unit;
    bool Instruction::*jog;
    std::int16_t Instruction::*jog_drive;
    float Instruction::*jog_speed;
    std::int32_t Instruction::*jog_accel;
  };
  explicit JogBlock(const Parts& parts);

  void AddTo(ControlTable& controls);
  void Fill(const Program& program, const Instruction& record);
  void CleanUp();
  /// Dims it while the keys do not jog.
  void ShowHide();
  void Write(Instruction& record) const;

 private:
  [[nodiscard]] AxisUnits Units() const { return {*program_, drive_.Axis()}; }
  void SetUnits();

  Parts parts_;
  const Program* program_ = nullptr;
  CheckBox allowed_;
  AxisList drive_;
  JogSettings settings_;
};

}  // namespace tavlo
