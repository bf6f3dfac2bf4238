// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "model/program_file.h"

#include "platform/number_format.h"

namespace tavlo {
namespace {

/// What a file of one revision holds. The revision is a single that is compared with doubles, so a
/// revision that lies on a boundary falls to the side of its rounding: 1.12, 1.19, 1.23 and 1.21.6
/// round up, 1.14 and 1.17 round down.
struct FileLayout {
  explicit FileLayout(double r)
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

/// Both walk the same records. A reader takes a record's end for a comma.
class Reading {
 public:
  explicit Reading(ItemReader& items) : items_(items) {}
  template <class... Fields>
  void Record(Fields&... fields) {
    items_.ReadAll(fields...);
  }
  template <class Fields>
  void Row(Fields& fields, int count) {
    for (int i = 0; i < count; ++i) items_.Read(fields[i]);
  }

 private:
  ItemReader& items_;
};

class Writing {
 public:
  explicit Writing(RecordWriter& out) : out_(out) {}
  template <class... Fields>
  void Record(const Fields&... fields) {
    (out_ << ... << fields);
    out_.End();
  }
  template <class Fields>
  void Row(const Fields& fields, int count) {
    for (int i = 0; i < count; ++i) out_ << fields[i];
    out_.End();
  }

 private:
  RecordWriter& out_;
};

/// What a file holds apart from the lines and the axes, in the form that it has there.
struct Remainder {
  std::int16_t action = HaltProgram;
  /// 0-based.
  double target = 0;
  bool has_port = false;
  std::int16_t port = 0;
};

template <class Records, class Line>
void LineRecords(Records records, const FileLayout& layout, Line& line) {
  records.Record(line.Dist, line.Dist2, line.SafetyDist);
  records.Record(line.Speed, line.Speed2, line.RetSpeed);
  records.Record(line.Dir, line.Accel, line.Decel);
  records.Record(line.State, line.Time, line.LineNum, line.IONum, line.Count);
  records.Record(line.Text);
  records.Record(line.SubType, line.UpperInt, line.UpperFrac, line.LowerInt, line.LowerFrac);
  records.Record(line.DistVar, line.SpeedVar, line.Dist2Var, line.Speed2Var);
  records.Record(line.DistIsMMI, line.SpeedIsMMI, line.Dist2IsMMI, line.Speed2IsMMI, line.CountIsMMI);
  records.Record(line.Blank1, line.Wrap1, line.Blank2, line.Wrap2, line.Blank3, line.Wrap3);
  records.Record(line.Reserved3, line.InState, line.InMask, line.WaitAND);
  records.Record(line.MotorOn, line.Current, line.IdlePct);
  const int menu_items = layout.eight_menu_items ? 8 : 9;
  records.Row(line.MenuLine, menu_items);
  records.Row(line.MenuKey, menu_items);
  records.Record(line.Drive, line.Proceed, line.JogSpeed, line.JogAccel, line.JogOn, line.JogLR,
                 line.JogLRSpeed, line.JogLRAccel, line.JogUD, line.JogUDSpeed, line.JogUDAccel);
  if (layout.wait_this) {
    records.Record(line.JogLRDrive, line.JogUDDrive, line.WaitThis);
  } else if (layout.jog_drives) {
    records.Record(line.JogLRDrive, line.JogUDDrive);
  }
}

template <class Records, class Axes>
void AxisRecords(Records records, const FileLayout& layout, Axes& axes, int axis) {
  records.Record(axes.DriveModel[axis], axes.DriveCurrent[axis], axes.IdleCode[axis], axes.StepResCode[axis],
                 axes.StepsPerUnit[axis], axes.UnitName[axis], axes.UseUnits[axis], axes.StepsPerRev[axis],
                 axes.LimitKind[axis]);
  if (layout.servo_currents) records.Record(axes.ContCurrent[axis], axes.PeakCurrent[axis]);
}

template <class Records, class AnyProgram>
void ProgramRecords(Records records, const FileLayout& layout, AnyProgram& program, Remainder& remainder) {
  for (std::int16_t line = 0; line < kLines; ++line) {
    std::int16_t own_number = line;  // for who reads the file: its order is what counts
    records.Record(own_number, program.Prog[line].Type);
    LineRecords(records, layout, program.Prog[line]);
  }
  for (int axis = 0; axis < kAxes; ++axis) AxisRecords(records, layout, program.Axis, axis);
  records.Record(remainder.action, remainder.target);
  for (int axis = 0; axis < kAxes; ++axis) records.Record(program.Axis.AxisName[axis]);
  if (remainder.has_port) records.Record(remainder.port);
  if (layout.same_flags) records.Record(program.Axis.SameUnits, program.Axis.SameLimits);
}

/// What an older file means, and what no file may bring.
void SettleLine(const FileLayout& layout, Program& program, int line, Repairs* repairs) {
  Instruction& record = program.Prog[line];
  // The drives' own inputs were once numbered along with the others.
  const bool old_home = record.Type == SH && record.IONum == 6;
  const bool old_sensor = record.Type == FS && record.IONum == 8;
  if (layout.old_home_inputs && (old_home || old_sensor)) UseDriveInput(program, line, repairs);
  if (layout.jog_drives && !layout.wait_this) record.WaitThis = false;
  LengthenPulse(program, line, repairs);
  CutComment(program, line, repairs);
}

void SettleAxis(Program& program, int axis, Repairs* repairs) {
  CountInUnits(program, axis, repairs);
  LowerCurrent(program, axis, repairs);
}

/// A list can only show an entry that it has. False for another.
bool TakeLimit(const Remainder& remainder, Program& program) {
  program.LimitBranch = remainder.target + 1;
  if (remainder.action < HaltProgram || remainder.action > ContinueProgram) return false;
  program.LimitList = remainder.action;
  return true;
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
  Remainder remainder{program.LimitList, program.LimitBranch - 1, port.has_value(),
                      static_cast<std::int16_t>(port.value_or(0))};
  ProgramRecords(Writing(out), FileLayout(ParseRevision(VersionTextOf(kVersion))), program, remainder);
  return out.Text();
}

std::vector<int> LinesNotWhollyInFile(const Program& program) {
  std::vector<int> lines;
  for (int line = 0; line < kLines; ++line) {
    const Instruction& record = program.Prog[line];
    if ((record.Type == III || record.Type == WII) && record.DrvMask != 0) lines.push_back(line);
  }
  return lines;
}

int UnreadItems(float r) {
  if (r == 1.14F) return 1;
  return r == 1.17F ? 2 : 0;
}

bool LoadHubProg(ItemReader& items, float r, Program& program, Repairs* repairs) {
  const FileLayout layout(r);
  std::int16_t hub_code = 0;
  items.Read(hub_code);
  program.HubIndex = HubOfCode(hub_code).value_or(HubOcto);
  Remainder remainder{program.LimitList, program.LimitBranch - 1, layout.port, 0};
  ProgramRecords(Reading(items), layout, program, remainder);
  for (int line = 0; line < kLines; ++line) SettleLine(layout, program, line, repairs);
  for (int axis = 0; axis < kAxes; ++axis) SettleAxis(program, axis, repairs);
  if (!TakeLimit(remainder, program) || !NamesFit(program.Axis)) items.Fail();
  return !items.Failed();
}

}  // namespace tavlo
