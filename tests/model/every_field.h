// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <cstdint>
#include <string>
#include <tuple>
#include <type_traits>

#include "model/program.h"
#include "model/record_fields.h"

namespace tavlo::testing {

template <class Value>
inline constexpr bool kIsArray = requires {
  std::tuple_size<Value>::value;
};

/// Calls `visit` for each field of a line's record, an array's elements one by one, in their order.
template <class Record, class Visit>
void ForEachField(Record& record, Visit&& visit) {
  const auto each = [&](auto& field) {
    if constexpr (kIsArray<std::remove_cvref_t<decltype(field)>>) {
      for (auto& element : field) visit(element);
    } else {
      visit(field);
    }
  };
  std::apply([&](const auto&... field) { (each(record.*field.field), ...); }, kInstructionFields);
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
