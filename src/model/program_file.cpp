// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "model/program_file.h"

#include <algorithm>

#include "model/wire.h"
#include "platform/number_format.h"

namespace tavlo {
namespace {

/// What a file of one revision holds. The revision is a single that is compared with doubles, so a
/// revision that lies on a boundary falls to the side of its rounding: 1.12, 1.19, 1.23 and 1.21.6
/// round up, 1.14 and 1.17 round down.
struct Layout {
  explicit Layout(double r)
      : eight_menu_items(r == 0 || r == 1),
        old_home_inputs(r < 1.23),
        jog_drives(r >= 1.12),
        wait_this(r > 1.19),
        servo_currents(r > 1.2106),
        port(r >= 1.14),
        same_flags(r >= 1.17) {}

  bool eight_menu_items;
  bool old_home_inputs;
  bool jog_drives;
  bool wait_this;
  bool servo_currents;
  bool port;
  bool same_flags;
};

void WriteLine(RecordWriter& out, std::int16_t index, const Instruction& line) {
  out << index << line.Type, out.End();
  out << line.Dist << line.Dist2 << line.SafetyDist, out.End();
  out << line.Speed << line.Speed2 << line.RetSpeed, out.End();
  out << line.Dir << line.Accel << line.Decel, out.End();
  out << line.State << line.Time << line.LineNum << line.IONum << line.Count, out.End();
  out << line.Text, out.End();
  out << line.SubType << line.UpperInt << line.UpperFrac << line.LowerInt << line.LowerFrac, out.End();
  out << line.DistVar << line.SpeedVar << line.Dist2Var << line.Speed2Var, out.End();
  out << line.DistIsMMI << line.SpeedIsMMI << line.Dist2IsMMI << line.Speed2IsMMI << line.CountIsMMI,
      out.End();
  out << line.Blank1 << line.Wrap1 << line.Blank2 << line.Wrap2 << line.Blank3 << line.Wrap3, out.End();
  out << line.Reserved3 << line.InState << line.InMask << line.WaitAND, out.End();
  out << line.MotorOn << line.Current << line.IdlePct, out.End();
  for (const std::int16_t target : line.MenuLine) out << target;
  out.End();
  for (const bool used : line.MenuKey) out << used;
  out.End();
  out << line.Drive << line.Proceed << line.JogSpeed << line.JogAccel << line.JogOn << line.JogLR
      << line.JogLRSpeed << line.JogLRAccel << line.JogUD << line.JogUDSpeed << line.JogUDAccel,
      out.End();
  out << line.JogLRDrive << line.JogUDDrive << line.WaitThis, out.End();
}

void ReadLine(ItemReader& items, const Layout& layout, Instruction& line) {
  std::int16_t own_number = 0;  // dropped: the order in the file is what counts
  items.ReadAll(own_number);
  items.ReadAll(line.Type);
  items.ReadAll(line.Dist, line.Dist2, line.SafetyDist);
  items.ReadAll(line.Speed, line.Speed2, line.RetSpeed);
  items.ReadAll(line.Dir, line.Accel, line.Decel);
  items.ReadAll(line.State, line.Time, line.LineNum, line.IONum, line.Count);
  // The drives' own inputs were once numbered along with the others.
  const bool old_home = line.Type == SH && line.IONum == 6;
  const bool old_sensor = line.Type == FS && line.IONum == 8;
  if (layout.old_home_inputs && (old_home || old_sensor)) line.IONum = kFirstDriveInput;
  items.ReadAll(line.Text);
  items.ReadAll(line.SubType, line.UpperInt, line.UpperFrac, line.LowerInt, line.LowerFrac);
  items.ReadAll(line.DistVar, line.SpeedVar, line.Dist2Var, line.Speed2Var);
  items.ReadAll(line.DistIsMMI, line.SpeedIsMMI, line.Dist2IsMMI, line.Speed2IsMMI, line.CountIsMMI);
  items.ReadAll(line.Blank1, line.Wrap1, line.Blank2, line.Wrap2, line.Blank3, line.Wrap3);
  items.ReadAll(line.Reserved3, line.InState, line.InMask, line.WaitAND);
  items.ReadAll(line.MotorOn, line.Current, line.IdlePct);
  const int menu_items = layout.eight_menu_items ? 8 : 9;
  for (int key = 0; key < menu_items; ++key) items.Read(line.MenuLine[key]);
  for (int key = 0; key < menu_items; ++key) items.Read(line.MenuKey[key]);
  items.ReadAll(line.Drive, line.Proceed, line.JogSpeed, line.JogAccel, line.JogOn, line.JogLR,
                line.JogLRSpeed, line.JogLRAccel, line.JogUD, line.JogUDSpeed, line.JogUDAccel);
  if (layout.jog_drives) {
    items.ReadAll(line.JogLRDrive, line.JogUDDrive);
    if (layout.wait_this) {
      items.Read(line.WaitThis);
    } else {
      line.WaitThis = false;
    }
  }
  if ((line.Type == SO || line.Type == FLSO) && line.Time < kShortestPulse) line.Time = kShortestPulse;
  if (line.Type == CM && line.Text.size() > kLongestComment) line.Text.resize(kLongestComment);
}

void ReadAxis(ItemReader& items, const Layout& layout, AxisConfig& axes, int axis) {
  bool use_units = true;
  items.ReadAll(axes.DriveModel[axis], axes.DriveCurrent[axis], axes.IdleCode[axis], axes.StepResCode[axis],
                axes.StepsPerUnit[axis], axes.UnitName[axis], use_units, axes.StepsPerRev[axis],
                axes.LimitKind[axis]);
  axes.UseUnits[axis] = true;
  if (layout.servo_currents) items.ReadAll(axes.ContCurrent[axis], axes.PeakCurrent[axis]);
  axes.DriveCurrent[axis] = std::min(axes.DriveCurrent[axis], MaxCurrent(axes.DriveModel[axis]));
}

void ReadLimitBranch(ItemReader& items, Program& program) {
  std::int16_t action = program.LimitList;
  double target = program.LimitBranch - 1;
  items.ReadAll(action, target);
  program.LimitBranch = target + 1;
  // A list can only show an entry that it has.
  if (action < HaltProgram || action > ContinueProgram) {
    items.Fail();
  } else {
    program.LimitList = action;
  }
}

}  // namespace

std::string VersionTextOf(Version version) {
  std::string text = std::to_string(version.major) + "." + std::to_string(version.minor);
  if (version.revision != 0) text += "." + std::to_string(version.revision);
  return text;
}

float ParseRevision(std::string_view text) {
  const std::size_t point = text.find('.', 2);
  if (point == std::string_view::npos) return static_cast<float>(Val(text));
  const std::string_view tail = text.substr(point + 1);
  std::string number(text.substr(0, point));
  if (tail.size() == 1) number += '0';
  number += tail;
  return static_cast<float>(Val(number));
}

std::string WriteHubProg(const Program& program, std::optional<int> port) {
  RecordWriter out;
  out.PrintLine(VersionTextOf(kVersion));
  out.PrintLine(Printed(kHubModels[program.HubIndex == HubQuad ? HubQuad : HubOcto].code));
  for (std::int16_t line = 0; line < kLines; ++line) WriteLine(out, line, program.Prog[line]);
  const AxisConfig& axes = program.Axis;
  for (int axis = 0; axis < kAxes; ++axis) {
    out << axes.DriveModel[axis] << axes.DriveCurrent[axis] << axes.IdleCode[axis] << axes.StepResCode[axis]
        << axes.StepsPerUnit[axis] << axes.UnitName[axis] << axes.UseUnits[axis] << axes.StepsPerRev[axis]
        << axes.LimitKind[axis],
        out.End();
    out << axes.ContCurrent[axis] << axes.PeakCurrent[axis], out.End();
  }
  out << program.LimitList << program.LimitBranch - 1, out.End();
  for (int axis = 0; axis < kAxes; ++axis) out << axes.AxisName[axis], out.End();
  if (port) out << static_cast<std::int16_t>(*port), out.End();
  out << axes.SameUnits << axes.SameLimits, out.End();
  return out.Text();
}

int UnreadItems(float r) {
  if (r == 1.14F) return 1;
  return r == 1.17F ? 2 : 0;
}

bool LoadHubProg(ItemReader& items, float r, Program& program) {
  const Layout layout(r);
  std::int16_t hub_code = 0;
  items.Read(hub_code);
  program.HubIndex = HubOfCode(hub_code).value_or(HubOcto);
  for (int line = 0; line < kLines; ++line) ReadLine(items, layout, program.Prog[line]);
  for (int axis = 0; axis < kAxes; ++axis) ReadAxis(items, layout, program.Axis, axis);
  ReadLimitBranch(items, program);
  for (int axis = 0; axis < kAxes; ++axis) items.Read(program.Axis.AxisName[axis]);
  std::int16_t port = 0;  // dropped
  if (layout.port) items.Read(port);
  if (layout.same_flags) items.ReadAll(program.Axis.SameUnits, program.Axis.SameLimits);
  return !items.Failed();
}

}  // namespace tavlo
