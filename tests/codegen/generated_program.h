// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <cstdint>
#include <random>
#include <string>

#include "codegen/one_line.h"

namespace tavlo::testing {

/// A whole program of random lines and settings, each of them one that can go to a hub. The same seed gives
/// the same program wherever it is built.
class ProgramGenerator {
 public:
  explicit ProgramGenerator(std::uint32_t seed) : engine_(seed) {}

  Program Make() {
    constexpr std::array<float, 4> kFirmware = {1.05F, 1.08F, 1.09F, 1.38F};
    Program program = NewProgram();
    program.HubVersion = kFirmware[Below(kFirmware.size())];
    program.HubIndex = Flag() ? HubOcto : HubQuad;
    program.LimitList = Short(3);
    program.LimitBranch = Below(kLines) + 1;
    program.MMIused = Flag();
    for (int axis = 0; axis < kAxes; ++axis) MakeAxis(program.Axis, axis);
    for (int line = 0; line < kLines; ++line) MakeLine(program.Prog[line]);
    ScanLoops(program);
    return program;
  }

 private:
  // The standard distributions differ from library to library.
  int Below(std::size_t limit) { return static_cast<int>(engine_() % limit); }
  std::int16_t Short(int limit) { return static_cast<std::int16_t>(Below(static_cast<std::size_t>(limit))); }
  bool Flag() { return Below(2) != 0; }
  /// Now and then one of the ends.
  int Number(int highest) {
    const int choice = Below(8);
    if (choice < 2) return choice * highest;
    return Below(static_cast<std::size_t>(highest) + 1);
  }
  float Speed() { return static_cast<float>(Number(Flag() ? 65535 : 4000) / (Flag() ? 40.0 : 41.7)); }
  float Amps() { return static_cast<float>(Below(1000) / 100.0); }
  std::string Text(int longest) {
    std::string text(static_cast<std::size_t>(Below(static_cast<std::size_t>(longest) + 1)), ' ');
    for (char& c : text) c = static_cast<char>(1 + Below(254));
    return text;
  }

  void MakeAxis(AxisConfig& axes, int axis) {
    axes.DriveModel[axis] = Short(51);
    axes.DriveCurrent[axis] = Amps();
    axes.ContCurrent[axis] = Amps();
    axes.PeakCurrent[axis] = Amps();
    axes.IdleCurrent[axis] = Amps();
    axes.AccelCurrent[axis] = Amps();
    axes.IdleCode[axis] = Short(256);
    if (Below(4) == 0) axes.StepResCode[axis] = Short(17);
    axes.StepsPerRev[axis] = 1 + Below(65535);
    axes.StepsPerUnit[axis] = Number(30000);
    axes.LimitKind[axis] = Short(3);
    axes.UnitName[axis] = Text(4);
    axes.AxisName[axis] = Text(8);
    axes.SameUnits = Flag();
    axes.SameLimits = Flag();
    axes.SameSpare = Flag();
  }

  std::int16_t TypeOfLine() {
    const auto type = Short(kTypes);
    if (type == RP) ++open_;
    if (type == MMImenu || (type == ER && open_ == 0)) return NO;
    if (type == ER) --open_;
    return type;
  }

  void MakeLine(Instruction& line) {
    line.Type = TypeOfLine();
    line.Dist = Number(line.Type == FE ? 255 : 0xFFFFFF);
    line.Dist2 = Number(0xFFFFFF);
    line.SafetyDist = Number(0xFFFFFF);
    line.Speed = Speed();
    line.Speed2 = Speed();
    line.RetSpeed = Speed();
    line.JogSpeed = Speed();
    line.JogLRSpeed = Speed();
    line.JogUDSpeed = Speed();
    line.Accel = Number(65535);
    line.Decel = Number(65535);
    line.JogAccel = Number(65535);
    line.JogLRAccel = Number(65535);
    line.JogUDAccel = Number(65535);
    line.Dir = Short(2);
    line.State = Short(4);
    line.Time = Number(line.Type == SO ? 500 : 65535);
    if (line.Type == SO && Below(4) == 0) line.Time = Below(6);
    line.LineNum = Short(kLines);
    line.IONum = Short(136);
    line.Count = Number(65535);
    MakePrompt(line);
    line.DistVar = Short(kMMIVariables);
    line.SpeedVar = Short(kMMIVariables);
    line.Dist2Var = Short(kMMIVariables);
    line.Speed2Var = Short(kMMIVariables);
    line.DistIsMMI = Flag();
    line.SpeedIsMMI = Flag();
    line.Dist2IsMMI = Below(4) == 0;
    line.Speed2IsMMI = Below(4) == 0;
    line.CountIsMMI = Flag();
    line.InState = Short(256);
    line.InMask = Short(256);
    line.DrvState = Short(256);
    line.DrvMask = Short(256);
    line.WaitAND = Flag();
    line.MotorOn = Flag();
    line.Current = Amps();
    line.IdlePct = Short(8);
    line.Drive = Short(kAxes);
    line.JogOn = Flag();
    line.Proceed = Flag();
    // Both wait bits and the text bit of a knob line do not fit in a byte.
    line.WaitThis = Flag() && line.Type != FE;
  }

  void MakePrompt(Instruction& line) {
    line.SubType = line.Type == SS ? Short(4) : Short(7);
    const bool comment = line.Type == CM;
    // A pool of the hub's size holds the longest texts of every line.
    line.Text = Text(comment ? (Below(4) == 0 ? 27 : 26) : 20);
    if (comment && Below(8) == 0) line.Text.resize(27, 'x');
    line.UpperInt = Number(0xFFFFFF);
    line.UpperFrac = Number(9999);
    line.LowerInt = Number(0xFFFFFF);
    line.LowerFrac = Number(9999);
    line.Wrap1 = Flag();
    line.Blank1 = Flag();
    line.Wrap2 = Flag();
    line.Blank2 = Flag();
    line.Wrap3 = Flag();
    line.Blank3 = Flag();
    line.JogLR = Flag();
    line.JogUD = Flag();
    line.JogLRDrive = Short(kAxes);
    line.JogUDDrive = Short(kAxes);
    for (int key = 1; key <= 8; ++key) {
      line.MenuKey[key] = Flag();
      line.MenuLine[key] = Short(kLines);
    }
  }

  std::mt19937 engine_;
  int open_ = 0;
};

}  // namespace tavlo::testing
