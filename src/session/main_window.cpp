// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "session/main_window.h"

#include <algorithm>
#include <cmath>

#include "model/legacy_import.h"
#include "model/line_operations.h"
#include "model/program_file.h"
#include "platform/number_format.h"
#include "session/grid.h"

namespace tavlo {
namespace {

void Refresh(Desk& desk) {
  ScanLoops(desk.program());
  ShowAllDescs(desk);
  DrawArrows(desk);
  MarkChains(desk);
}

std::int16_t AsLine(double number) {
  return static_cast<std::int16_t>(std::clamp(RoundHalfEven(number), -32768.0, 32767.0));
}

void ShowTarget(Desk& desk, int line_number) {
  ShowDesc(desk, line_number - 1);
  SetIcon(desk, line_number - 1);
}

}  // namespace

std::string Caption(const Source& source) {
  return std::string(kApplicationTitle) + "  V" + VersionTextOf(kVersion) + " - " + source.file_name;
}

void InitSession(Source& source) {
  source = Source();
  Row empty;
  empty.icon = IconFor(NO, IconSet::Normal);
  source.rows.fill(empty);
  InitHardware(source.program.Axis);
  InitProg(source.program);
}

void Clear(Desk& desk) {
  const Answer answer = MsgBox(desk, {.text = "Do you want to clear your entire program?",
                                      .title = "Erase Program",
                                      .buttons = Buttons::OKCancel});
  if (answer != Answer::OK) return;
  InitProg(desk.program());
  Refresh(desk);
  desk.source.Changed = false;
  desk.source.file_name = kUntitled;
  desk.view.CaptionChanged();
  desk.view.AutoScroll(0);
}

void ChooseModel(Desk& desk, int index) {
  const std::int16_t before = desk.program().HubIndex;
  SelectModel(desk, index);
  if (desk.program().HubIndex != before) desk.source.Changed = true;
}

void SelectModel(Desk& desk, int index) {
  desk.program().HubIndex = index == HubQuad ? HubQuad : HubOcto;
  ShowDrive(desk);
  desk.view.HubChanged();
}

void SelectLimitAction(Desk& desk, int index) {
  const auto action = static_cast<std::int16_t>(std::clamp<int>(index, HaltProgram, ContinueProgram));
  if (action != desk.program().LimitList) desk.source.Changed = true;
  desk.program().LimitList = action;
  desk.view.LimitChanged();
  ShowTarget(desk, AsLine(desk.program().LimitBranch));
}

std::string LimitBranchText(const Program& program) {
  return Joined(program.LimitBranch);
}

void LeaveLimitBranch(Desk& desk, std::string_view text) {
  const double entered = std::clamp(RoundHalfEven(Val(text)), 1.0, static_cast<double>(kLines));
  if (entered != desk.program().LimitBranch) desk.source.Changed = true;
  desk.program().LimitBranch = entered;
  desk.view.LimitChanged();
  const std::int16_t line_number = AsLine(entered);
  if (line_number == desk.source.LimitLine) return;
  ShowTarget(desk, desk.source.LimitLine);
  ShowTarget(desk, line_number);
  desk.source.LimitLine = line_number;
}

void CopyInst(Desk& desk, int source_line, int target_line) {
  Program& program = desk.program();
  const Instruction& from = program.Prog[source_line];
  if (from.Type == MMI && StringsTooLong(program, from.Text.size(), target_line)) {
    MsgBox(desk, {.text = "Strings too long", .icon = Icon::Exclamation});
    return;
  }
  program.Prog[target_line] = from;
  desk.source.Changed = true;
  SetIcon(desk, target_line);
  ShowDesc(desk, target_line);
  ScanLoops(program);
  DrawArrows(desk);
}

void DropIcon(Desk& desk, int source_line, int target_line, bool shift) {
  const auto is_line = [](int line) { return line >= 0 && line < kLines; };
  // Under a transfer or a run the program stays what the hub was given.
  if (desk.source.Busy || desk.run.Active() != RunWindow::None) return;
  if (!is_line(source_line) || !is_line(target_line)) return;
  if (source_line == target_line) {
    desk.source.CurLine = static_cast<std::int16_t>(target_line);
    if (desk.editors == nullptr) return;
    ShowPicked(desk, target_line);
    if (shift) {
      desk.editors->ShowInstDialog();
      ShowDesc(desk, desk.source.CurLine);
      ScanLoops(desk.program());
      DrawArrows(desk);
      MarkChains(desk);
    } else {
      desk.editors->ShowPickProg();
    }
    SetIcon(desk, desk.source.CurLine);
    return;
  }
  if (desk.program().Prog[target_line].Type != NO) {
    const std::string question = "Do you want to copy program line " + Joined(source_line + 1) + " to line " +
                                 Joined(target_line + 1) + "?";
    const Answer answer =
        MsgBox(desk, {.text = question, .title = "Copy Program Line", .buttons = Buttons::OKCancel});
    if (answer != Answer::OK) return;
    CopyInst(desk, source_line, target_line);
    return;
  }
  CopyInst(desk, source_line, target_line);
  MarkChains(desk);
}

bool MayQuit(Desk& desk) {
  if (!desk.source.Changed) return true;
  return MsgBox(desk,
                {.text = "You have made changes without Saving or Downloading.  Do you really want to quit?",
                 .title = "Quit",
                 .buttons = Buttons::OKCancel}) == Answer::OK;
}

namespace {

void ShowLoaded(Desk& desk, std::string_view name) {
  desk.source.LimitLine = AsLine(desk.program().LimitBranch);
  desk.source.Changed = false;
  desk.source.file_name = name;
  Refresh(desk);
  ShowDrive(desk);
  desk.view.HubChanged();
  desk.view.LimitChanged();
  desk.view.CaptionChanged();
  desk.view.AutoScroll(0);
}

void TellDamaged(Desk& desk, const std::string& name, FileKind kind) {
  MsgBox(desk, {.text = "Can't read file " + name + ".  File may be damaged.", .title = ""});
  // After an old file the hardware keeps what was read of it.
  if (kind == FileKind::HubProg) InitHardware(desk.program().Axis);
  for (int line = 0; line < kLines; ++line) desk.program().Prog[line].Type = NO;
  ShowLoaded(desk, kUntitled);
}

/// What ends the busy look of a load, whichever way it went.
void HideLoading(Desk& desk) {
  desk.loading.Hide();
  desk.loop.Yield();
}

}  // namespace

std::optional<std::string> SaveFile(Desk& desk, const std::string& path) {
  auto error = desk.files.Replace(path, WriteHubProg(desk.program(), desk.source.OptCom));
  // A failed save, too, takes the name and the program for saved; the message is all that tells.
  desk.source.Changed = false;
  desk.source.file_name = path;
  desk.view.CaptionChanged();
  return error;
}

void Save(Desk& desk) {
  const auto path = desk.dialogs.SaveFileName({{{"Tavlo Files", "*.TVH"}}, "tvh"});
  if (!path || path->empty()) return;
  if (const auto error = SaveFile(desk, *path)) {
    MsgBox(desk, {.text = "Error saving file: " + *error, .title = ""});
  }
}

bool LoadFile(Desk& desk, const std::string& path) {
  desk.loading.Show();
  const auto text = desk.files.Read(path, kLargestProgramFile);
  if (!text) {
    MsgBox(desk, {.text = std::string(kCannotOpen), .title = ""});
    desk.loading.Hide();
    return false;
  }
  return LoadText(desk, path, KindByName(path), *text);
}

bool LoadText(Desk& desk, const std::string& name, FileKind kind, std::string_view text) {
  ItemReader items(text);
  std::string version;
  items.Read(version);
  const float revision = ParseRevision(version);
  const bool good = kind == FileKind::HubProg ? LoadHubProg(items, revision, desk.program())
                                              : LoadOskelProg(items, revision, desk.program());
  HideLoading(desk);
  if (!good) {
    TellDamaged(desk, name, kind);
    return false;
  }
  ShowLoaded(desk, name);
  return true;
}

void Load(Desk& desk) {
  if (desk.source.Changed) {
    const Answer answer = MsgBox(desk, {.text = "You have made changes without Saving or Downloading.  Do "
                                                "you really want to open a file and replace your program?",
                                        .title = "Open",
                                        .buttons = Buttons::OKCancel,
                                        .icon = Icon::Question});
    if (answer != Answer::OK) return;
  }
  const auto path =
      desk.dialogs.OpenFileName({{{"Tavlo Hub Files", "*.TVH"}, {"Oskel Composer Files", "*.OSK"}}, "tvh"});
  if (!path || path->empty()) return;
  LoadFile(desk, *path);
}

}  // namespace tavlo
