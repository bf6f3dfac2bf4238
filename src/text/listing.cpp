// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "text/listing.h"

#include <array>
#include <utility>

#include "model/program_file.h"
#include "motion/units.h"
#include "platform/number_format.h"

namespace tavlo {
namespace {

/// Columns by which the body of a Repeat stands further right.
constexpr int kStep = 2;

constexpr std::array<std::string_view, 3> kLimits = {"closed.", "open.", "not used."};

std::vector<std::string> Heading(std::string_view file_name) {
  return {"Tavlo Hub Program Listing", "", "Brakken Drives, Inc.",
          "Programming Software Version: " + VersionTextOf(kVersion), "Filename:  " + std::string(file_name)};
}

std::string Units(const Program& program, int axis) {
  if (!UsesUnits(program, axis)) return "steps.  ";
  const std::string& unit = program.Axis.UnitName[axis];
  return unit + " (" + Joined(program.Axis.StepsPerUnit[axis]) + " steps/" + unit + ").  ";
}

std::string Limits(int kind) {
  return std::string(kind >= 0 && kind < static_cast<int>(kLimits.size()) ? kLimits[kind] : "");
}

std::string Paragraph(const Program& program, int axis) {
  const AxisConfig& axes = program.Axis;
  const int model = axes.DriveModel[axis];
  std::string text = "  Axis " + Joined(axis + 1) + "(" + axes.AxisName[axis] + "):  ";
  text += std::string(ModelName(model)) + ", " + Joined(GetStepsPerRev(program, axis)) + "steps/rev, ";
  if (ShowsTxtCurrent(model)) text += Joined(axes.DriveCurrent[axis]) + "A. ";
  return text + "Units:  " + Units(program, axis) + "Limits: " + Limits(axes.LimitKind[axis]);
}

}  // namespace

Listing MakeListing(const Program& program, std::string_view file_name) {
  Listing listing = {
      .heading = Heading(file_name), .hardware_heading = "Hardware:  ", .hardware = {}, .lines = {}};
  for (int axis = 0; axis < HubAxes(program); ++axis) {
    if (program.Axis.DriveModel[axis] != 0) listing.hardware.push_back(Paragraph(program, axis));
  }
  int indent = 0;
  for (int line = 0; line < kLines; ++line) {
    const int type = program.Prog[line].Type;
    if (type == ER && indent >= kStep) indent -= kStep;
    if (auto rows = PrintLine(program, indent, line); !rows.empty()) {
      listing.lines.push_back({line + 1, std::move(rows)});
    }
    if (type == RP) indent += kStep;
  }
  return listing;
}

}  // namespace tavlo
