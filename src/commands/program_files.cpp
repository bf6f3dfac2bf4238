// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "commands/program_files.h"

#include "commands/editing_now.h"
#include "commands/recent_files.h"
#include "model/legacy_import.h"
#include "model/line_operations.h"
#include "model/program_file.h"
#include "session/edit_step.h"
#include "session/grid.h"
#include "session/happened.h"
#include "text/line_list.h"

namespace tavlo {
namespace {

/// Tells it, and leaves a program without lines.
void GiveUp(Desk& desk, const std::string& name, FileKind kind) {
  desk.boxes.MsgBox({.text = "Can't read file " + name + ".  File may be damaged.", .title = ""});
  // After an old file the hardware keeps what was read of it.
  if (kind == FileKind::HubProg) InitHardware(desk.program().Axis);
  for (int line = 0; line < kLines; ++line) desk.program().Prog[line].Type = NO;
}

std::string LoadStep(std::string_view path, FileKind kind) {
  return (kind == FileKind::HubProg ? "load " : "import ") + std::string(BaseName(path));
}

/// Better now than at the next load.
void TellSavedWithoutPort(Desk& desk) {
  if (desk.source.link.OptCom) return;
  desk.boxes.MsgBox(
      {.text = "No comm port is open, so the file holds none and will be reported as damaged when it is "
               "loaded.  Choose a comm port and save again.  Without one, the command tavlo convert "
               "makes the file whole.",
       .title = "Save",
       .icon = Icon::Exclamation});
}

void TellNotWhollySaved(Desk& desk) {
  const std::vector<int> lines = LinesNotWhollyInFile(desk.program());
  if (lines.empty()) return;
  const std::string test = lines.size() == 1 ? " tests" : " test";
  desk.boxes.MsgBox(
      {.text = Listed(lines) + test +
               " inputs of the drive itself (X), which a program file does not hold.  After the file is "
               "loaded they must be entered again.",
       .title = "Save",
       .icon = Icon::Exclamation});
}

bool MayOpen(Desk& desk) {
  if (!desk.source.Changed) return true;
  return desk.boxes.MsgBox({.text = "You have made changes without Saving or Downloading.  Do "
                                    "you really want to open a file and replace your program?",
                            .title = "Open",
                            .buttons = Buttons::OKCancel,
                            .icon = Icon::Question}) == Answer::OK;
}

void LoadNamed(Desk& desk, const std::string& path) {
  if (LoadFile(desk, path)) {
    RememberFile(desk.settings, path);
  } else {
    ForgetFile(desk.settings, path);
  }
}

void SaveAndTell(Desk& desk, const std::string& path) {
  if (const Outcome saved = SaveFile(desk, path); !saved) {
    desk.boxes.MsgBox({.text = "Error saving file: " + saved.Why(), .title = ""});
    return;
  }
  RememberFile(desk.settings, path);
  TellSavedWithoutPort(desk);
  TellNotWhollySaved(desk);
}

/// What the dialog proposes. A file of the earlier programmer keeps what it holds.
std::string Proposed(const std::string& file_name) {
  if (file_name == kUntitled) return {};
  if (KindByName(file_name) == FileKind::HubProg) return file_name;
  const std::size_t folder = file_name.size() - BaseName(file_name).size();
  const std::size_t dot = file_name.find_last_of('.');
  return (dot == std::string::npos || dot < folder ? file_name : file_name.substr(0, dot)) + ".TVH";
}

/// Whether the program goes back to a file of this session that can be written without a question: one that
/// was read or written here, and no program of a hub has taken its place since.
bool HasFile(const Source& source) {
  return source.files_seen.contains(source.file_name) && KindByName(source.file_name) == FileKind::HubProg &&
         !source.history.FromHub();
}

/// A file that has gone has nothing to be lost.
bool ChangedElsewhere(Desk& desk, const std::string& path) {
  const auto now = desk.files.Read(path, kLargestProgramFile);
  return now && MarkOf(*now) != desk.source.files_seen[path];
}

/// What ends the busy look of a load, whichever way it went.
void HideLoading(Desk& desk) {
  desk.loading.Hide();
  desk.loop.Yield();
}

}  // namespace

Outcome SaveFile(Desk& desk, const std::string& path) {
  const std::string bytes = WriteHubProg(desk.program(), desk.source.link.OptCom);
  Outcome saved = desk.files.Replace(path, bytes);
  if (saved) desk.source.files_seen[path] = MarkOf(bytes);
  // Even a failed save counts as a save under the new name; only the message says otherwise.
  desk.source.file_name = path;
  // A file without a port does not load.
  const bool whole = saved && desk.source.link.OptCom.has_value();
  MarkUnchanged(desk, whole ? Unchanged::Saved : Unchanged::Otherwise);
  Happened(desk, (saved ? "Saved " : "Not saved: ") + std::string(BaseName(path)));
  return saved;
}

void Save(Desk& desk) {
  const auto path = desk.dialogs.SaveFileName({.filters = {{"Tavlo Files", "*.TVH"}},
                                               .default_extension = "tvh",
                                               .present = Proposed(desk.source.file_name)});
  if (!path || path->empty()) return;
  SaveAndTell(desk, *path);
}

void SaveToFile(Desk& desk) {
  const std::string path = desk.source.file_name;
  if (!HasFile(desk.source)) return Save(desk);
  if (ChangedElsewhere(desk, path) &&
      desk.boxes.MsgBox({.text = path + " was changed by another program.  Do you want to replace it?",
                         .title = "Save",
                         .buttons = Buttons::OKCancel,
                         .icon = Icon::Question}) != Answer::OK) {
    return;
  }
  SaveAndTell(desk, path);
}

bool LoadFile(Desk& desk, const std::string& path) {
  desk.loading.Show();
  const auto text = desk.files.Read(path, kLargestProgramFile);
  if (!text) {
    desk.boxes.MsgBox({.text = std::string(kCannotOpen), .title = ""});
    desk.loading.Hide();
    return false;
  }
  const bool good = LoadText(desk, path, KindByName(path), *text);
  if (good) desk.source.files_seen[path] = MarkOf(*text);
  return good;
}

bool LoadText(Desk& desk, const std::string& name, FileKind kind, std::string_view text) {
  ItemReader items(text);
  std::string version;
  items.Read(version);
  const float revision = ParseRevision(version);
  bool good = false;
  {
    const EditStep step(desk, LoadStep(name, kind), EditStep::Hub::Edited);
    good = kind == FileKind::HubProg ? LoadHubProg(items, revision, desk.program())
                                     : LoadOskelProg(items, revision, desk.program());
    HideLoading(desk);
    if (!good) GiveUp(desk, name, kind);
    desk.source.file_name = good ? name : kUntitled;
  }
  MarkUnchanged(desk, good ? Unchanged::Loaded : Unchanged::Cleared);
  ShowReplaced(desk);
  desk.view.AutoScroll(0);
  Happened(desk, (good ? "Loaded " : "Not loaded: ") + std::string(BaseName(name)));
  return good;
}

void Load(Desk& desk) {
  if (!MayOpen(desk)) return;
  const auto path =
      desk.dialogs.OpenFileName({{{"Tavlo Hub Files", "*.TVH"}, {"Oskel Composer Files", "*.OSK"}}, "tvh"});
  if (!path || path->empty()) return;
  LoadNamed(desk, *path);
}

void OpenFile(Desk& desk, const std::string& path) {
  if (!ProgramHeld(desk) && MayOpen(desk)) LoadNamed(desk, path);
}

void Clear(Desk& desk) {
  const Answer answer = desk.boxes.MsgBox({.text = "Do you want to clear your entire program?",
                                           .title = "Erase Program",
                                           .buttons = Buttons::OKCancel});
  if (answer != Answer::OK) return;
  {
    const EditStep step(desk, "clear", EditStep::Hub::Edited);
    InitProg(desk.program());
    desk.source.file_name = kUntitled;
  }
  ShowProgram(desk);
  MarkUnchanged(desk, Unchanged::Cleared);
  Happened(desk, "Program cleared");
  desk.view.AutoScroll(0);
}

bool MayQuit(Desk& desk) {
  const auto may = [&desk](const char* question, Icon icon) {
    return desk.boxes.MsgBox(
               {.text = question, .title = "Quit", .buttons = Buttons::OKCancel, .icon = icon}) == Answer::OK;
  };
  if (desk.source.Changed &&
      !may("You have made changes without Saving or Downloading.  Do you really want to quit?", Icon::None)) {
    return false;
  }
  // A terminal that was closed by its frame leaves its program running.
  return !desk.source.link.HubRuns || may("A program may still be running on the hub.  Without Tavlo "
                                          "Composer the machine's own stop is the only "
                                          "one left.  Do you really want to quit?",
                                          Icon::Exclamation);
}

}  // namespace tavlo
