// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
// The drive terminal: opened, left, typed into, and everything received while it is up. A control byte from
// 128 on is an act of the operator, one below is the length of the next piece.
#include "link/drive_terminal.h"
#include "watched_desk.h"

namespace tavlo::fuzzing {
namespace {

constexpr std::size_t kLongestHistory = 4000;
constexpr std::size_t kLongestCommand = 2000;

/// What the log says, kept the way a text box is told of it.
struct ShownLog : TerminalView {
  explicit ShownLog(const Source& source) : source_(source) {}
  void ShowModal() override {}
  void HistoryGrew(std::string_view added) override { text += added; }
  void HistoryCut() override { text = source_.VOXterm.History; }
  std::string text;

 private:
  const Source& source_;
};

void Act(WatchedDesk& d, ShownLog& log, int act) {
  switch (act % 8) {
    case 0: ActivateTerminal(d.desk); break;
    case 1: LeaveTerminal(d.desk); break;
    case 2:
      LoadTerminal(d.desk);
      log.text.clear();
      break;
    case 3: SendCommandText(d.desk, d.input.Take(static_cast<std::size_t>(d.input.Byte()))); break;
    case 4: {
      const std::string text(static_cast<std::size_t>(d.input.Byte()) * 40, 'x');
      Require(CheckSize(text).size() <= kLongestCommand, "a command text is held short");
      break;
    }
    case 5: d.source.link.DriveVersion = d.input.Take(5); break;
    case 6: OpenTerminal(d.desk); break;
    default: d.source.link.Busy = !d.source.link.Busy; break;
  }
}

}  // namespace
}  // namespace tavlo::fuzzing

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tavlo;
  fuzzing::Input input(data, size);
  fuzzing::WatchedDesk d(input);
  fuzzing::ShownLog log(d.source);
  d.desk.terminal = &log;
  ActivateTerminal(d.desk);
  while (!input.Empty()) {
    const int control = input.Byte();
    if (control >= 128) {
      fuzzing::Act(d, log, control);
    } else {
      d.port.Receive(input.Take(static_cast<std::size_t>(control)));
    }
    fuzzing::Require(d.source.VOXterm.History.size() <= fuzzing::kLongestHistory, "the log is held short");
    fuzzing::Require(d.source.VOXterm.PowerBuf.size() <= 3, "a greeting has three bytes");
    fuzzing::Require(log.text == d.source.VOXterm.History, "the box shows the log");
    d.RequireInRange();
  }
  return 0;
}
