// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <array>
#include <optional>
#include <string>

#include "cli/console_services.h"
#include "cli/run_reporter.h"
#include "desk/desk.h"

namespace tavlo::cli {

/// The run windows of the command line: they print what happens and stand until the operator interrupts,
/// the time is over, the hub ends the run or the line is lost.
class RunSession : public NoRunView {
 public:
  /// The rows of the grid, of which only the changes of a running program count.
  class Rows : public NoProgramView {
   public:
    explicit Rows(RunSession& session) : session_(session) {}
    void RowChanged(int line) override { session_.RowChanged(line); }
    void AllRowsChanged() override;

   private:
    friend class RunSession;
    RunSession& session_;
    std::array<bool, kLines> running_{};
  };

  /// Without `seconds` the run has no time limit.
  RunSession(Console& console, HubLine& line, RunReporter& reporter, std::optional<double> seconds)
      : console_(console), line_(line), reporter_(reporter), watch_(line.Time()), limit_(seconds) {}

  /// The desk whose run this is; before anything else.
  void Attach(Desk& desk) { desk_ = &desk; }
  [[nodiscard]] ProgramView& View() { return rows_; }
  [[nodiscard]] RunEnd End() const { return end_; }

  [[nodiscard]] RunWindow Active() const override { return active_; }
  void ShowModal(RunWindow window) override;
  void Hide() override { active_ = RunWindow::None; }
  void TextLinesChanged() override { display_changed_ = true; }
  void ShowServoFault(const ServoFaultPanel& panel) override;

 private:
  void RowChanged(int line);
  [[nodiscard]] RunEnd Watch();
  [[nodiscard]] RunEnd WatchUntilInterrupted();
  [[nodiscard]] bool TimeIsOver();
  void WaitForHub();
  void PrintDisplay();

  Console& console_;
  HubLine& line_;
  RunReporter& reporter_;
  Stopwatch watch_;
  std::optional<double> limit_;
  Desk* desk_ = nullptr;
  Rows rows_{*this};
  RunWindow active_ = RunWindow::None;
  RunEnd end_ = RunEnd::None;
  std::array<std::string, 4> shown_lines_;
  bool display_changed_ = false;
};

}  // namespace tavlo::cli
