// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "cli/console/console.h"
#include "cli/run/axis_status.h"
#include "platform/stopwatch.h"
#include "session/desk.h"

namespace tavlo::cli {

/// How a run ended.
enum class RunEnd {
  None,  ///< it has not ended, or it never began
  Interrupted,
  Stopped,  ///< the operator ordered it
  TimeOver,
  Halted,     ///< the hub reported a halt or a fault
  Restarted,  ///< the hub was switched off and on
  PortLost,
  OutputLost,  ///< nobody reads the results any more
};

enum class LineEvent { Started, WentOn, Finished };

/// Prints the events of a run, one row or one JSON object each.
class RunReporter {
 public:
  /// `texts_known`: the source holds the program that the hub runs.
  RunReporter(Console& console, Clock& clock, const Source& source, bool texts_known, bool json)
      : console_(console), watch_(clock), source_(source), texts_known_(texts_known), json_(json) {}

  /// Starts the clock from which the times of events count.
  void Start() { watch_.Restart(); }
  /// `line` is 0-based.
  void Line(LineEvent event, int line);
  /// Prints a row, 1..4, of the operator terminal.
  void Display(int row, std::string_view text);
  /// Prints what is on at the axes whose state has changed since it was last printed. At the start nothing
  /// counts as on.
  void Status();
  void StatusChanged(int axis) { status_changed_[axis] = true; }
  /// Reports a drive's fault, as JSON only: in words it is a message.
  void Fault(const ServoFaultPanel& panel);
  /// `cause` is that of a halt; empty for any other end.
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
