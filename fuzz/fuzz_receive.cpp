// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
// Any bytes from the line in any pieces, in any situation of a run. A control byte from 128 on sets the
// situation, one below is the length of the next piece. The log of the run stays whole.
#include "session/run_log.h"
#include "session/run_rows.h"
#include "watched_desk.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tavlo;
  fuzzing::Input input(data, size);
  fuzzing::WatchedDesk d(input);
  d.port.on_output = [&d](const std::string& bytes) {
    if (bytes == "R") d.port.Reply("Y");
  };
  RunLog log(d.clock);
  d.desk.log = &log;
  log.Begin(d.source);
  while (!input.Empty()) {
    const int control = input.Byte();
    if (control < 128) {
      d.port.Receive(input.Take(static_cast<std::size_t>(control)));
    } else {
      constexpr std::array kWindows = {RunWindow::None, RunWindow::ExecStatus, RunWindow::fakeMMI,
                                       RunWindow::fakeMMI};
      d.run.active = kWindows[static_cast<std::size_t>(control % 4)];
      d.source.display.MMIActive = (control & 4) != 0;
      d.source.link.Stopped = (control & 8) != 0;
      d.source.VOXterm.TermActive = (control & 16) != 0;
      d.source.program.HubIndex = (control & 32) != 0 ? HubQuad : HubOcto;
    }
    d.RequireInRange();
  }
  log.Close();
  const auto rows = ReadRunRows(CsvOf(log));
  fuzzing::Require(rows && rows->size() == HeadOf(log).size() + (log.Last() - log.First()),
                   "the log is read back as it was written");
  return 0;
}
