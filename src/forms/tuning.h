// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <array>
#include <string_view>

#include "forms/axis_form.h"
#include "forms/registry.h"

namespace tavlo {

/// A value of a drive's control loop: whether the line changes it, its number, and its slider.
class TuningField {
 public:
  /// How a value stands on its slider, and how it is shown.
  struct Scale {
    double (*value_at)(int position);
    int (*position_of)(double value);
    /// Steps of one whole, to which a value is rounded, ties to even.
    int steps;
    std::string_view picture;
  };
  struct Names {
    std::string_view check_box;
    std::string_view text;
    std::string_view slider;
  };
  TuningField(const Scale& scale, double least) : scale_(scale), least_(least) {}

  void AddTo(ControlTable& controls, const Names& names);
  void Fill(bool changes, double value, double most);
  void CleanUp();
  /// Another drive has another end; a value beyond it is pulled back.
  void EndAt(double most);
  /// Dims the number and its slider while the line leaves the value alone.
  void ShowHide() { text_.enabled = slider_.enabled = changes_.value; }

  [[nodiscard]] bool Changes() const { return changes_.value; }
  [[nodiscard]] double Value() const { return value_; }

 private:
  void Put(double value);
  void TakeSlider();

  const Scale& scale_;
  double least_;
  double most_ = 0;
  CheckBox changes_;
  TextBox text_;
  Slider slider_;
  double value_ = 0;
};

/// `Tuning`: the gains of a servo drive's control loop and the limits of its currents.
class Tuning : public AxisForm {
 public:
  Tuning();

 protected:
  void Fill() override;
  void CleanUp() override;
  void ShowHide() override;
  void Write(Instruction& record) const override;
  void SetUnits() override;

 private:
  OptionGroup<2> motor_;
  std::array<TuningField, 6> gains_;
  TuningField continuous_;
  TuningField peak_;
  Label warning_;
};

/// The row of the dialog `Tuning`. No kind of line has it, nor does the picker or a menu: hubs know no line
/// that tunes a drive. It stands ready for one, and the tests alone open it.
[[nodiscard]] const FormRow& TuningRow();

}  // namespace tavlo
