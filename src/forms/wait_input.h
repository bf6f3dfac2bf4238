// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "forms/input_form.h"
#include "forms/jog_settings.h"

namespace tavlo {

/// `WaitInput`: the program waits for inputs, by which the axis may be jogged meanwhile.
class WaitInput : public InputForm {
 public:
  WaitInput();

 protected:
  void Fill() override;
  void CleanUp() override { jog_.CleanUp(Units()); }
  void ShowHide() override;
  void Write(Instruction& record) const override;
  void SetUnits() override;

 private:
  [[nodiscard]] bool Jogs() const;

  Frame jog_frame_;
  /// `cw` stands for yes, `ccw` for no.
  DirectionChoice activate_;
  JogSettings jog_;
  Label jog_note_;
};

}  // namespace tavlo
