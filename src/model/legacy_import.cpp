// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "model/legacy_import.h"

#include <limits>

#include "platform/number_format.h"

namespace tavlo {
namespace {

constexpr int kOldLines = 29;
constexpr int kLines100 = 100;
constexpr std::int16_t kOldDriveCode = 5;

/// What a file of one revision holds. A single is compared with doubles: 1.2 counts as 1.2 or later,
/// while 1.28, 1.4 and 1.41 count as below those boundaries.
struct ImportLayout {
  explicit ImportLayout(double r)
      : hundred_lines(r >= 1.2),
        units(r >= 1.28),
        second_operands(r >= 1.4),
        menus(r >= 1.41),
        prompt_direction(r >= 1.5) {}

  bool hundred_lines;
  bool units;
  bool second_operands;
  bool menus;
  bool prompt_direction;
};

/// Settings of the one axis as the file holds them, and what its lines share.
struct Settings {
  std::int16_t drive_code = kOldDriveCode;
  std::int16_t idle_byte = 0;
  float jog_speed = 0;
  std::int32_t jog_accel = 0;
};

void ReadPromptHead(ItemReader& items, Instruction& line) {
  items.ReadAll(line.LineNum, line.SubType, line.Reserved1, line.UpperInt, line.UpperFrac, line.LowerInt,
                line.LowerFrac, line.DistVar);
}

void ReadMove(ItemReader& items, Instruction& line) {
  items.ReadAll(line.Dist, line.Speed, line.Accel, line.Decel, line.Dir);
}

/// `load29`: the record of one line.
void ReadLine29(ItemReader& items, Instruction& line) {
  line.Drive = 0;
  line.Proceed = false;
  if (line.Type == CM) {
    items.Read(line.Text);
  } else if (line.Type == MMI) {
    ReadPromptHead(items, line);
    items.Read(line.Text);
  } else {
    ReadMove(items, line);
    items.ReadAll(line.SafetyDist, line.RetSpeed, line.IONum, line.LineNum, line.State, line.Time,
                  line.Count);
    line.CountIsMMI = line.DistIsMMI = line.SpeedIsMMI = false;
  }
}

void ReadPrompt100(ItemReader& items, const ImportLayout& layout, Instruction& line) {
  ReadPromptHead(items, line);
  if (layout.menus) {
    for (int key = 1; key <= 8; ++key) items.Read(line.MenuLine[key]);
    items.ReadAll(line.Wrap3, line.Blank3);
  }
  items.ReadAll(line.Wrap1, line.Blank1, line.Wrap2, line.Blank2, line.Text);
  if (layout.second_operands) items.Read(line.Reserved2);
  if (!layout.menus) return;
  for (int key = 1; key <= 8; ++key) items.Read(line.MenuKey[key]);
  if (layout.prompt_direction) items.Read(line.Dir);
}

/// The old file had no fields of its own for these.
void ReadMotorFields(ItemReader& items, Instruction& line) {
  using Percent = std::numeric_limits<decltype(line.IdlePct)>;
  line.Current = static_cast<float>(line.Time);
  if (line.Count < Percent::min() || line.Count > Percent::max()) {
    items.Fail();
  } else {
    line.IdlePct = static_cast<std::int16_t>(line.Count);
  }
}

/// `load100`: the record of one line.
void ReadLine100(ItemReader& items, const ImportLayout& layout, Instruction& line) {
  if (line.Type == CM) {
    items.Read(line.Text);
    return;
  }
  if (line.Type == MMI) {
    ReadPrompt100(items, layout, line);
    return;
  }
  ReadMove(items, line);
  if (layout.second_operands) items.ReadAll(line.Dist2, line.Speed2);
  items.ReadAll(line.SafetyDist, line.RetSpeed, line.IONum, line.LineNum, line.State, line.Time, line.Count,
                line.DistVar, line.SpeedVar, line.DistIsMMI, line.SpeedIsMMI, line.CountIsMMI);
  if (layout.second_operands) {
    items.ReadAll(line.Dist2Var, line.Speed2Var, line.Dist2IsMMI, line.Speed2IsMMI);
  }
  items.ReadAll(line.Wrap1, line.Blank1, line.Wrap2, line.Blank2, line.Text);
  if (layout.second_operands) items.ReadAll(line.InMask, line.InState, line.Reserved3, line.WaitAND);
  if (line.Type == CC) ReadMotorFields(items, line);
}

void ReadLines(ItemReader& items, const ImportLayout& layout, int count, Program& program, Repairs* repairs) {
  for (int i = 0; i < count; ++i) {
    Instruction& line = program.Prog[i];
    std::int16_t own_number = 0;  // dropped: the order in the file is what counts
    items.ReadAll(own_number, line.Type);
    if (layout.hundred_lines) {
      ReadLine100(items, layout, line);
    } else {
      ReadLine29(items, line);
    }
    LengthenPulse(program, i, repairs);
  }
  for (int i = count; i < kLines; ++i) program.Prog[i].Type = NO;
}

void ReadSettings(ItemReader& items, const ImportLayout& layout, Settings& settings, Program& program,
                  Repairs* repairs) {
  AxisConfig& axes = program.Axis;
  items.ReadAll(axes.DriveCurrent[0], settings.idle_byte, axes.StepResCode[0], settings.jog_speed,
                settings.jog_accel);
  axes.UseUnits[0] = true;
  if (layout.units) items.ReadAll(axes.StepsPerUnit[0], axes.UnitName[0], axes.UseUnits[0]);
  if (layout.second_operands) items.Read(axes.StepsPerRev[0]);
  CountInUnits(program, 0, repairs);
}

std::int16_t IdleCodeOf(int idle_byte) {
  if (idle_byte == 0) return 0;
  if (idle_byte < 96) return 1;
  return idle_byte >= 192 ? 3 : 2;
}

/// Currents stand in the file on a scale of 0 to 255. The idle code goes through the same scale, which
/// leaves it 0 in nearly all cases.
void ScaleCurrents(const Settings& settings, AxisConfig& axes) {
  const double most = MaxCurrent(settings.drive_code);
  axes.DriveCurrent[0] = static_cast<float>(axes.DriveCurrent[0] / 255.0 * most);
  axes.IdleCode[0] = static_cast<std::int16_t>(RoundHalfEven(IdleCodeOf(settings.idle_byte) / 255.0 * most));
}

/// The drive of the file is not the one that the axis has, and a current that the one bears may be too high
/// for the other.
void HoldCurrents(Program& program, Repairs* repairs) {
  for (int axis = 0; axis < kAxes; ++axis) LowerCurrent(program, axis, repairs);
}

void MoveToAxis0(const Settings& settings, int count, Program& program, Repairs* repairs) {
  for (int i = 0; i < count; ++i) {
    Instruction& line = program.Prog[i];
    line.Drive = 0;
    line.JogSpeed = settings.jog_speed;
    line.JogAccel = settings.jog_accel;
    DropHandWheel(program, i, repairs);
  }
}

/// The resolution came in with the limit switch in its top bit.
void SplitResolution(AxisConfig& axes) {
  const int byte = axes.StepResCode[0];
  axes.LimitKind[0] = static_cast<std::int16_t>(byte / 128);
  axes.StepResCode[0] = static_cast<std::int16_t>(byte & 15);
}

}  // namespace

bool HasDriveCode(float r) {
  return ImportLayout(r).hundred_lines;
}

int UnreadOldItems(float r) {
  constexpr int kUnitRecord = 3;
  return r == 1.28F ? kUnitRecord : 0;
}

bool LoadOskelProg(ItemReader& items, float r, Program& program, Repairs* repairs) {
  const ImportLayout layout(r);
  Settings settings;
  if (layout.hundred_lines) items.Read(settings.drive_code);
  const int count = layout.hundred_lines ? kLines100 : kOldLines;
  ReadLines(items, layout, count, program, repairs);
  ReadSettings(items, layout, settings, program, repairs);
  if (!NamesFit(program.Axis)) items.Fail();
  ScaleCurrents(settings, program.Axis);
  HoldCurrents(program, repairs);
  if (items.Failed()) {
    for (int i = 0; i < kLines; ++i) program.Prog[i].Type = NO;
    return false;
  }
  MoveToAxis0(settings, count, program, repairs);
  SplitResolution(program.Axis);
  return true;
}

}  // namespace tavlo
