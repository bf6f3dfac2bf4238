// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "cli/console/console.h"
#include "cli/console/stopwatch.h"
#include "cli/run/axis_status.h"
#include "session/desk.h"

namespace tavlo::cli {

/// How a run came to its end.
enum class RunEnd {
  None,  ///< it has not, or it never began
  Interrupted,
  Stopped,  ///< the operator ordered it
  TimeOver,
  Halted,     ///< the hub reported a halt or a fault
  Restarted,  ///< the hub has been switched off and on
  PortLost,
  OutputLost,  ///< nobody takes the results any more
};

enum class LineEvent { Started, WentOn, Finished };

/// Prints the events of a run: a row each, or a JSON object each.
class RunReporter {
 public:
  /// `texts_known`: the source holds the program that the hub runs.
  RunReporter(Console& console, Clock& clock, const Source& source, bool texts_known, bool json)
      : console_(console), watch_(clock), source_(source), texts_known_(texts_known), json_(json) {}

  /// Event times count from here.
  void Start() { watch_.Restart(); }
  /// `line` is 0-based.
  void Line(LineEvent event, int line);
  /// A row of the operator terminal, 1..4.
  void Display(int row, std::string_view text);
  /// Prints what is on at the axes, 0..7, that have changed since it was printed last. At the start nothing
  /// is on.
  void Status();
  void StatusChanged(int axis) { status_changed_[axis] = true; }
  /// A fault of a drive; as JSON only, for in words it is a message.
  void Fault(const ServoFaultPanel& panel);
  /// `cause` of a halt; empty for none.
  void End(RunEnd end, const OpenedPort& opened, std::string_view cause);

 private:
  Console& console_;
  Stopwatch watch_;
  const Source& source_;
  bool texts_known_;
  bool json_;
  std::array<bool, kAxes> status_changed_{};
  std::array<AxisStatus, kAxes> status_;
};

}  // namespace tavlo::cli
