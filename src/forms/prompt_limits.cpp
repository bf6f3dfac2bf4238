// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/prompt_limits.h"

#include <array>
#include <cmath>
#include <limits>

#include "forms/prompt_text.h"
#include "motion/range.h"
#include "platform/number_format.h"

namespace tavlo {
namespace {

constexpr double kTenThousand = 10000;
/// What is tested; what is stored ends at the count that the hub holds.
constexpr double kHighestCount = 65535;

std::string UnitOf(AxisUnits axis, int sub_type) {
  const AxisConfig& axes = axis.program.Axis;
  const bool own = axes.UseUnits[axis.axis];
  if (sub_type == GetDistance) return own ? axes.UnitName[axis.axis] : "steps";
  if (sub_type == GetSpeed) return (own ? axes.UnitName[axis.axis] : "rev") + "/sec";
  return {};
}

/// What one of the limits of a function may be. The hub multiplies what is entered by the steps of a unit,
/// whether the axis shows them or not.
struct Range {
  double least;
  double most;
};

double StepsPerUnit(AxisUnits axis) {
  const double steps = axis.program.Axis.StepsPerUnit[axis.axis];
  return steps == 0 ? 1 : steps;
}

Range RangeOfDistance(AxisUnits axis, bool upper) {
  const double steps = StepsPerUnit(axis);
  return {upper ? Round4(1 / steps) : 0, Round4(kMaxSteps / steps)};
}

Range RangeOfSpeed(AxisUnits axis) {
  const double units = GetStepsPerRev(axis.program, axis.axis) / StepsPerUnit(axis);
  return {Round4(MinSpeed(axis.program, axis.axis) * units),
          Round4(MaxSpeed(axis.program, axis.axis) * units)};
}

Range RangeOf(AxisUnits axis, int sub_type, bool upper) {
  if (sub_type == GetDistance) return RangeOfDistance(axis, upper);
  if (sub_type == GetSpeed) return RangeOfSpeed(axis);
  return {1, kHighestCount};
}

std::string_view QuantityOf(int sub_type) {
  if (sub_type == GetDistance) return "distance";
  return sub_type == GetSpeed ? "speed" : "repeat counts";
}

/// "The lower limit for distance must not be less than 0 inch."
std::string Message(bool upper, int sub_type, std::string_view than, double value, const std::string& unit) {
  std::string text = upper ? "The upper limit for " : "The lower limit for ";
  text.append(QuantityOf(sub_type)).append(" must not be ").append(than).append(" than ");
  text += Joined(value);
  if (!unit.empty()) text += " " + unit;
  // A unit may have a dot of its own.
  if (text.back() != '.') text += '.';
  return text;
}

bool IsWithin(double x, AxisUnits axis, int sub_type, bool upper, MessageBoxes& boxes) {
  const Range range = RangeOf(axis, sub_type, upper);
  const std::string unit = UnitOf(axis, sub_type);
  if (x > range.most) {
    boxes.MsgBox({.text = Message(upper, sub_type, "greater", range.most, unit), .title = "Too large"});
    return false;
  }
  if (x >= range.least) return true;
  if (sub_type != GetCount) {
    boxes.MsgBox({.text = Message(upper, sub_type, "less", range.least, unit), .title = "Too small"});
  }
  return false;
}

}  // namespace

void PromptLimits::AddTo(ControlTable& controls) {
  controls.Add(std::string(kLower), &lower_.text);
  controls.Add("lblLL", &lower_.unit);
  controls.Add(std::string(kUpper), &upper_.text);
  controls.Add("lblUL", &upper_.unit);
}

void PromptLimits::Limit::Fill(std::int32_t its_whole, std::int32_t its_ten_thousandths) {
  whole = its_whole;
  ten_thousandths = its_ten_thousandths;
  text.text = Joined(whole + ten_thousandths / kTenThousand);
  text.touched = false;
}

double PromptLimits::Limit::Value() const {
  return text.touched ? Val(text.text) : whole + ten_thousandths / kTenThousand;
}

void PromptLimits::Limit::CleanUpCount() {
  const std::int32_t count = tavlo::CleanUpCount(Joined(Value()));
  if (text.touched || count != Value()) Fill(count, 0);
}

void PromptLimits::Limit::Write(std::int32_t& its_whole, std::int32_t& its_ten_thousandths) const {
  its_whole = whole;
  its_ten_thousandths = ten_thousandths;
  if (!text.touched) return;
  using Ends = std::numeric_limits<std::int32_t>;
  const double value = Held(Value(), Ends::min(), Ends::max());
  const double below = std::floor(value);
  its_whole = static_cast<std::int32_t>(below);
  its_ten_thousandths = static_cast<std::int32_t>(RoundHalfEven((value - below) * kTenThousand));
}

void PromptLimits::Fill(const Instruction& record) {
  lower_.Fill(record.LowerInt, record.LowerFrac);
  upper_.Fill(record.UpperInt, record.UpperFrac);
}

void PromptLimits::ShowHide(AxisUnits axis, int sub_type) {
  for (Limit* limit : {&lower_, &upper_}) {
    limit->unit.caption = UnitOf(axis, sub_type);
    limit->text.visible = TakesNumber(sub_type);
    limit->unit.visible = !limit->unit.caption.empty();
  }
}

bool PromptLimits::upperlimitOK(AxisUnits axis, int sub_type, MessageBoxes& boxes) const {
  return IsWithin(upper_.Value(), axis, sub_type, true, boxes);
}

bool PromptLimits::lowerlimitOK(AxisUnits axis, int sub_type, MessageBoxes& boxes) const {
  return IsWithin(lower_.Value(), axis, sub_type, false, boxes);
}

std::optional<std::string_view> PromptLimits::Refused(AxisUnits axis, int sub_type,
                                                      MessageBoxes& boxes) const {
  if (!TakesNumber(sub_type)) return std::nullopt;
  if (!upperlimitOK(axis, sub_type, boxes)) return kUpper;
  if (!lowerlimitOK(axis, sub_type, boxes)) return kLower;
  if (upper_.Value() >= lower_.Value()) return std::nullopt;
  boxes.MsgBox({.text = "The upper limit must not be less than the lower limit.", .title = "Too small"});
  return kUpper;
}

void PromptLimits::CleanUpCounts() {
  lower_.CleanUpCount();
  upper_.CleanUpCount();
}

void PromptLimits::Write(Instruction& record) const {
  lower_.Write(record.LowerInt, record.LowerFrac);
  upper_.Write(record.UpperInt, record.UpperFrac);
}

}  // namespace tavlo
