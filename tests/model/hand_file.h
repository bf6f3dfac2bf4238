// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "model/file_items.h"
#include "model/program.h"
#include "model/program_file.h"

namespace tavlo::testing {

/// A version of the Composer, and which records its files have. A version that lies on a boundary falls to
/// one of its sides.
struct HubRevision {
  std::string_view version;
  /// How many items the menu records and the last record of a line have.
  int menu_items = 9;
  int last_items = 0;
  bool axis_currents = false;
  bool port_record = false;
  bool same_record = false;
};
inline constexpr auto kHubRevisions = std::to_array<HubRevision>({
    {"0", 8},
    {"0.5", 9},
    {"1", 8},
    {"1.0", 8},
    {"1.05", 9},
    {"1.1", 9},
    {"1.11", 9},
    {"1.12", 9, 2},
    {"1.13", 9, 2},
    {"1.14", 9, 2},
    {"1.15", 9, 2, false, true},
    {"1.16", 9, 2, false, true},
    {"1.17", 9, 2, false, true},
    {"1.18", 9, 2, false, true, true},
    {"1.19", 9, 3, false, true, true},
    {"1.20", 9, 3, false, true, true},
    {"1.21", 9, 3, false, true, true},
    {"1.21.5", 9, 3, false, true, true},
    {"1.21.6", 9, 3, true, true, true},
    {"1.21.12", 9, 3, true, true, true},
    {"1.22", 9, 3, true, true, true},
    {"1.23", 9, 3, true, true, true},
    {"1.29", 9, 3, true, true, true},
    {"1.29.1", 9, 3, true, true, true},
    // Later than this program: the newest layout is taken.
    {"1.30", 9, 3, true, true, true},
    {"2.0", 9, 3, true, true, true},
});

/// A program file put together by hand, item by item, so that files of any revision and damaged ones can
/// be made without the program's own writer.
struct HandFile {
  /// The sixteen records of a line, as of an untouched program.
  struct Line {
    std::string type = "11";
    std::string distances = "20000,10000,10000";
    std::string speeds = "3,.5,3";
    std::string accels = "0,100,100";
    std::string state = "1,10,0,0,10";
    std::string text = "\"\"";
    std::string limits = "3,50,0,1,0";
    std::string variables = "0,25,1,26";
    std::string sources = "#FALSE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#";
    std::string wraps = "#FALSE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#";
    std::string inputs = "#FALSE#,0,0,#TRUE#";
    std::string current = "#FALSE#,1,0";
    std::vector<std::string> menu_lines = {"0", "9", "19", "29", "39", "49", "59", "69", "79"};
    std::vector<std::string> menu_keys = {"#FALSE#", "#TRUE#",  "#TRUE#",  "#TRUE#", "#TRUE#",
                                          "#FALSE#", "#FALSE#", "#FALSE#", "#FALSE#"};
    std::string jog = "0,#FALSE#,1,100,#FALSE#,#FALSE#,1,100,#FALSE#,1,100";
    std::vector<std::string> last = {"0", "1", "#FALSE#"};
  };
  struct Axis {
    std::string settings = "1,1,2,8,20000,\"rev\",#TRUE#,8000,0";
    std::string currents = "1,2";
  };

  std::string hub = " 8 ";
  std::array<Line, 200> lines;
  std::array<Axis, 8> axes;
  std::string limit = "0,0";
  std::array<std::string, 8> names = {"\"Axis 1\"", "\"Axis 2\"", "\"Axis 3\"", "\"Axis 4\"",
                                      "\"Axis 5\"", "\"Axis 6\"", "\"Axis 7\"", "\"Axis 8\""};
  std::string port = "0";
  std::string same = "#FALSE#,#TRUE#";

  /// How many items the menu records and the last record of a line have, and which records there are.
  int menu_items = 9;
  int last_items = 3;
  bool axis_currents = true;
  bool port_record = true;
  bool same_record = true;

  void As(const HubRevision& revision) {
    menu_items = revision.menu_items;
    last_items = revision.last_items;
    axis_currents = revision.axis_currents;
    port_record = revision.port_record;
    same_record = revision.same_record;
  }

