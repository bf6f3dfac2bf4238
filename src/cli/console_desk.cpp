// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/console_desk.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>

#include "desk/main_window.h"
#include "link/com_port.h"
#include "platform/number_format.h"

namespace tavlo::cli {
namespace {

/// Tells what is in the program and will not be in its file.
void TellUnsaved(const Program& program, Console& console) {
  for (int line = 0; line < kLines; ++line) {
    const Instruction& record = program.Prog[line];
    if ((record.Type != III && record.Type != WII) || record.DrvMask == 0) continue;
    console.Note(
        "line " + Joined(line + 1) +
        " tests inputs of the drive itself (X), which a program file does not hold: enter them again");
  }
}

}  // namespace

std::string ReasonOf(const std::string& path) {
  errno = 0;
  std::ifstream file(path);
  if (file) file.get();
  return errno == 0 ? "" : std::strerror(errno);
}

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

bool SaveProgram(Source& source, Console& console, const std::string& path) {
  // A file without a port reads as a damaged one; which port it names moves nothing.
  if (!source.OptCom) source.OptCom = 0;
  NoLine line;
  NoProgramView view;
  NoRunView run;
  ConsoleDesk files(source, console, line, AnswerBy::No, view, run);
  const auto error = SaveFile(files.desk, path);
  if (error) {
    console.Note("cannot write " + path + ": " + *error);
    return false;
  }
  TellUnsaved(source.program, console);
  return true;
}

int LinesInUse(const Program& program) {
  return static_cast<int>(std::count_if(program.Prog.begin(), program.Prog.begin() + kLines,
                                        [](const Instruction& line) { return line.Type != NO; }));
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
  line->opened = {port.Label(), serial.Device()};
  if (const std::string doubt = line->Doubt(); !doubt.empty()) {
    console.Note(port.Label() + " is " + serial.Device() + ": " + doubt);
  }
  serial.RThreshold(1);
  serial.ParityReplace("");
  return line;
}

bool IsKnownHub(Console& console, std::string_view identity) {
  const int code = static_cast<unsigned char>(identity[1]);
  if (std::ranges::any_of(kHubModels, [=](const HubModelRow& row) { return row.code == code; })) return true;
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
