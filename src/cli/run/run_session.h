// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <array>
#include <optional>
#include <string>

#include "cli/desk/console_services.h"
#include "cli/run/run_input.h"
#include "cli/run/run_reporter.h"
#include "session/desk.h"

namespace tavlo::cli {

/// The run windows of the command line. They print what happens and stay up until the operator interrupts,
/// the time is over, the hub ends the run or the line is lost.
class RunSession : public NoRunView {
 public:
  /// The rows of the grid. Only what a running program changes in them is used.
  class Rows : public NoProgramView {
   public:
    explicit Rows(RunSession& session) : session_(session) {}
    void RowChanged(int line) override { session_.RowChanged(line); }

   private:
    friend class RunSession;
    RunSession& session_;
    std::array<bool, kLines> running_{};
  };

  struct Options {
    /// The time limit of the run; empty for none.
    std::optional<double> seconds;
    /// Print inputs and outputs. They can be named only if the models of the drives are known.
    bool status = false;
    /// The source holds the program that the hub runs.
    bool program_known = false;
  };
  RunSession(Console& console, HubLine& line, RunReporter& reporter, RunInput& input, Options options)
      : console_(console),
        line_(line),
        reporter_(reporter),
        input_(input),
        options_(options),
        watch_(line.Time()),
        since_text_(line.Time()),
        since_status_(line.Time()) {}

  /// Must be called first, with the desk of this run.
  void Attach(Desk& desk, const ConsoleBoxes& boxes) {
    desk_ = &desk;
    boxes_ = &boxes;
  }
  [[nodiscard]] ProgramView& View() { return rows_; }
  [[nodiscard]] RunEnd End() const { return end_; }

  [[nodiscard]] RunWindow Active() const override { return active_; }
  void ShowModal(RunWindow window) override;
  void Hide() override { active_ = RunWindow::None; }
  void StatusChanged(int axis) override;
  void TextLinesChanged() override;
  void ShowServoFault(const ServoFaultPanel& panel) override;

 private:
  void RowChanged(int line);
  [[nodiscard]] bool IsPrompt(int line) const;
  [[nodiscard]] std::string_view Cause() const;
  void RunAndStop(RunWindow window);
  [[nodiscard]] RunEnd Watch();
  [[nodiscard]] RunEnd WatchUntilInterrupted();
  [[nodiscard]] bool TimeIsOver();
  /// Returns the seconds until what has changed is printed; a long time if nothing has changed.
  [[nodiscard]] double TimeToDisplay();
  [[nodiscard]] double TimeToStatus();
  void WaitForHub();
  void PrintChanges();
  void PrintDisplay();
  void PrintStatus();

  Console& console_;
  HubLine& line_;
  RunReporter& reporter_;
  RunInput& input_;
  Options options_;
  Stopwatch watch_;
  Desk* desk_ = nullptr;
  const ConsoleBoxes* boxes_ = nullptr;
  Rows rows_{*this};
  RunWindow active_ = RunWindow::None;
  RunEnd end_ = RunEnd::None;
  bool fault_ = false;
  std::array<std::string, 4> shown_lines_;
  bool display_changed_ = false;
  bool status_changed_ = false;
  /// Since the last character of the display, and since the first change of a light that has not been printed
  /// yet.
  Stopwatch since_text_;
  Stopwatch since_status_;
};

}  // namespace tavlo::cli
