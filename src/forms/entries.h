// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "forms/form.h"
#include "motion/units.h"

namespace tavlo {

// The blocks of controls that the forms are made of. Each adds its controls under the names it is given, is
// filled from the record, cleans what was typed, and knows the value that is written.
//
// What was typed is cleaned once, so that the number shown is the number written. An entry that nobody
// touched keeps the record's value while that is in range.

/// The axis by whose units and limits an entry goes.
struct AxisUnits {
  const Program& program;
  int axis;
};

/// A record holds a position as its distance from 0 and its side.
[[nodiscard]] std::int32_t PositionOf(const Instruction& record);
void WritePosition(Instruction& record, std::int32_t position);

/// What stands behind a length on the axis: the unit's name, or "Steps".
[[nodiscard]] std::string LengthUnit(AxisUnits units);
/// What stands behind a speed on the axis: the unit's name with "/sec", or "Rev/sec".
[[nodiscard]] std::string SpeedUnit(AxisUnits units);
/// The same behind an acceleration: "/sec/sec", or "Rev/sec/sec".
[[nodiscard]] std::string AccelUnit(AxisUnits units);

/// The axis of the line, `Drive`, or another one that it names.
class AxisList {
 public:
  void AddTo(ControlTable& controls, std::function<void()> changed, std::string_view list = "Drive");
  void Fill(const Program& program, int drive);
  /// The same with the hub itself as the last entry, on a Hub Quad.
  void FillWithHub(const Program& program, int drive);
  [[nodiscard]] std::int16_t Axis() const { return static_cast<std::int16_t>(drive_.index); }
  void Enable(bool enabled) { drive_.enabled = enabled; }

 private:
  ListBox drive_;
};

/// A length or a position in steps, as text in the units of the axis.
class DistanceField {
 public:
  enum class Kind { Length, Position };
  /// `suffix` stands behind the unit's name.
  explicit DistanceField(Kind kind = Kind::Length, std::string_view suffix = {})
      : kind_(kind), suffix_(suffix) {}

  void AddTo(ControlTable& controls, std::string_view text, std::string_view unit,
             std::function<void()> left);
  void Fill(AxisUnits units, std::int32_t steps);
  /// No farther than `most` steps.
  void CleanUp(AxisUnits units, std::int32_t most = kMaxSteps);
  /// No nearer than `least` steps either.
  void CleanUp(AxisUnits units, std::int32_t least, std::int32_t most);
  /// Raises a number that is not being typed to `least` steps.
  void RaiseTo(AxisUnits units, std::int32_t least);
  /// The units have changed: what the box shows counts in the new ones, as if it were typed.
  void ReadAnew(AxisUnits units);
  [[nodiscard]] std::int32_t Steps() const { return steps_; }
  void Enable(bool enabled) { text_.enabled = enabled; }
  void Show(bool visible) { text_.visible = unit_.visible = visible; }

 private:
  void LabelUnit(AxisUnits units);
  void Put(AxisUnits units, std::int32_t steps);

  Kind kind_;
  std::string suffix_;
  TextBox text_;
  Label unit_;
  std::int32_t steps_ = 0;
};

/// A number with a slider beside it and its unit behind it.
class SliderField {
 public:
  struct Names {
    std::string_view text;
    std::string_view slider;
    std::string_view unit;
  };
  virtual ~SliderField() = default;

  /// `changed` follows on a new value, by whatever way it came.
  void AddTo(ControlTable& controls, const Names& names, const std::function<AxisUnits()>& units,
             const std::function<void()>& changed = {});
  virtual void CleanUp(AxisUnits units) = 0;
  /// The units have changed: what the box shows counts in the new ones, as if it were typed.
  void ReadAnew(AxisUnits units);
  void Enable(bool enabled) { text_.enabled = slider_.enabled = enabled; }

 protected:
  /// The slider's ends and the unit's caption.
  virtual void SetEnds(AxisUnits units) = 0;
  /// The slider was moved.
  virtual void TakeSlider(AxisUnits units) = 0;

  TextBox text_;
  Slider slider_;
  Label unit_;
};

/// A speed, whose slider counts 0.025 rev/s. What is written is the slider's.
class SpeedField : public SliderField {
 public:
  void Fill(AxisUnits units, float rev_s);
  void CleanUp(AxisUnits units) override;
  /// rev/s
  [[nodiscard]] double Speed() const;

 protected:
  void SetEnds(AxisUnits units) override;
  void TakeSlider(AxisUnits units) override;

 private:
  double rev_s_ = 0;
};

/// An acceleration, whose slider counts rev/s/s.
class AccelField : public SliderField {
 public:
  void Fill(AxisUnits units, std::int32_t rev_s2);
  void CleanUp(AxisUnits units) override;
  [[nodiscard]] std::int32_t Accel() const { return slider_.value; }

 protected:
  void SetEnds(AxisUnits units) override;
  void TakeSlider(AxisUnits units) override;

 private:
  std::int32_t rev_s2_ = 0;
};

/// A value that may come from a variable instead of its entry: a check box and the list of the variables'
/// names.
class VariableChoice {
 public:
  void AddTo(ControlTable& controls, std::string_view check_box, std::string_view list);
  void Fill(bool is_variable, int variable);
  [[nodiscard]] bool IsOn() const { return from_.value; }
  void Show(bool visible);
  void Enable(bool enabled) { from_.enabled = name_.enabled = enabled; }
  /// The number of the variable stays as it was while the box is clear.
  void Write(bool& is_variable, std::int16_t& variable) const;

