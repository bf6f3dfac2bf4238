// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/desk/console_desk.h"

#include <algorithm>

#include "link/com_port.h"
#include "platform/number_format.h"

namespace tavlo::cli {

ConsoleDesk::ConsoleDesk(Source& source, Console& console, HubLine& line, AnswerBy by, ProgramView& view,
                         RunView& run)
    : beeper_(console),
      boxes(console, by),
      progress(console, line.Time()),
      desk{.source = source,
           .Comm1 = line.Port(),
           .boxes = boxes,
           .clock = line.Time(),
           .loop = line.Loop(),
           .beeper = beeper_,
           .view = view,
           .run = run,
           .downbox = progress,
           .upbox = progress,
           .settings = settings_,
           .dialogs = dialogs_,
           .files = files_,
           .loading = loading_} {
  // An exchange reports its own failure only while the port is there.
  source.link.ComNum = static_cast<std::int16_t>(line.Port().PortOpen() ? 1 : 0);
}

int LinesInUse(const Program& program) {
  return static_cast<int>(std::count_if(program.Prog.begin(), program.Prog.begin() + kLines,
                                        [](const Instruction& line) { return line.Type != NO; }));
}

std::unique_ptr<HubLine> OpenLine(Environment& environment, Console& console, const LineOptions& options) {
  const PortName port = options.Name();
  std::unique_ptr<HubLine> line = environment.make_line(port);
  SerialPort& serial = line->Port();
  serial.CommPort(port.comm != 0 ? port.comm : 1);
  serial.Settings(kLineSettings);
  if (const Outcome open = serial.PortOpen(true); !open) {
    console.Note("cannot open " + port.Label() + ": " + open.Why());
    return nullptr;
  }
  line->opened = {port.Label(), serial.Device()};
  if (const std::string doubt = line->Doubt(); !doubt.empty()) {
    console.Note(port.Label() + " is " + serial.Device() + ": " + doubt);
  }
  serial.RThreshold(1);
  serial.ParityReplace("");
  line->LimitTo(options.timeout);
  return line;
}

bool IsKnownHub(Console& console, std::string_view identity) {
  const int code = static_cast<unsigned char>(identity[1]);
  if (HubOfCode(code)) return true;
  console.Note("the device answers as model " + Joined(code) + ", which is no known hub");
  return false;
}

ExitCode HubFailure(Console& console, HubLine& line) {
  if (line.Port().PortOpen()) {
    if (!line.opened.Text().empty()) console.Note("the port is " + line.opened.Text());
    return ExitCode::Hub;
  }
  console.Note("the port has gone; check the cable");
  return ExitCode::Port;
}

}  // namespace tavlo::cli
