// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <algorithm>
#include <cmath>
#include <tuple>

#include "model/kinds.h"
#include "motion/range.h"
#include "motion/units.h"
#include "platform/number_format.h"

namespace tavlo {
namespace {

/// f of the distances: new units over old.
double DistFactor(const Program& program, const OldUnits& old, int axis) {
  return old.U[axis] == 0 ? 1 : static_cast<double>(program.Axis.StepsPerUnit[axis]) / old.U[axis];
}

/// f of speeds and accelerations.
double RateFactor(const Program& program, const OldUnits& old, int axis) {
  const std::int32_t r = GetStepsPerRev(program, axis);
  return r == 0 ? 1 : DistFactor(program, old, axis) * old.R[axis] / r;
}

std::int32_t Scaled(std::int32_t value, double factor, double lowest, double highest) {
  return static_cast<std::int32_t>(Held(RoundHalfEven(value * factor), lowest, highest));
}

void CapLimit(std::int32_t& whole, std::int32_t& fraction, double highest) {
  if (whole + fraction / 10000.0 <= highest) return;
  const double below = std::floor(highest);
  whole = static_cast<std::int32_t>(below);
  fraction = static_cast<std::int32_t>(RoundHalfEven((highest - below) * 10000));
}

/// Whether the line tells an axis how far, how fast or how steeply; others hold such numbers for nothing.
bool TellsHowToMove(const Instruction& line) {
  return IsMove(line.Type) || IsValuePrompt(line) || line.Type == SP || line.Type == SS || line.Type == FE ||
         (line.Type == WI && line.JogOn);
}

/// Position 0 becomes position 1 whatever the settings are, which is no change that they make.
bool SameMotion(const Instruction& a, const Instruction& b) {
  const auto steps = [](std::int32_t value) { return std::max(value, 1); };
  const auto numbers = [&](const Instruction& line) {
    return std::tuple(steps(line.Dist), steps(line.Dist2), steps(line.SafetyDist), line.UpperInt,
                      line.UpperFrac, line.LowerInt, line.LowerFrac, line.Speed, line.Speed2, line.RetSpeed,
                      line.JogSpeed, line.Accel, line.Decel, line.JogAccel);
  };
  return numbers(a) == numbers(b);
}

bool JogsOtherwise(const Instruction& a, const Instruction& b) {
  if (a.Type != MMI || a.SubType != WaitEnter) return false;
  const auto left_right = [](const Instruction& line) { return std::tie(line.JogLRSpeed, line.JogLRAccel); };
  const auto up_down = [](const Instruction& line) { return std::tie(line.JogUDSpeed, line.JogUDAccel); };
  return (a.JogLR && left_right(a) != left_right(b)) || (a.JogUD && up_down(a) != up_down(b));
}

}  // namespace

OldUnits UnitsOf(const Program& program) {
  OldUnits old;
  old.U = program.Axis.StepsPerUnit;
  for (int axis = 0; axis < kAxisSlots; ++axis) old.R[axis] = GetStepsPerRev(program, axis);
  return old;
}

void ScaleDist(Program& program, const OldUnits& old) {
  for (int i = 0; i < kLines; ++i) {
    Instruction& line = program.Prog[i];
    if (!IsAxisSlot(line.Drive)) continue;
    const double factor = DistFactor(program, old, line.Drive);
    for (std::int32_t* steps : {&line.Dist, &line.SafetyDist, &line.Dist2}) {
      *steps = Scaled(*steps, factor, 1, kMaxSteps);
    }
    const std::int32_t u = program.Axis.StepsPerUnit[line.Drive];
    if (u == 0) continue;
    const double highest = Round4(static_cast<double>(kMaxSteps) / u);
    CapLimit(line.LowerInt, line.LowerFrac, highest);
    CapLimit(line.UpperInt, line.UpperFrac, highest);
  }
}

void ScaleSpeed(Program& program, const OldUnits& old) {
  const auto scale = [&](float& speed, int axis) {
    if (!IsAxisSlot(axis)) return;
    speed = static_cast<float>(
        Held(speed * RateFactor(program, old, axis), MinSpeed(program, axis), MaxSpeed(program, axis)));
  };
  for (int i = 0; i < kLines; ++i) {
    Instruction& line = program.Prog[i];
    for (float* speed : {&line.Speed, &line.RetSpeed, &line.Speed2, &line.JogSpeed})
      scale(*speed, line.Drive);
    scale(line.JogLRSpeed, line.JogLRDrive);
    scale(line.JogUDSpeed, line.JogUDDrive);
  }
}

void ScaleAccel(Program& program, const OldUnits& old) {
  const auto scale = [&](std::int32_t& accel, int axis) {
    if (!IsAxisSlot(axis)) return;
    accel = Scaled(accel, RateFactor(program, old, axis), MinAccel(program, axis), kMaxAccel);
  };
  for (int i = 0; i < kLines; ++i) {
    Instruction& line = program.Prog[i];
    for (std::int32_t* accel : {&line.Accel, &line.Decel, &line.JogAccel}) scale(*accel, line.Drive);
    scale(line.JogLRAccel, line.JogLRDrive);
    scale(line.JogUDAccel, line.JogUDDrive);
  }
}

int LinesRescaled(const Program& before, const Program& after) {
  int lines = 0;
  for (int i = 0; i < kLines; ++i) {
    const Instruction& was = before.Prog[i];
    const Instruction& is = after.Prog[i];
    if ((TellsHowToMove(is) && !SameMotion(was, is)) || JogsOtherwise(was, is)) ++lines;
  }
  return lines;
}

}  // namespace tavlo
