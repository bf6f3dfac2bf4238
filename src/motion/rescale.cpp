// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <cmath>

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

}  // namespace tavlo
