// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "oskel_writer.h"

#include "model/file_items.h"

namespace tavlo::examples {
namespace {

template <class... Items>
void Record(RecordWriter& out, const Items&... items) {
  (out << ... << items);
  out.End();
}

void WritePrompt(RecordWriter& out, const OskelRevision& revision, const Instruction& line) {
  out << line.LineNum << line.SubType << line.Reserved1 << line.UpperInt << line.UpperFrac << line.LowerInt
      << line.LowerFrac << line.DistVar;
  if (!revision.hundred_lines) return Record(out, line.Text);
  if (revision.menus) {
    for (int key = 1; key <= 8; ++key) out << line.MenuLine[key];
    out << line.Wrap3 << line.Blank3;
  }
  out.End();
  out << line.Wrap1 << line.Blank1 << line.Wrap2 << line.Blank2 << line.Text;
  if (revision.second_operands) out << line.Reserved2;
  if (revision.menus) {
    for (int key = 1; key <= 8; ++key) out << line.MenuKey[key];
  }
  if (revision.prompt_direction) out << line.Dir;
  out.End();
}

void WriteMove(RecordWriter& out, const OskelRevision& revision, const Instruction& line) {
  out << line.Dist << line.Speed << line.Accel << line.Decel << line.Dir;
  if (revision.second_operands) out << line.Dist2 << line.Speed2;
  out.End();
  Record(out, line.SafetyDist, line.RetSpeed);
  Record(out, line.IONum, line.LineNum, line.State, line.Time);
  out << line.Count;
  if (!revision.hundred_lines) return out.End();
  out << line.DistVar << line.SpeedVar << line.DistIsMMI << line.SpeedIsMMI << line.CountIsMMI;
  if (revision.second_operands) {
    out << line.Dist2Var << line.Speed2Var << line.Dist2IsMMI << line.Speed2IsMMI;
  }
  out.End();
  Record(out, line.Wrap1, line.Blank1, line.Wrap2, line.Blank2, line.Text);
  if (revision.second_operands) Record(out, line.InMask, line.InState, line.Reserved3, line.WaitAND);
}

void WriteSettings(RecordWriter& out, const OskelRevision& revision, const OskelSettings& settings) {
  Record(out, settings.current, settings.idle_byte, settings.resolution, settings.jog_speed,
         settings.jog_accel);
  if (revision.units) Record(out, settings.steps_per_unit, settings.unit_name, settings.use_units);
  if (revision.second_operands) Record(out, settings.steps_per_rev);
}

}  // namespace

std::string WriteOskelProg(const OskelRevision& revision, const Program& program,
                           const OskelSettings& settings) {
  RecordWriter out;
  out.PrintLine(revision.version);
  if (revision.hundred_lines) Record(out, settings.drive_code);
  const std::int16_t count = revision.hundred_lines ? 100 : 29;
  for (std::int16_t i = 0; i < count; ++i) {
    const Instruction& line = program.Prog[i];
    Record(out, i, line.Type);
    if (line.Type == CM) {
      Record(out, line.Text);
    } else if (line.Type == MMI) {
      WritePrompt(out, revision, line);
    } else {
      WriteMove(out, revision, line);
    }
  }
  WriteSettings(out, revision, settings);
  return out.Text();
}

}  // namespace tavlo::examples
