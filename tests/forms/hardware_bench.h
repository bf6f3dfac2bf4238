// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string>

#include "forms/form_bench.h"
#include "forms/hardware.h"

namespace tavlo::testing {

/// The hardware settings of a program before an operator.
struct HardwareBench : FormOperator {
  HardwareBench() : FormOperator(form) {
    InitHardware(program.Axis);
    InitProg(program);
  }

  void Open() {
    form.Load(program, [this] {
      ++scans;
      return found;
    });
  }
  [[nodiscard]] bool OK() { return form.Confirm(boxes); }
  /// Of axis 0..7.
  [[nodiscard]] static std::string At(std::string_view name, int axis) {
    return std::string(name) + "(" + std::to_string(axis) + ")";
  }
  void ChooseModel(int axis, int code) { Choose(At("ModelList", axis), code); }
  [[nodiscard]] int Model(int axis) { return List(At("ModelList", axis)).index; }

  Program program;
  FakeBoxes boxes;
  Hardware form{boxes};
  DriveScan found;
  int scans = 0;
};

}  // namespace tavlo::testing
