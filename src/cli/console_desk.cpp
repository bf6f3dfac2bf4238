// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/console_desk.h"

#include <cerrno>
#include <cstring>
#include <fstream>

#include "desk/main_window.h"
#include "link/com_port.h"

namespace tavlo::cli {
namespace {

/// Why a file could not be opened, in the system's words; empty when it can be by now.
std::string ReasonOf(const std::string& path) {
  errno = 0;
  std::ifstream file(path);
  if (file) file.get();
  return errno == 0 ? "" : std::strerror(errno);
}

}  // namespace

ConsoleDesk::ConsoleDesk(Source& source, Console& console, HubLine& line, AnswerBy by, ProgramView& view,
                         RunView& run)
    : beeper_(console), boxes(console, by), progress(console, line.Time()), desk{source,      line.Port(),
                                                                                 boxes,       line.Time(),
                                                                                 line.Loop(), beeper_,
                                                                                 view,        run,
                                                                                 progress,    progress,
                                                                                 settings_,   dialogs_,
                                                                                 files_,      loading_} {}

bool LoadProgram(Source& source, Console& console, const std::string& path) {
  InitSession(source);
  NoLine line;
  NoProgramView view;
  NoRunView run;
  ConsoleDesk files(source, console, line, AnswerBy::No, view, run);
  if (LoadFile(files.desk, path)) return true;
  if (const std::string reason = ReasonOf(path); !reason.empty()) console.Note(path + ": " + reason);
  return false;
}

std::unique_ptr<HubLine> OpenLine(Environment& environment, Console& console, const PortName& port) {
  std::unique_ptr<HubLine> line = environment.make_line(port);
  SerialPort& serial = line->Port();
  serial.CommPort(port.comm != 0 ? port.comm : 1);
  serial.Settings(kLineSettings);
  if (const auto error = serial.PortOpen(true)) {
    console.Note("cannot open " + port.Label() + ": " + *error);
    return nullptr;
  }
  serial.RThreshold(1);
  serial.ParityReplace("");
  return line;
}

ExitCode HubFailure(Console& console, HubLine& line) {
  if (line.Port().PortOpen()) return ExitCode::Hub;
  console.Note("the port has gone; check the cable");
  return ExitCode::Port;
}

}  // namespace tavlo::cli
