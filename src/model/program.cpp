// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "model/program.h"

#include <vector>

namespace tavlo {
namespace {

void ResetLine(Instruction& line) {
  line.Type = NO;
  line.Dist = 20000;
  line.Dist2 = 10000;
  line.SafetyDist = 10000;
  line.Speed = 3.0F;
  line.Speed2 = 0.5F;
  line.RetSpeed = 3.0F;
  line.Accel = 100;
  line.Decel = 100;
  line.State = 1;
  line.Time = 10;
  line.IONum = 0;
  line.Count = 10;
  line.Text.clear();
  line.SubType = DisplayOnly;
  line.Reserved1 = 1;
  line.UpperInt = 50;
  line.LowerInt = 1;
  line.LowerFrac = 0;
  line.DistVar = 0;
  line.SpeedVar = 25;
  line.Dist2Var = 1;
  line.Speed2Var = 26;
  line.Reserved2 = true;
  line.WaitAND = true;
  line.InMask = 0;
  line.InState = 0;
  line.Current = 1.0F;
  line.IdlePct = 0;
  for (std::size_t key = 1; key <= 8; ++key) {
    line.MenuKey[key] = key <= 4;
    line.MenuLine[key] = static_cast<std::int16_t>(10 * key - 1);
  }
  line.Proceed = false;
  line.WaitThis = false;
  line.JogSpeed = line.JogLRSpeed = line.JogUDSpeed = 1.0F;
  line.JogAccel = line.JogLRAccel = line.JogUDAccel = 100;
  line.JogUDDrive = 1;
}

}  // namespace

void InitProg(Program& program) {
  program.HubVersion = 0;
  for (std::size_t line = 0; line < kLines; ++line) ResetLine(program.Prog[line]);
}

std::int16_t LinesInProg(const Program& program) {
  std::int16_t last = 0;
  for (std::int16_t line = 0; line < kLines; ++line) {
    if (program.Prog[line].Type != NO) last = line;
  }
  return static_cast<std::int16_t>(last + 1);
}

void ScanLoops(Program& program) {
  std::vector<std::int16_t> open;
  std::int16_t ordinal = 0;
  for (std::int16_t i = 0; i < kLines; ++i) {
    Instruction& line = program.Prog[i];
    if (line.Type == RP) {
      open.push_back(i);
      line.LoopIndex = ordinal++;
    } else if (line.Type == ER) {
      if (open.empty()) {
        line.LineNum = kNoRepeat;
        continue;
      }
      const Instruction& repeat = program.Prog[static_cast<std::size_t>(open.back())];
      line.LineNum = open.back();
      line.LoopIndex = repeat.LoopIndex;
      line.Proceed = repeat.Proceed;
      open.pop_back();
    }
  }
}

int HubAxes(const Program& program) {
  return program.HubIndex == HubQuad ? 4 : kAxes;
}

bool IsHubIO(const Program& program, int axis) {
  return program.HubIndex == HubQuad && axis == kHubQuadIO;
}

bool FourOutputAxis(const Program& program, int axis) {
  if (program.HubIndex == HubQuad && axis >= kHubQuadIO) return axis == kHubQuadIO;
  const int code = DriveModelOf(program, axis);
  return (code >= 19 && code <= 25) || (code >= 48 && code <= 50) || code == 11 || code == 13 || code == 17 ||
         code == 27 || code == 29 || code == 30 || code == 38 || code == 39 || code == 42 || code == 43;
}

bool AnyDspAxis(const Program& program) {
  for (int axis = 0; axis < HubAxes(program); ++axis) {
    const int code = DriveModelOf(program, axis);
    if (ZenuModel(code) || PelmarModel(code)) return true;
  }
  return false;
}

bool FourOutputs(const Program& program, int axis) {
  const int code = DriveModelOf(program, axis);
  return VornModel(code) || DreskModel(code) || code == 19 || IsHubIO(program, axis);
}

bool IsLimitTarget(const Program& program, int line) {
  return program.LimitList == BranchToLine && program.LimitBranch == line + 1;
}

int DriveModelOf(const Program& program, int axis) {
  return IsAxisSlot(axis) ? program.Axis.DriveModel[axis] : 0;
}

std::string AxisNameOf(const Program& program, int axis) {
  return IsAxisSlot(axis) ? program.Axis.AxisName[axis] : std::string();
}

std::string MakeQuotesSingle(std::string_view text) {
  std::string result(text);
  for (char& c : result) {
    if (c == '"') c = '\'';
  }
  return result;
}

}  // namespace tavlo
