// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <cmath>
#include <cstdint>
#include <string>

#include "model/program.h"

namespace tavlo::testing {

/// Returns the name of a field of the record that no dialog may leave as it is, or nothing.
inline std::string FieldOutOfRange(const Instruction& record) {
  const auto within = [](auto value, auto least, auto most) { return value >= least && value <= most; };
  const auto is_speed = [](float speed) { return std::isfinite(speed) && speed >= 0 && speed <= 100; };
  const auto is_accel = [&](std::int32_t accel) { return within(accel, 1, 3000); };
  const auto is_variable = [&](int variable) { return within(variable, 0, kMMIVariables - 1); };
  const auto is_byte = [&](int mask) { return within(mask, 0, 255); };
  const struct {
    const char* name;
    bool good;
  } fields[] = {
      {"Type", within(record.Type, 0, kTypes - 1)},
      {"Dist", within(record.Dist, 0, 16000000)},
      {"Dist2", within(record.Dist2, 1, 16000000)},
      {"SafetyDist", within(record.SafetyDist, 1, 16000000)},
      {"Speed", is_speed(record.Speed)},
      {"Speed2", is_speed(record.Speed2)},
      {"RetSpeed", is_speed(record.RetSpeed)},
      {"JogSpeed", is_speed(record.JogSpeed)},
      {"JogLRSpeed", is_speed(record.JogLRSpeed)},
      {"JogUDSpeed", is_speed(record.JogUDSpeed)},
      {"Accel", is_accel(record.Accel)},
      {"Decel", is_accel(record.Decel)},
      {"JogAccel", is_accel(record.JogAccel)},
      {"JogLRAccel", is_accel(record.JogLRAccel)},
      {"JogUDAccel", is_accel(record.JogUDAccel)},
      {"Dir", within(record.Dir, 0, 1)},
      {"State", within(record.State, 0, 3)},
      {"Time", within(record.Time, 0, 30000)},
      {"IONum", within(record.IONum, 0, 7) || within(record.IONum, 128, 135)},
      {"Count", within(record.Count, 1, 65535)},
      {"Text", record.Text.size() <= 80 && record.Text.find('"') == std::string::npos},
      {"SubType", within(record.SubType, 0, 6)},
      {"UpperFrac", within(record.UpperFrac, 0, 10000)},
      {"LowerFrac", within(record.LowerFrac, 0, 10000)},
      {"DistVar", is_variable(record.DistVar)},
      {"SpeedVar", is_variable(record.SpeedVar)},
      {"Dist2Var", is_variable(record.Dist2Var)},
      {"Speed2Var", is_variable(record.Speed2Var)},
      {"InState", is_byte(record.InState)},
      {"InMask", is_byte(record.InMask)},
      {"DrvState", is_byte(record.DrvState)},
      {"DrvMask", is_byte(record.DrvMask)},
      {"Current", std::isfinite(record.Current) && within(record.Current, 0.0F, 20.0F)},
      {"IdlePct", within(record.IdlePct, 0, 3)},
      {"Drive", within(record.Drive, 0, kAxes - 1)},
      {"JogLRDrive", within(record.JogLRDrive, 0, kAxes - 1)},
      {"JogUDDrive", within(record.JogUDDrive, 0, kAxes - 1)},
  };
  for (const auto& field : fields) {
    if (!field.good) return field.name;
  }
  for (const std::int16_t line : record.MenuLine) {
    if (!within(line, 0, kLines - 1)) return "MenuLine";
  }
  // What is inserted pushes a target beyond the end, each time by one.
  return record.LineNum >= 0 ? std::string() : "LineNum";
}

}  // namespace tavlo::testing
