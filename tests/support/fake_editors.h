// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "session/views.h"

namespace tavlo::testing {

/// Dialogs of the lines in which the test presses the buttons.
class FakeEditors : public EditorWindows {
 public:
  void ShowPickProg(int line, const std::function<bool(const Picked&)>& act) override {
    log.push_back("pick for " + std::to_string(line));
    if (meanwhile) meanwhile();
    for (const Picked& picked : presses) {
      if (act(picked)) return;
      ++stayed;
    }
  }
  [[nodiscard]] bool Edit(Program& program, int line, DialogPage page) override {
    came_up_with = page;
    log.push_back("edit " + std::to_string(line) + " of kind " + std::to_string(program.Prog[line].Type));
    if (meanwhile) meanwhile();
    if (!confirms) return false;
    program.Prog[line].Dist = kWrittenDist;
    return true;
  }

  [[nodiscard]] bool EditHardware(Program& program, const std::function<DriveScan()>& scan) override {
    log.emplace_back("hardware");
    if (meanwhile) meanwhile();
    if (scans) found = scan();
    if (!confirms) return false;
    program.Axis.AxisName[0] = kWrittenName;
    return true;
  }

  static constexpr const char* kWrittenName = "Saw";
  /// The operator has the drives scanned, and this is what was found.
  bool scans = false;
  DriveScan found;
  static constexpr std::int32_t kWrittenDist = 4711;
  /// In the picker, one after the other until it closes; then it is cancelled.
  std::vector<Picked> presses;
  /// The operator confirms what he edits, and this is written.
  bool confirms = false;
  /// The page with which the last line's dialog came up.
  DialogPage came_up_with = DialogPage::AsLeft;
  /// Called while a dialog stands.
  std::function<void()> meanwhile;
  std::vector<std::string> log;
  /// Presses after which the picker still stood.
  int stayed = 0;
};

}  // namespace tavlo::testing