 private:
  CheckBox from_;
  ListBox name_;
};

/// The variable that something is put into: `varname`, under its heading.
class VariableList {
 public:
  explicit VariableList(std::string_view heading = "Name") : heading_{{}, std::string(heading)} {}

  void AddTo(ControlTable& controls);
  void Fill(int variable);
  void Show(bool visible) { name_.visible = heading_.visible = visible; }
  [[nodiscard]] std::int16_t Variable() const { return static_cast<std::int16_t>(name_.index); }

 private:
  ListBox name_;
  Label heading_;
};

/// Options of which one is on.
template <std::size_t N>
class OptionGroup {
 public:
  void AddTo(ControlTable& controls, const std::array<std::string_view, N>& names,
             const std::function<void()>& changed = {}) {
    for (std::size_t i = 0; i < N; ++i) {
      controls.Add(std::string(names[i]), &options_[i], [this, i, changed] {
        Fill(static_cast<int>(i));
        if (changed) changed();
      });
    }
  }
  void Fill(int chosen) {
    for (std::size_t i = 0; i < N; ++i) options_[i].value = static_cast<int>(i) == chosen;
  }
  [[nodiscard]] int Chosen() const {
    for (std::size_t i = 0; i < N; ++i) {
      if (options_[i].value) return static_cast<int>(i);
    }
    return -1;
  }
  void Enable(bool enabled) {
    for (OptionButton& option : options_) option.enabled = enabled;
  }
  void Show(bool visible) {
    for (OptionButton& option : options_) option.visible = visible;
  }

 private:
  std::array<OptionButton, N> options_;
};

/// `cw` and `ccw`
class DirectionChoice {
 public:
  void AddTo(ControlTable& controls) { group_.AddTo(controls, {"cw", "ccw"}); }
  void Fill(int dir) { group_.Fill(dir == 0 ? 0 : 1); }
  [[nodiscard]] std::int16_t Dir() const { return static_cast<std::int16_t>(group_.Chosen() == 0 ? 0 : 1); }
  void Enable(bool enabled) { group_.Enable(enabled); }

 private:
  OptionGroup<2> group_;
};

/// `OptProceed`, `OptWait` and `OptWaitAll`
class ExecutionChoice {
 public:
  void AddTo(ControlTable& controls) { group_.AddTo(controls, {"OptProceed", "OptWait", "OptWaitAll"}); }
  void Fill(const Instruction& record);
  void Write(Instruction& record) const;

 private:
  OptionGroup<3> group_;
};

/// A whole number within its ends.
class CountField {
 public:
  CountField(int least, int most) : least_(least), most_(most) {}

  void AddTo(ControlTable& controls, std::string_view text);
  void Fill(std::int32_t count);
  void CleanUp();
  [[nodiscard]] std::int32_t Count() const { return count_; }
  void Enable(bool enabled) { text_.enabled = enabled; }
  void Show(bool visible) { text_.visible = visible; }
  [[nodiscard]] const std::string& Text() const { return text_.text; }

 private:
  int least_;
  int most_;
  TextBox text_;
  std::int32_t count_ = 0;
};

/// A current in amperes, to two decimals.
class CurrentField {
 public:
  /// `most` is the highest of the drive.
  void AddTo(ControlTable& controls, std::string_view text, const std::function<float()>& most);
  void Fill(float amperes);
  /// Forces it to 0 and up to `most`.
  void CleanUp(float most);
  /// The drive has changed: what the box shows counts as if it were typed.
  void ReadAnew(float most);
  [[nodiscard]] float Amperes() const { return amperes_; }
  void Enable(bool enabled) { text_.enabled = enabled; }
  void Show(bool visible) { text_.visible = visible; }
  [[nodiscard]] const std::string& Text() const { return text_.text; }

 private:
  TextBox text_;
  float amperes_ = 0;
};

/// The number of a line, with its spin buttons and the text of that line, which follows as the number is
/// typed: `linenum`, `Spin1` and `linetext`. A target is 0-based, what is shown counts from 1.
class LineField {
 public:
  struct Parts {
    std::string_view text = "linenum";
    /// Empty for a box without buttons.
    std::string_view spin = "Spin1";
    std::string_view line_text = "linetext";
  };
  void AddTo(ControlTable& controls, const Parts& parts);
  void AddTo(ControlTable& controls) { AddTo(controls, Parts{}); }
  /// A target that was never set, or is no line, is shown as the first line, or the second for the first
  /// itself: a new jump never points at itself. The program must outlive the dialog's stay.
  void Fill(const Program& program, int target, int own_line);
  void CleanUp();
  [[nodiscard]] std::int16_t Target() const { return static_cast<std::int16_t>(number_ - 1); }
  void Enable(bool enabled);

 private:
  void Put(int number);
  /// The number that stands in the box, forced into range.
  [[nodiscard]] int Entered() const;

  const Program* program_ = nullptr;
  TextBox linenum_;
  SpinButton spin_;
  Label line_text_;
  int number_ = 1;
};

/// A time with its slider, whose steps are 10 ms.
class DelayField {
 public:
  void AddTo(ControlTable& controls, std::string_view text, std::string_view slider);
  void Fill(std::int32_t hundredths);
  void CleanUp();
  /// Hundredths of a second.
  [[nodiscard]] std::int32_t Hundredths() const { return slider_.value; }

 private:
  TextBox text_;
  Slider slider_;
  std::int32_t hundredths_ = 0;
};

}  // namespace tavlo