  /// All that stands behind the version text.
  [[nodiscard]] std::string Body() const {
    std::string body;
    const auto record = [&body](const std::string& text) { body += text + "\r\n"; };
    const auto list = [](const std::vector<std::string>& items, int count) {
      std::string joined;
      for (int i = 0; i < count; ++i) joined += (i == 0 ? "" : ",") + items[static_cast<std::size_t>(i)];
      return joined;
    };
    record(hub);
    int index = 0;
    for (const Line& line : lines) {
      record(std::to_string(index++) + "," + line.type);
      for (const std::string& text :
           {line.distances, line.speeds, line.accels, line.state, line.text, line.limits, line.variables,
            line.sources, line.wraps, line.inputs, line.current}) {
        record(text);
      }
      record(list(line.menu_lines, menu_items));
      record(list(line.menu_keys, menu_items));
      record(line.jog);
      if (last_items > 0) record(list(line.last, last_items));
    }
    for (const Axis& axis : axes) {
      record(axis.settings);
      if (axis_currents) record(axis.currents);
    }
    record(limit);
    for (const std::string& name : names) record(name);
    if (port_record) record(port);
    if (same_record) record(same);
    return body;
  }
};

/// The items as they stand in a record.
template <class... Values>
std::string Items(const Values&... values) {
  RecordWriter out;
  (out << ... << values);
  return out.Text();
}

/// The file of a program.
[[nodiscard]] inline HandFile HandFileOf(const Program& program) {
  HandFile file;
  file.hub = program.HubIndex == HubQuad ? " 24 " : " 8 ";
  for (std::size_t i = 0; i < kLines; ++i) {
    const Instruction& line = program.Prog[i];
    HandFile::Line& to = file.lines[i];
    to.type = Items(line.Type);
    to.distances = Items(line.Dist, line.Dist2, line.SafetyDist);
    to.speeds = Items(line.Speed, line.Speed2, line.RetSpeed);
    to.accels = Items(line.Dir, line.Accel, line.Decel);
    to.state = Items(line.State, line.Time, line.LineNum, line.IONum, line.Count);
    to.text = Items(line.Text);
    to.limits = Items(line.SubType, line.UpperInt, line.UpperFrac, line.LowerInt, line.LowerFrac);
    to.variables = Items(line.DistVar, line.SpeedVar, line.Dist2Var, line.Speed2Var);
    to.sources = Items(line.DistIsMMI, line.SpeedIsMMI, line.Dist2IsMMI, line.Speed2IsMMI, line.CountIsMMI);
    to.wraps = Items(line.Blank1, line.Wrap1, line.Blank2, line.Wrap2, line.Blank3, line.Wrap3);
    to.inputs = Items(line.Reserved3, line.InState, line.InMask, line.WaitAND);
    to.current = Items(line.MotorOn, line.Current, line.IdlePct);
    for (std::size_t key = 0; key < 9; ++key) {
      to.menu_lines[key] = Items(line.MenuLine[key]);
      to.menu_keys[key] = Items(static_cast<bool>(line.MenuKey[key]));
    }
    to.jog = Items(line.Drive, line.Proceed, line.JogSpeed, line.JogAccel, line.JogOn, line.JogLR,
                   line.JogLRSpeed, line.JogLRAccel, line.JogUD, line.JogUDSpeed, line.JogUDAccel);
    to.last = {Items(line.JogLRDrive), Items(line.JogUDDrive), Items(line.WaitThis)};
  }
  const AxisConfig& axes = program.Axis;
  for (std::size_t axis = 0; axis < kAxes; ++axis) {
    file.axes[axis].settings = Items(axes.DriveModel[axis], axes.DriveCurrent[axis], axes.IdleCode[axis],
                                     axes.StepResCode[axis], axes.StepsPerUnit[axis], axes.UnitName[axis],
                                     axes.UseUnits[axis], axes.StepsPerRev[axis], axes.LimitKind[axis]);
    file.axes[axis].currents = Items(axes.ContCurrent[axis], axes.PeakCurrent[axis]);
    file.names[axis] = Items(axes.AxisName[axis]);
  }
  file.limit = Items(program.LimitList, program.LimitBranch - 1);
  file.same = Items(axes.SameUnits, axes.SameLimits);
  return file;
}

/// Loads what stands behind the version.
inline bool LoadBody(const HandFile& file, Program& program, float revision = 1.2901F) {
  const std::string body = file.Body();
  ItemReader items(body);
  return LoadHubProg(items, revision, program);
}

}  // namespace tavlo::testing
