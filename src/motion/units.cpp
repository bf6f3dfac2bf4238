// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "motion/units.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "model/wire.h"
#include "motion/range.h"
#include "platform/number_format.h"

namespace tavlo {
namespace {

/// Above this resolution the fast drives are no faster than the others.
constexpr int kFastResolution = 25400;

double U(const Program& program, int axis) {
  return IsAxisSlot(axis) ? program.Axis.StepsPerUnit[axis] : 0;
}
double R(const Program& program, int axis) {
  return GetStepsPerRev(program, axis);
}
/// The old drives of model 3 go by their free resolution, whatever code is chosen.
template <class T>
T OwnStepListLimit(const Program& program, int axis, T usual, T below_2000, T below_400) {
  if (DriveModelOf(program, axis) != kOwnStepListModel) return usual;
  const std::int32_t free = program.Axis.StepsPerRev[axis];
  if (free < 400) return below_400;
  return free < 2000 ? below_2000 : usual;
}

double Quantised(double rev_s, double r) {
  if (r == 0) return 0;
  return std::trunc(RoundHalfEven(rev_s * r) / 50) * 50 / r;
}

int SliderValue(double value) {
  return static_cast<int>(Held(RoundHalfEven(value), -1e9, 1e9));
}

/// The number of an entry. "1E999" is infinite, and infinite times 0 steps is no number: far beyond every
/// limit is far enough.
double Entered(std::string_view text) {
  constexpr double kFarBeyond = 1e100;
  return Held(Val(text), -kFarBeyond, kFarBeyond);
}

/// A quotient that stays finite when a damaged file gave an axis 0 steps.
double Over(double x, double divisor) {
  return divisor == 0 ? 0 : x / divisor;
}

DistEntry CleanUpSteps(const Program& program, std::string_view text, int axis, double lowest,
                       double highest) {
  double x = Entered(text);
  std::int32_t steps = 0;
  if (UsesUnits(program, axis) && U(program, axis) != 0) {
    const double u = U(program, axis);
    // A file may bring a negative U, which shows every distance negative and turns the ends about.
    const auto [least, most] = std::minmax({lowest / u, highest / u});
    x = Held(x, least, most);
    steps = static_cast<std::int32_t>(RoundHalfEven(x * u));
  } else {
    steps = static_cast<std::int32_t>(RoundHalfEven(Held(x, lowest, highest)));
  }
  return {steps, FormatDist(program, steps, axis)};
}

}  // namespace

std::int32_t GetStepsPerRev(const Program& program, int axis) {
  if (!IsAxisSlot(axis)) return 0;
  const int code = program.Axis.StepResCode[axis];
  if (code == kFreeResolution) return program.Axis.StepsPerRev[axis];
  return code >= 0 && code < kFreeResolution ? kStepsPerRev[code] : 0;
}

bool UsesUnits(const Program& program, int axis) {
  return IsAxisSlot(axis) && program.Axis.UseUnits[axis];
}

double UserToRev(const Program& program, double x, int axis) {
  return Over(x * U(program, axis), R(program, axis));
}

double RevToUser(const Program& program, double x, int axis) {
  return Over(x, U(program, axis)) * R(program, axis);
}

double ShownSpeed(const Program& program, double rev_s, int axis) {
  return UsesUnits(program, axis) ? RevToUser(program, rev_s, axis) : rev_s;
}

double ShownDist(const Program& program, double steps, int axis) {
  return UsesUnits(program, axis) ? Over(steps, U(program, axis)) : steps;
}

std::string FormatDist(const Program& program, double steps, int axis) {
  return Format(ShownDist(program, steps, axis), UsesUnits(program, axis) ? "#########0.0####" : "0");
}

std::string FormatSpeed(const Program& program, double rev_s, int axis) {
  return Format(ShownSpeed(program, rev_s, axis), UsesUnits(program, axis) ? "#0.0000" : "#0.000#");
}

std::string FormatAccel(const Program& program, double rev_s2, int axis) {
  if (UsesUnits(program, axis))
    return Format(RevToUser(program, rev_s2, axis), AccelFormatFor(program, axis));
  return Joined(RoundHalfEven(rev_s2));
}

std::string_view AccelFormatFor(const Program& program, int axis) {
  const double u = U(program, axis);
  if (u >= 10000) return "###0.0#";
  return u >= 1000 ? "###0.0" : "####";
}

double MinSpeed(const Program& program, int axis) {
  return OwnStepListLimit(program, axis, 0.025, 0.125, 0.25);
}

double MaxSpeed(const Program& program, int axis) {
  const int code = DriveModelOf(program, axis);
  const bool fast_model = code == kOwnStepListModel || ServoModel(code);
  return fast_model && GetStepsPerRev(program, axis) <= kFastResolution ? 100 : 50;
}

int MinAccel(const Program& program, int axis) {
  return OwnStepListLimit(program, axis, 1, 5, 10);
}

double Round4(double x) {
  return std::floor(x * 10000) / 10000;
}

SpeedEntry CleanUpSpeed(const Program& program, std::string_view text, int axis) {
  double x = Entered(text);
  if (UsesUnits(program, axis)) x = UserToRev(program, x, axis);
  x = Quantised(Held(x, MinSpeed(program, axis), MaxSpeed(program, axis)), R(program, axis));
  return {x, Format(ShownSpeed(program, x, axis), "#0.0000"), SliderValue(x * kSpeedUnits)};
}

Speed2Entry CleanUpSpeed2(const Program& program, std::string_view text, int axis, double first_rev_s) {
  double x = Entered(text);
  if (UsesUnits(program, axis)) x = UserToRev(program, x, axis);
  x = std::min(x, first_rev_s);
  x = Quantised(Held(x, MinSpeed(program, axis), MaxSpeed(program, axis)), R(program, axis));
  return {x, FormatSpeed(program, x, axis)};
}

AccelEntry CleanUpAccel(const Program& program, std::string_view text, int axis) {
  double x = Entered(text);
  if (UsesUnits(program, axis)) x = RoundHalfEven(UserToRev(program, x, axis));
  x = Held(x, MinAccel(program, axis), kMaxAccel);
  return {FormatAccel(program, x, axis), SliderValue(x)};
}

AccelEntry CleanUpJogAccel(const Program& program, std::string_view text, int axis) {
  double x = RoundHalfEven(UserToRev(program, Entered(text), axis));
  x = Held(x, MinAccel(program, axis), kMaxAccel);
  return {FormatAccel(program, x, axis), SliderValue(x)};
}

DistEntry CleanUpDist(const Program& program, std::string_view text, int axis) {
  return CleanUpSteps(program, text, axis, 1, kMaxSteps);
}

DistEntry CleanUpPosition(const Program& program, std::string_view text, int axis) {
  return CleanUpSteps(program, text, axis, -kMaxSteps, kMaxSteps);
}

std::string FormatRetDelay(std::int32_t hundredths) {
  return Format(hundredths / 100.0, "#0.00");
}

DelayEntry CleanUpRetDelay(std::string_view text) {
  const int hundredths = SliderValue(Held(Entered(text), 0.01, 300.0) * 100);
  // Of the slider, so that the number shown is the one that is stored.
  return {FormatRetDelay(hundredths), hundredths};
}

std::int32_t CleanUpCount(std::string_view text) {
  return static_cast<std::int32_t>(Held(RoundHalfEven(Entered(text)), 1.0, 32767.0));
}

SliderEnds BarEnds(const Program& program, int axis) {
  return {SliderValue(MinSpeed(program, axis) * kSpeedUnits),
          SliderValue(MaxSpeed(program, axis) * kSpeedUnits), MinAccel(program, axis)};
}

}  // namespace tavlo
