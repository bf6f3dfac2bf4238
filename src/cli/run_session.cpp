// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/run_session.h"

#include <algorithm>

#include "link/execution.h"
#include "link/receive.h"

namespace tavlo::cli {
namespace {

/// Display text comes a character at a time; it is printed once it rests for so long.
constexpr double kDisplayRest = 0.05;
/// Well below the time after which a stopwatch loses count.
constexpr double kLongestWait = 3600;

}  // namespace

void RunSession::Rows::AllRowsChanged() {
  running_.fill(false);
}

void RunSession::RowChanged(int line) {
  bool& running = rows_.running_[line];
  switch (desk_->source.rows[line].state) {
    case RowState::Executing:
      PrintDisplay();
      running = true;
      reporter_.Line(LineEvent::Started, line);
      break;
    case RowState::WentOn:
      PrintDisplay();
      running = true;
      reporter_.Line(LineEvent::WentOn, line);
      break;
    case RowState::Normal:
    case RowState::LimitTarget:
    case RowState::Picked:
      if (!running) break;
      PrintDisplay();
      running = false;
      reporter_.Line(LineEvent::Finished, line);
      break;
  }
}

void RunSession::ShowModal(RunWindow window) {
  active_ = window;
  console_.Note("the program runs; Ctrl-C stops it");
  watch_.Restart();
  reporter_.Start();
  StartRun(*desk_, window);
  end_ = WatchUntilInterrupted();
  const bool hub_runs_on =
      end_ == RunEnd::Interrupted || end_ == RunEnd::TimeOver || end_ == RunEnd::OutputLost;
  if (hub_runs_on) StopRun(*desk_, window);
  active_ = RunWindow::None;
  PrintDisplay();
  reporter_.End(end_);
}

RunEnd RunSession::WatchUntilInterrupted() {
  try {
    return Watch();
  } catch (const Interrupted&) {
    return RunEnd::Interrupted;
  }
}

RunEnd RunSession::Watch() {
  while (active_ != RunWindow::None) {
    if (line_.IsInterrupted()) return RunEnd::Interrupted;
    if (!console_.ResultsArrive()) return RunEnd::OutputLost;
    if (TimeIsOver()) return RunEnd::TimeOver;
    WaitForHub();
    if (desk_->Comm1.InBufferCount() > 0) {
      NewOnComm(*desk_);
    } else if (!desk_->Comm1.PortOpen()) {
      return RunEnd::PortLost;
    } else {
      PrintDisplay();
    }
  }
  return desk_->source.Halted ? RunEnd::Halted : RunEnd::Restarted;
}

bool RunSession::TimeIsOver() {
  return limit_ && watch_.Seconds() >= *limit_;
}

void RunSession::WaitForHub() {
  double seconds = display_changed_ ? kDisplayRest : kLongestWait;
  if (limit_) seconds = std::min(seconds, std::max(*limit_ - watch_.Seconds(), 0.0));
  line_.Wait(seconds);
}

void RunSession::PrintDisplay() {
  if (!display_changed_) return;
  display_changed_ = false;
  const auto& lines = desk_->source.textline;
  for (std::size_t row = 0; row < lines.size(); ++row) {
    if (lines[row] == shown_lines_[row]) continue;
    shown_lines_[row] = lines[row];
    reporter_.Display(static_cast<int>(row) + 1, lines[row]);
  }
}

void RunSession::ShowServoFault(const ServoFaultPanel& panel) {
  console_.Message(panel.caption + ": " + panel.FaultMessage);
  for (std::size_t bit = 0; bit < panel.Label1.size(); ++bit) {
    if ((panel.code >> bit & 1) != 0) console_.Message("  " + panel.Label1[bit]);
  }
}

}  // namespace tavlo::cli
