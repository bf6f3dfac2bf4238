// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/entries.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <utility>

#include "platform/number_format.h"
#include "text/short_desc.h"

namespace tavlo {
namespace {

constexpr double kSliderStepsPerRev = 40;
constexpr int kLongestDelay = 30000;

/// A jump to an empty line is seldom meant. A file may bring a text of any length, of which no more is told
/// than anybody would read.
std::string TextOf(const Program& program, int line) {
  constexpr std::size_t kMostTold = 500;
  const std::string text = ShownCaption(ShortDesc(program, line).value_or("").substr(0, kMostTold));
  return text.empty() ? "(empty line)" : text;
}

int OnSlider(const Slider& slider, double value) {
  const double held = std::clamp(RoundHalfEven(value), static_cast<double>(slider.min),
                                 static_cast<double>(std::max(slider.min, slider.max)));
  return static_cast<int>(held);
}

std::string UnitOf(AxisUnits units, std::string_view behind, std::string_view without) {
  const AxisConfig& axes = units.program.Axis;
  return axes.UseUnits[units.axis] ? axes.UnitName[units.axis] + std::string(behind) : std::string(without);
}

/// The names of the variables; the first is chosen where the record names none that exists.
void FillVariables(ListBox& list, int variable) {
  list.list.clear();
  for (int i = 0; i < kMMIVariables; ++i) list.list.push_back(MMIVarName(i));
  list.index = variable >= 0 && variable < kMMIVariables ? variable : 0;
}

}  // namespace

std::int32_t PositionOf(const Instruction& record) {
  if (record.Dir != 1) return record.Dist;
  // A damaged record may hold the one number that has no opposite.
  return record.Dist == std::numeric_limits<std::int32_t>::min() ? kMaxSteps : -record.Dist;
}

void WritePosition(Instruction& record, std::int32_t position) {
  record.Dist = std::abs(position);
  record.Dir = static_cast<std::int16_t>(position < 0 ? 1 : 0);
}

std::string LengthUnit(AxisUnits units) {
  return UnitOf(units, "", "Steps");
}

std::string SpeedUnit(AxisUnits units) {
  return UnitOf(units, "/sec", "Rev/sec");
}

std::string AccelUnit(AxisUnits units) {
  return UnitOf(units, "/sec/sec", "Rev/sec/sec");
}

void AxisList::AddTo(ControlTable& controls, std::function<void()> changed, std::string_view list) {
  controls.Add(std::string(list), &drive_, std::move(changed));
}

void AxisList::Fill(const Program& program, int drive) {
  const int axes = HubAxes(program);
  drive_.list.clear();
  for (int axis = 0; axis < axes; ++axis) drive_.list.push_back(AxisNameOf(program, axis));
  drive_.index = drive >= 0 && drive < axes ? drive : 0;
}

void AxisList::FillWithHub(const Program& program, int drive) {
  Fill(program, drive);
  if (program.HubIndex != HubQuad) return;
  drive_.list.emplace_back("Hub");
  if (drive == kHubQuadIO) drive_.index = kHubQuadIO;
}

void DistanceField::AddTo(ControlTable& controls, std::string_view text, std::string_view unit,
                          std::function<void()> left) {
  controls.Add(std::string(text), &text_, std::move(left));
  controls.Add(std::string(unit), &unit_);
}

void DistanceField::LabelUnit(AxisUnits units) {
  unit_.caption = UnitOf(units, suffix_, "Steps" + suffix_);
}

void DistanceField::Put(AxisUnits units, std::int32_t steps) {
  steps_ = steps;
  text_.text = FormatDist(units.program, steps, units.axis);
  text_.touched = false;
}

void DistanceField::Fill(AxisUnits units, std::int32_t steps) {
  LabelUnit(units);
  Put(units, steps);
}

void DistanceField::CleanUp(AxisUnits units, std::int32_t most) {
  CleanUp(units, kind_ == Kind::Length ? 1 : -kMaxSteps, most);
}

void DistanceField::CleanUp(AxisUnits units, std::int32_t least, std::int32_t most) {
  if (!text_.touched && steps_ >= least && steps_ <= most) return;
  const DistEntry entry = kind_ == Kind::Length ? CleanUpDist(units.program, text_.text, units.axis)
                                                : CleanUpPosition(units.program, text_.text, units.axis);
  Put(units, std::min(std::max(entry.steps, least), most));
}

void DistanceField::RaiseTo(AxisUnits units, std::int32_t least) {
  if (!text_.touched && steps_ < least) Put(units, least);
}

void DistanceField::ReadAnew(AxisUnits units) {
  LabelUnit(units);
  text_.touched = true;
}

void SliderField::AddTo(ControlTable& controls, const Names& names, const std::function<AxisUnits()>& units,
                        const std::function<void()>& changed) {
  controls.Add(std::string(names.text), &text_, [this, units, changed] {
    CleanUp(units());
    if (changed) changed();
  });
  controls.Add(std::string(names.unit), &unit_);
  controls.Add(std::string(names.slider), &slider_, [this, units, changed] {
    TakeSlider(units());
    text_.touched = false;
    if (changed) changed();
  });
}

void SliderField::ReadAnew(AxisUnits units) {
  SetEnds(units);
  text_.touched = true;
}

void SpeedField::SetEnds(AxisUnits units) {
  const SliderEnds ends = BarEnds(units.program, units.axis);
  slider_.min = ends.speed_min;
  slider_.max = ends.speed_max;
  unit_.caption = SpeedUnit(units);
}

void SpeedField::Fill(AxisUnits units, float rev_s) {
  SetEnds(units);
  rev_s_ = rev_s;
  text_.text = FormatSpeed(units.program, rev_s_, units.axis);
  slider_.value = OnSlider(slider_, rev_s_ * kSliderStepsPerRev);
}

void SpeedField::CleanUp(AxisUnits units) {
  const bool in_range =
      rev_s_ >= MinSpeed(units.program, units.axis) && rev_s_ <= MaxSpeed(units.program, units.axis);
  if (!text_.touched && in_range) return;
  SpeedEntry entry = CleanUpSpeed(units.program, text_.text, units.axis);
  rev_s_ = entry.rev_s;
  text_.text = std::move(entry.text);
  text_.touched = false;
  slider_.value = OnSlider(slider_, entry.slider);
}

void SpeedField::TakeSlider(AxisUnits units) {
  rev_s_ = Speed();
  text_.text = FormatSpeed(units.program, rev_s_, units.axis);
}

double SpeedField::Speed() const {
  return slider_.value / kSliderStepsPerRev;
}

void AccelField::SetEnds(AxisUnits units) {
  slider_.min = BarEnds(units.program, units.axis).accel_min;
  slider_.max = kMaxAccel;
  unit_.caption = AccelUnit(units);
}

void AccelField::Fill(AxisUnits units, std::int32_t rev_s2) {
  SetEnds(units);
  rev_s2_ = rev_s2;
  text_.text = FormatAccel(units.program, rev_s2, units.axis);
  slider_.value = OnSlider(slider_, rev_s2);
}

void AccelField::CleanUp(AxisUnits units) {
  const bool in_range = rev_s2_ >= slider_.min && rev_s2_ <= slider_.max;
  if (!text_.touched && in_range) return;
  AccelEntry entry = CleanUpAccel(units.program, text_.text, units.axis);
  text_.text = std::move(entry.text);
  text_.touched = false;
  slider_.value = OnSlider(slider_, entry.slider);
  rev_s2_ = slider_.value;
}

void AccelField::TakeSlider(AxisUnits units) {
  rev_s2_ = slider_.value;
  text_.text = FormatAccel(units.program, rev_s2_, units.axis);
}

void VariableChoice::AddTo(ControlTable& controls, std::string_view check_box, std::string_view list) {
  controls.Add(std::string(check_box), &from_);
  controls.Add(std::string(list), &name_);
}

void VariableChoice::Fill(bool is_variable, int variable) {
  from_.value = is_variable;
  FillVariables(name_, variable);
}

void VariableChoice::Show(bool visible) {
  from_.visible = visible;
  name_.visible = visible && from_.value;
}

void VariableChoice::Write(bool& is_variable, std::int16_t& variable) const {
  is_variable = from_.value;
  if (from_.value) variable = static_cast<std::int16_t>(name_.index);
}

void VariableList::AddTo(ControlTable& controls) {
  controls.Add("lblvarname", &heading_);
  controls.Add("varname", &name_);
}

void VariableList::Fill(int variable) {
  FillVariables(name_, variable);
}

void ExecutionChoice::Fill(const Instruction& record) {
  group_.Fill(record.Proceed ? 0 : record.WaitThis ? 1 : 2);
}

void ExecutionChoice::Write(Instruction& record) const {
  record.Proceed = group_.Chosen() == 0;
  // A line that goes on at once keeps what it would wait for.
  if (!record.Proceed) record.WaitThis = group_.Chosen() == 1;
}

void CountField::AddTo(ControlTable& controls, std::string_view text) {
  controls.Add(std::string(text), &text_, [this] { CleanUp(); });
}

void CountField::Fill(std::int32_t count) {
  count_ = count;
  text_.text = Joined(count);
  text_.touched = false;
}

void CountField::CleanUp() {
  if (!text_.touched && count_ >= least_ && count_ <= most_) return;
  const double entered = text_.touched ? RoundHalfEven(Val(text_.text)) : count_;
  Fill(static_cast<std::int32_t>(
      std::clamp(entered, static_cast<double>(least_), static_cast<double>(most_))));
}

void CurrentField::AddTo(ControlTable& controls, std::string_view text, const std::function<float()>& most) {
  controls.Add(std::string(text), &text_, [this, most] { CleanUp(most()); });
}

void CurrentField::Fill(float amperes) {
  amperes_ = amperes;
  text_.text = Format(amperes, "0.00");
  text_.touched = false;
}

void CurrentField::CleanUp(float most) {
  if (!text_.touched && amperes_ >= 0 && amperes_ <= most) return;
  const double entered = text_.touched ? Val(text_.text) : amperes_;
  const double held = std::clamp(entered, 0.0, static_cast<double>(most));
  // To the digits that are shown.
  Fill(static_cast<float>(RoundHalfEven(held * 100) / 100));
}

void CurrentField::ReadAnew(float most) {
  text_.touched = true;
  CleanUp(most);
}

void LineField::AddTo(ControlTable& controls, const Parts& parts) {
  controls.Add(std::string(parts.text), &linenum_, [this] { CleanUp(); });
  if (!parts.spin.empty()) {
    controls.Add(std::string(parts.spin), &spin_, [this] {
      CleanUp();
      Put(number_ + spin_.way);
    });
  }
  controls.Add(std::string(parts.line_text), &line_text_);
  controls.AddShown([this] { line_text_.caption = TextOf(*program_, Entered() - 1); });
}

void LineField::Enable(bool enabled) {
  linenum_.enabled = spin_.enabled = line_text_.enabled = enabled;
}

void LineField::Put(int number) {
  number_ = std::clamp(number, 1, kLines);
  linenum_.text = Joined(number_);
  linenum_.touched = false;
}

void LineField::Fill(const Program& program, int target, int own_line) {
  program_ = &program;
  const bool is_line = target >= 0 && target < kLines;
  Put((is_line ? target : own_line == 0 ? 1 : 0) + 1);
}

int LineField::Entered() const {
  if (!linenum_.touched) return number_;
  return static_cast<int>(std::clamp(RoundHalfEven(Val(linenum_.text)), 1.0, static_cast<double>(kLines)));
}

void LineField::CleanUp() {
  if (linenum_.touched) Put(Entered());
}

void DelayField::AddTo(ControlTable& controls, std::string_view text, std::string_view slider) {
  slider_.min = 1;
  slider_.max = kLongestDelay;
  controls.Add(std::string(text), &text_, [this] { CleanUp(); });
  controls.Add(std::string(slider), &slider_, [this] { Fill(slider_.value); });
}

void DelayField::Fill(std::int32_t hundredths) {
  hundredths_ = hundredths;
  slider_.value = OnSlider(slider_, hundredths);
  text_.text = FormatRetDelay(hundredths);
  text_.touched = false;
}

void DelayField::CleanUp() {
  const bool in_range = hundredths_ >= slider_.min && hundredths_ <= slider_.max;
  if (text_.touched || !in_range) Fill(CleanUpRetDelay(text_.text).slider);
}

}  // namespace tavlo
