// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <array>
#include <string>
#include <vector>

namespace tavlo::testing {

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

}  // namespace tavlo::testing
