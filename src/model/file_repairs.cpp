// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "model/file_repairs.h"

#include <string>

#include "model/wire.h"

namespace tavlo {
namespace {

void Record(Repairs* repairs, Repair repair, int index) {
  if (repairs != nullptr) repairs->push_back({repair, index});
}

}  // namespace

void DropHandWheel(Program& program, int line, Repairs* repairs) {
  Instruction& record = program.Prog[line];
  if (record.Type != FE) return;
  record.Type = CM;
  record.Text = "Deleted Hand Wheel instruction";
  Record(repairs, Repair::HandWheel, line);
}

void LengthenPulse(Program& program, int line, Repairs* repairs) {
  Instruction& record = program.Prog[line];
  if ((record.Type != SO && record.Type != FLSO) || record.Time >= kShortestPulse) return;
  record.Time = kShortestPulse;
  Record(repairs, Repair::ShortPulse, line);
}

void CutComment(Program& program, int line, Repairs* repairs) {
  Instruction& record = program.Prog[line];
  if (record.Type != CM || record.Text.size() <= kLongestComment) return;
  record.Text.resize(kLongestComment);
  Record(repairs, Repair::LongComment, line);
}

void UseDriveInput(Program& program, int line, Repairs* repairs) {
  program.Prog[line].IONum = kFirstDriveInput;
  Record(repairs, Repair::DriveInput, line);
}

void LowerCurrent(Program& program, int axis, Repairs* repairs) {
  AxisConfig& axes = program.Axis;
  const float most = MaxCurrent(axes.DriveModel[axis]);
  if (axes.DriveCurrent[axis] <= most) return;
  axes.DriveCurrent[axis] = most;
  Record(repairs, Repair::HighCurrent, axis);
}

void CountInUnits(Program& program, int axis, Repairs* repairs) {
  if (program.Axis.UseUnits[axis]) return;
  program.Axis.UseUnits[axis] = true;
  Record(repairs, Repair::StepsOnly, axis);
}

bool NamesFit(AxisConfig& axes) {
  bool fit = true;
  for (int axis = 0; axis < kAxes; ++axis) {
    for (std::string* name : {&axes.UnitName[axis], &axes.AxisName[axis]}) {
      if (name->size() <= kLongestName) continue;
      name->clear();
      fit = false;
    }
  }
  return fit;
}

std::optional<std::string> WithPort(std::string_view text) {
  constexpr std::string_view kLineEnd = "\r\n";
  constexpr std::string_view kFirstPort = "0\r\n";
  const auto is_flag = [](std::string_view item) { return item == "#TRUE#" || item == "#FALSE#"; };
  if (!text.ends_with(kLineEnd)) return std::nullopt;
  const std::string_view records = text.substr(0, text.size() - kLineEnd.size());
  const std::size_t end = records.rfind(kLineEnd);
  if (end == std::string_view::npos) return std::nullopt;
  // The two flags come last, and the name of an axis before the port.
  const std::string_view last = records.substr(end + kLineEnd.size());
  const std::size_t comma = last.find(',');
  const bool flags =
      comma != std::string_view::npos && is_flag(last.substr(0, comma)) && is_flag(last.substr(comma + 1));
  if (!flags || !records.substr(0, end).ends_with('"')) return std::nullopt;
  std::string whole(text);
  whole.insert(end + kLineEnd.size(), kFirstPort);
  return whole;
}

}  // namespace tavlo
