// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/desk/program_files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "cli/desk/console_desk.h"
#include "commands/program_files.h"
#include "model/program_file.h"
#include "platform/number_format.h"
#include "qt/system_reason.h"
#include "session/source.h"

namespace tavlo::cli {
namespace {

/// Returns why a file could not be read; empty if it can be read by now.
std::string ReasonOf(const std::string& path) {
  const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK);
  if (descriptor < 0) return SystemReason(errno);
  char byte = 0;
  const bool readable = read(descriptor, &byte, 1) >= 0;
  const std::string reason = readable ? "" : SystemReason(errno);
  close(descriptor);
  return reason;
}

/// Reports what is in the program and will not be in its file.
void TellUnsaved(const Program& program, Console& console) {
  for (const int line : LinesNotWhollyInFile(program)) {
    console.Note(
        "line " + Joined(line + 1) +
        " tests inputs of the drive itself (X), which a program file does not hold: enter them again");
  }
}

/// A value out of a file, of which no more than a row of the terminal is worth showing.
std::string Quoted(std::string_view value) {
  constexpr std::size_t kShown = 40;
  return "'" + std::string(value.substr(0, kShown)) + (value.size() > kShown ? "...'" : "'");
}

std::string UnknownVersion(const FileFindings& found) {
  return "there is no version " + Quoted(found.version) + "; the newest is " + VersionTextOf(kVersion);
}

void TellModels(Console& console, const std::string& name, const std::vector<UnknownModel>& unknown) {
  for (const UnknownModel& model : unknown) {
    console.Note(name + ": axis " + Joined(model.axis + 1) + " has the drive model " + Joined(model.code) +
                 ", which there is not");
  }
}

/// Returns why a file must not be used as a program; empty if the caller may decide.
std::string NoProgram(FileKind kind, const FileFindings& found) {
  if (found.whole) return "";
  if (found.other_kind) {
    return kind == FileKind::HubProg
               ? "is a program of the earlier programmer, but its name does not end in .OSK"
               : "is a program of the Composer, but its name does not end in .TVH";
  }
  if (!found.has_version) return "is not a program file";
  return found.known_version ? "" : UnknownVersion(found);
}

/// Returns true if the program in the file may be used. Each reason against it is reported.
bool MayUse(Console& console, const std::string& name, FileKind kind, const FileFindings& found) {
  if (const std::string reason = NoProgram(kind, found); !reason.empty()) {
    console.Note(name + ": " + reason);
    return false;
  }
  if (!found.whole) return true;
  if (!found.known_version) console.Note(name + ": " + UnknownVersion(found));
  if (found.unknown_hub_code) {
    console.Note(name + ": there is no hub with the code " + Joined(*found.unknown_hub_code));
  }
  if (found.unknown_drive_code) {
    console.Note(name + ": there is no drive model " + Joined(*found.unknown_drive_code));
  }
  TellModels(console, name, found.unknown_models);
  const bool good = found.known_version && !found.unknown_hub_code && !found.unknown_drive_code &&
                    found.unknown_models.empty();
  if (good && found.goes_on) {
    console.Note(name + ": something follows the last record; it is not read");
  }
  return good;
}

/// What stands behind a name; "-" is one of this process's own streams.
bool StatOf(const std::string& path, int standard, struct stat& file) {
  return (IsStandard(path) ? fstat(standard, &file) : stat(path.c_str(), &file)) == 0;
}

/// If a port is all that the file lacks, it gets one.
void GivePort(std::string& text, FileFindings& findings) {
  auto with_port = tavlo::WithPort(text);
  if (!with_port) return;
  FileFindings whole = Examine(*with_port, FileKind::HubProg);
  if (!whole.whole) return;
  whole.repairs.push_back({Repair::NoPort, 0});
  findings = std::move(whole);
  text = std::move(*with_port);
}

}  // namespace

std::string ShownName(const std::string& path, std::string_view standard) {
  return IsStandard(path) ? std::string(standard) : path;
}

std::optional<std::string> ReadFile(Console& console, const std::string& path, std::size_t limit,
                                    std::string& reason) {
  if (IsStandard(path)) return console.ReadInput(limit);
  auto bytes = QtFileStore().Read(path, limit);
  if (!bytes) reason = ReasonOf(path);
  return bytes;
}

bool LoadProgram(Source& source, Console& console, const std::string& path, FileFindings* found) {
  InitSession(source);
  std::string reason;
  auto text = ReadFile(console, path, kLargestProgramFile, reason);
  if (!text) {
    console.Message(kCannotOpen);
    if (!reason.empty()) console.Note(path + ": " + reason);
    return false;
  }
  // A stream has no name whose ending could tell.
  const FileKind kind = IsStandard(path) ? FileKind::HubProg : KindByName(path);
  const std::string name = ShownName(path, kStandardInput);
  FileFindings findings = Examine(*text, kind);
  if (found != nullptr) {
    if (!findings.whole && kind == FileKind::HubProg) GivePort(*text, findings);
    *found = findings;
  }
  if (!MayUse(console, name, kind, findings)) return false;
  NoLine line;
  NoProgramView view;
  NoRunView run;
  ConsoleDesk files(source, console, line, AnswerBy::No, view, run);
  return LoadText(files.desk, name, kind, *text);
}

bool SaveProgram(Source& source, Console& console, const std::string& path) {
  // A file without a port would read as damaged. Loading a file never changes the port, so any port will do.
  if (!source.link.OptCom) source.link.OptCom = 0;
  if (IsStandard(path)) {
    console.Bytes(WriteHubProg(source.program, source.link.OptCom));
    TellUnsaved(source.program, console);
    return true;
  }
  NoLine line;
  NoProgramView view;
  NoRunView run;
  ConsoleDesk files(source, console, line, AnswerBy::No, view, run);
  if (const Outcome saved = SaveFile(files.desk, path); !saved) {
    console.Note("cannot write " + path + ": " + saved.Why());
    return false;
  }
  TellUnsaved(source.program, console);
  return true;
}

bool TellUnknownModels(Console& console, const std::string& name, const Program& program) {
  const auto unknown = UnknownModelsOf(program);
  TellModels(console, name, unknown);
  return !unknown.empty();
}

bool IsSameFile(Console& console, const std::string& input, const std::string& output) {
  struct stat in {};
  struct stat out {};
  const bool both = StatOf(input, STDIN_FILENO, in) && StatOf(output, STDOUT_FILENO, out);
  // A terminal may well be both.
  if (!both || !S_ISREG(in.st_mode) || in.st_dev != out.st_dev || in.st_ino != out.st_ino) return false;
  console.Note("cannot write " + ShownName(output, kStandardOutput) + ": it is the file that is read");
  return true;
}

bool ResultsCollide(Console& console, bool json, const std::string& output) {
  if (!json || !IsStandard(output)) return false;
  console.Note("--json and an output of - both want standard output");
  return true;
}

}  // namespace tavlo::cli
