// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <cstdint>
#include <string>
#include <type_traits>

#include "model/program.h"

namespace tavlo::testing {

/// Calls `visit` for each field of a record, in their order. It does not compile if one is missing.
template <class Record, class Visit>
void ForEachField(Record& record, Visit&& visit) {
  auto& [type, dist, dist2, safety_dist, speed, speed2, ret_speed, dir, accel, decel, state, time, line_num,
         io_num, count, text, sub_type, reserved1, upper_int, upper_frac, lower_int, lower_frac, dist_var,
         speed_var, dist2_var, speed2_var, dist_is_mmi, speed_is_mmi, dist2_is_mmi, speed2_is_mmi,
         count_is_mmi, blank1, wrap1, blank2, wrap2, blank3, wrap3, reserved2, reserved3, in_state, in_mask,
         drv_state, drv_mask, wait_and, motor_on, current, idle_pct, menu_line, menu_key, drive, jog_lr_drive,
         jog_ud_drive, proceed, jog_speed, jog_lr_speed, jog_ud_speed, jog_accel, jog_lr_accel, jog_ud_accel,
         jog_on, jog_lr, jog_ud, loop_index, wait_this, kp, ki, kd, kaff, kv, kvff, acont, apeak, changes_kp,
         changes_ki, changes_kd, changes_kaff, changes_kv, changes_kvff, changes_acont, changes_apeak] =
      record;
  const auto all = [&](auto&... fields) { (visit(fields), ...); };
  all(type, dist, dist2, safety_dist, speed, speed2, ret_speed, dir, accel, decel, state, time, line_num,
      io_num, count, text, sub_type, reserved1, upper_int, upper_frac, lower_int, lower_frac, dist_var,
      speed_var, dist2_var, speed2_var, dist_is_mmi, speed_is_mmi, dist2_is_mmi, speed2_is_mmi, count_is_mmi,
      blank1, wrap1, blank2, wrap2, blank3, wrap3, reserved2, reserved3, in_state, in_mask, drv_state,
      drv_mask, wait_and, motor_on, current, idle_pct);
  for (auto& key : menu_line) visit(key);
  for (auto& key : menu_key) visit(key);
  all(drive, jog_lr_drive, jog_ud_drive, proceed, jog_speed, jog_lr_speed, jog_ud_speed, jog_accel,
      jog_lr_accel, jog_ud_accel, jog_on, jog_lr, jog_ud, loop_index, wait_this, kp, ki, kd, kaff, kv, kvff,
      acont, apeak, changes_kp, changes_ki, changes_kd, changes_kaff, changes_kv, changes_kvff, changes_acont,
      changes_apeak);
}

/// Gives fields values of which no two are the same, flags aside. Another `sign` gives each field, flags too,
/// another value.
class DifferentValues {
 public:
  explicit DifferentValues(int sign) : sign_(sign) {}

  template <class Field>
  void operator()(Field& field) {
    const int number = sign_ * ++count_;
    if constexpr (std::is_same_v<Field, bool>) {
      // Two flags differ in one of the lines at least.
      field = ((count_ * 2654435761U >> 13) % 2 == 0) == (sign_ > 0);
    } else if constexpr (std::is_same_v<Field, std::string>) {
      field = "Text " + std::to_string(number);
    } else if constexpr (std::is_same_v<Field, float>) {
      field = static_cast<float>(number) + 0.25F;
    } else {
      field = static_cast<Field>(number);
    }
  }

 private:
  int sign_;
  unsigned count_ = 0;
};

/// A program whose every field has a value of its own; `sign` is 1 or -1. Its lines go through all types.
[[nodiscard]] inline Program ProgramOfDifferentValues(int sign) {
  Program program;
  DifferentValues values(sign);
  for (int line = 0; line < kLines; ++line) {
    ForEachField(program.Prog[line], values);
    program.Prog[line].Type = static_cast<std::int16_t>((line + (sign > 0 ? 0 : 7)) % kTypes);
  }
  AxisConfig& axes = program.Axis;
  for (int axis = 0; axis < kAxes; ++axis) {
    for (auto* field : {&axes.IdleCode, &axes.StepResCode, &axes.LimitKind}) values((*field)[axis]);
    for (auto* field : {&axes.StepsPerRev, &axes.StepsPerUnit}) values((*field)[axis]);
    for (auto* field : {&axes.UnitName, &axes.AxisName}) values((*field)[axis]);
    for (auto* field :
         {&axes.ContCurrent, &axes.PeakCurrent, &axes.RunCurrent, &axes.AccelCurrent, &axes.IdleCurrent}) {
      values((*field)[axis]);
    }
    axes.UseUnits[axis] = true;
    axes.DriveModel[axis] = static_cast<std::int16_t>(axis + (sign > 0 ? 1 : 36));
    axes.DriveCurrent[axis] = static_cast<float>(0.5 + axis * 0.0625 + (sign > 0 ? 0 : 0.03125));
  }
  axes.SameUnits = axes.SameSpare = sign > 0;
  axes.SameLimits = sign < 0;
  program.HubIndex = sign > 0 ? HubQuad : HubOcto;
  program.LimitList = sign > 0 ? BranchToLine : ContinueProgram;
  program.LimitBranch = sign > 0 ? 77 : 88;
  return program;
}

}  // namespace tavlo::testing
