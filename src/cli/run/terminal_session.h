// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <deque>
#include <string>

#include "cli/console/console.h"
#include "cli/console/environment.h"
#include "platform/stopwatch.h"
#include "session/desk.h"

namespace tavlo::cli {

/// Why a terminal was closed.
enum class TerminalEnd { EndOfInput, Interrupted, PortLost, OutputLost };

/// The drive terminal of the command line. Each line of its input is sent to the drives; what the desktop's
/// window would log is printed as it arrives.
class TerminalSession : public TerminalView {
 public:
  struct Options {
    /// How long to wait for the answer to a line before the next line is sent, unless the lines are typed.
    double wait_seconds = 0;
    bool json = false;
  };
  TerminalSession(Environment& environment, HubLine& line, Desk& desk, Options options);

  /// Sends lines to the drives until the input ends or the operator interrupts. In every case the passthrough
  /// is over on return.
  [[nodiscard]] TerminalEnd Run();

  void ShowModal() override {}
  void HistoryGrew(std::string_view added) override;
  void HistoryCut() override {}

 private:
  [[nodiscard]] TerminalEnd Converse();
  [[nodiscard]] bool MaySend();
  void TakeFeed();
  void TakeLine(std::string line);
  void Send(const std::string& command);
  void WaitForSomething();
  void PrintReceived(std::string_view text);
  void PrintEvent(std::string_view event, std::string_view key, std::string_view value,
                  const OpenedPort& opened = {});
  void FlushReceived();

  Environment& environment_;
  Console console_;
  HubLine& line_;
  Desk& desk_;
  Options options_;
  Feed& feed_;
  Stopwatch since_start_;
  Stopwatch since_sent_;
  bool answered_ = true;
  bool fed_out_ = false;
  bool sending_ = false;
  std::string typed_;
  std::deque<std::string> lines_;
  std::string received_;
};

}  // namespace tavlo::cli
