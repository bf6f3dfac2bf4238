// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/run/run_session.h"

#include <algorithm>
#include <array>
#include <utility>

#include "cli/desk/last_word.h"
#include "link/execution.h"
#include "link/receive.h"
#include "link/run_record.h"
#include "platform/serial_port.h"
#include "platform/stopwatch.h"
#include "session/run_log.h"

namespace tavlo::cli {
namespace {

/// Display text comes a character at a time; it is printed once it rests for so long.
constexpr double kDisplayRest = 0.05;
/// The lights of an axis come in up to three messages; what has changed is printed so much later. They may
/// never rest while the program is paused.
constexpr double kStatusDelay = 0.05;

/// Returns 0 for a wait that is over but for a rounding.
double WaitOf(double seconds) {
  return seconds < SerialPort::kShortestWait / 2 ? 0 : std::max(seconds, SerialPort::kShortestWait);
}
/// What halts a program, by what its box reports.
struct HaltCause {
  Tells tells;
  std::string_view cause;
};
constexpr std::array kHaltCauses = {
    HaltCause{Tells::LimitHit, "limit"}, HaltCause{Tells::StopButton, "stopButton"},
    HaltCause{Tells::StackOverflow, "stackOverflow"}, HaltCause{Tells::StackUnderflow, "stackUnderflow"},
    HaltCause{Tells::DriveDisabled, "driveDisabled"}};

constexpr std::string_view kStop = "S";

/// Stops the machine if the run ends in any unexpected way.
class StopOnFailure {
 public:
  explicit StopOnFailure(Desk& desk) : desk_(desk) {}
  ~StopOnFailure() {
    if (armed_) desk_.Comm1.Output(kStop);
  }
  StopOnFailure(const StopOnFailure&) = delete;
  StopOnFailure& operator=(const StopOnFailure&) = delete;

  void Disarm() { armed_ = false; }

 private:
  Desk& desk_;
  bool armed_ = true;
};

}  // namespace

void RunSession::RowChanged(int line) {
  bool& running = rows_.running_[line];
  const auto print = [&](LineEvent event) {
    PrintChanges();
    reporter_.Line(event, line);
  };
  switch (desk_->source.shown.rows[line].state) {
    case RowState::Executing:
      input_.LineStarted(line, IsPrompt(line));
      running = true;
      print(LineEvent::Started);
      break;
    case RowState::WentOn:
      input_.LineOver(line);
      running = true;
      print(LineEvent::WentOn);
      break;
    case RowState::Normal:
    case RowState::LimitTarget:
    case RowState::Picked:
      input_.LineOver(line);
      if (std::exchange(running, false)) print(LineEvent::Finished);
      break;
  }
}

/// Whether the line is known to wait for the operator, whatever it shows.
bool RunSession::IsPrompt(int line) const {
  const Instruction& instruction = desk_->program().Prog[line];
  return options_.program_known && instruction.Type == MMI && instruction.SubType != DisplayOnly;
}

void RunSession::StatusChanged(int axis) {
  if (!options_.status) return;
  reporter_.StatusChanged(axis);
  if (!std::exchange(status_changed_, true)) since_status_.Restart();
}

void RunSession::TextLinesChanged() {
  display_changed_ = true;
  since_text_.Restart();
  input_.TextCame();
}

void RunSession::ShowModal(RunWindow window) {
  active_ = window;
  // Without a program file, only the drives of the hub's program are known.
  if (!options_.program_known) desk_->program().Axis.DriveModel = desk_->source.link.HubDrives;
  // The time limit applied only until the run began.
  line_.LimitTo(std::nullopt);
  console_.Inform("the program runs" + On(line_.opened) + "; Ctrl-C stops it");
  watch_.Restart();
  reporter_.Start();
  input_.Begin(*desk_, window);
  RunAndStop(window);
  input_.End();
  active_ = RunWindow::None;
  PrintChanges();
  reporter_.End(end_, line_.opened, Cause());
}

/// Returns why the hub halted, from what it reported; empty for any other end.
std::string_view RunSession::Cause() const {
  if (end_ != RunEnd::Halted) return {};
  if (fault_) return "driveFault";
  for (const Box& box : boxes_->Shown()) {
    const auto row = std::ranges::find(kHaltCauses, box.tells, &HaltCause::tells);
    if (row != kHaltCauses.end()) return row->cause;
  }
  return {};
}

void RunSession::RunAndStop(RunWindow window) {
  const LastWord last_word(line_, kStop);
  StopOnFailure guard(*desk_);
  StartRun(*desk_, window);
  end_ = WatchUntilInterrupted();
  if (end_ == RunEnd::PortLost) RecordEnd(*desk_, RunOver::PortGone);
  const bool hub_runs_on = end_ == RunEnd::Interrupted || end_ == RunEnd::Stopped ||
                           end_ == RunEnd::TimeOver || end_ == RunEnd::OutputLost;
  if (hub_runs_on) StopRun(*desk_, window);
  guard.Disarm();
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
    if (!input_.Work()) return RunEnd::Stopped;
    WaitForHub();
    if (desk_->Comm1.InBufferCount() > 0) {
      NewOnComm(*desk_);
    } else if (!desk_->Comm1.PortOpen()) {
      return RunEnd::PortLost;
    }
    if (desk_->log != nullptr) desk_->log->Settle();
    if (TimeToDisplay() <= 0) PrintDisplay();
    if (TimeToStatus() <= 0) PrintStatus();
    console_.SendOn();
  }
  return desk_->source.run.Halted ? RunEnd::Halted : RunEnd::Restarted;
}

bool RunSession::TimeIsOver() {
  return options_.seconds && watch_.Seconds() >= *options_.seconds;
}

double RunSession::TimeToDisplay() {
  return display_changed_ ? WaitOf(kDisplayRest - since_text_.Seconds()) : Stopwatch::kLongestWait;
}

double RunSession::TimeToStatus() {
  return status_changed_ ? WaitOf(kStatusDelay - since_status_.Seconds()) : Stopwatch::kLongestWait;
}

void RunSession::WaitForHub() {
  double seconds =
      std::min({TimeToDisplay(), TimeToStatus(), input_.DueIn().value_or(Stopwatch::kLongestWait)});
  if (options_.seconds) seconds = std::min(seconds, std::max(*options_.seconds - watch_.Seconds(), 0.0));
  if (console_.OutputWaits()) seconds = std::min(seconds, Console::kReaderLook);
  line_.Wait(seconds, input_.Awaited());
}

void RunSession::PrintChanges() {
  PrintDisplay();
  PrintStatus();
}

void RunSession::PrintStatus() {
  if (std::exchange(status_changed_, false)) reporter_.Status();
}

void RunSession::PrintDisplay() {
  if (!display_changed_) return;
  display_changed_ = false;
  const auto& lines = desk_->source.display.textline;
  for (std::size_t row = 0; row < lines.size(); ++row) {
    if (lines[row] == shown_lines_[row]) continue;
    shown_lines_[row] = lines[row];
    reporter_.Display(static_cast<int>(row) + 1, lines[row]);
  }
}

void RunSession::ShowServoFault(const ServoFaultPanel& panel) {
  fault_ = true;
  reporter_.Fault(panel);
  console_.Message(panel.caption + ": " + panel.FaultMessage);
  for (std::size_t bit = 0; bit < panel.Label1.size(); ++bit) {
    if ((panel.code >> bit & 1) != 0) console_.Message("  " + panel.Label1[bit]);
  }
}

}  // namespace tavlo::cli
