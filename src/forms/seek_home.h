// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string>

#include "forms/sensor_form.h"

namespace tavlo {

/// `SeekHome`: a move that finds the home sensor.
class SeekHome : public SensorForm {
 public:
  SeekHome();

 protected:
  [[nodiscard]] bool MayWrite(MessageBoxes& boxes) override;
  void Write(Instruction& record) const override;
  [[nodiscard]] std::string Shown(double steps) const override;

 private:
  /// As a label reads it: what is seen is one "&".
  Label clearance_{{}, "Required clearance between limits && hard stop"};
};

}  // namespace tavlo
