// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "commands/crash_keep.h"

#include <algorithm>
#include <array>
#include <ctime>
#include <utility>

#include "session/edit_step.h"
#include "session/grid.h"
#include "session/hub_runs.h"

namespace tavlo {
namespace {

constexpr std::string_view kEnding = ".kept";
constexpr std::string_view kRan =
    "A program was running on the hub.  The machine may still be moving: Stop (Esc) stops it.";

std::string TimeText(std::int64_t seconds) {
  const auto time = static_cast<std::time_t>(seconds);
  const std::tm* const local = std::localtime(&time);
  std::array<char, 32> text{};
  if (local != nullptr) std::strftime(text.data(), text.size(), "%Y-%m-%d at %H:%M", local);
  return text.data();
}

/// Makes the program that was kept the session's. It can be taken back like any edit.
void Restore(Desk& desk, const KeptProgram& kept) {
  {
    const EditStep step(desk, "restore " + std::string(BaseName(kept.file_name)), EditStep::Hub::Edited);
    desk.program() = kept.program;
    desk.source.file_name = kept.file_name;
    desk.source.Changed = true;
  }
  ShowReplaced(desk);
}

void Offer(Desk& desk, const KeptProgram& kept) {
  std::string text = "Tavlo Composer was not ended in the usual way.";
  if (kept.running) text += "  " + std::string(kRan);
  if (!kept.unsaved) {
    desk.boxes.MsgBox({.text = text, .title = "Restore", .icon = Icon::Exclamation});
    return;
  }
  text += "  What was changed in " + std::string(BaseName(kept.file_name)) + " until " + TimeText(kept.time) +
          " has been kept.  Do you want to have it back?";
  const Answer answer = desk.boxes.MsgBox({.text = text,
                                           .title = "Restore",
                                           .buttons = Buttons::RestoreDiscard,
                                           .icon = kept.running ? Icon::Exclamation : Icon::Question});
  if (answer == Answer::Restore) Restore(desk, kept);
}

}  // namespace

CrashKeep::CrashKeep(StateFolder& folder, std::string own_name, std::function<std::int64_t()> now)
    : folder_(folder), own_name_(std::move(own_name) + std::string(kEnding)), now_(std::move(now)) {}

Outcome CrashKeep::Write(const Source& source) {
  const std::string text = KeptTextOf({.program = source.program,
                                       .file_name = source.file_name,
                                       .time = now_(),
                                       .unsaved = Unsaved(source),
                                       .running = source.link.HubRuns});
  if (text.size() > kLargestKeptText) return Outcome::Failed("The program is too large");
  // Without a claim another session would take this one for ended.
  if (!folder_.Claim(own_name_)) return Outcome::Failed("The folder for it cannot be used");
  written_ = true;
  return folder_.Replace(own_name_, text);
}

void CrashKeep::Keep(const Source& source) {
  if (!Unsaved(source) && !source.link.HubRuns) return End();
  const Outcome kept = Write(source);
  if (!kept && !std::exchange(failing_, true) && OnFailure) OnFailure(kept.Why());
  if (kept) failing_ = false;
}

void CrashKeep::End() {
  if (std::exchange(written_, false)) folder_.Remove(own_name_);
}

std::optional<CrashKeep::Left> CrashKeep::FindLeft() {
  std::optional<Left> last;
  for (const std::string& name : folder_.Names()) {
    if (!name.ends_with(kEnding) || name == own_name_ || !folder_.Claim(name)) continue;
    Left found{.name = name, .text = {}, .kept = {}};
    found.text = folder_.Read(name, kLargestKeptText).value_or("");
    found.kept = ReadKeptProgram(found.text);
    const auto time = [](const Left& left) { return left.kept ? left.kept->time : 0; };
    if (!last || time(found) > time(*last)) last = std::move(found);
  }
  return last;
}

void CrashKeep::Remove(const Left& left) {
  // Another version of this program may be able to read it.
  if (!left.kept && !left.text.empty()) static_cast<void>(folder_.Replace("unreadable", left.text));
  folder_.Remove(left.name);
}

void OfferLeft(Desk& desk, CrashKeep& keep) {
  while (const auto left = keep.FindLeft()) {
    if (left->kept) {
      if (left->kept->running) NoteHubRuns(desk.link(), true);
      Offer(desk, *left->kept);
    } else if (!left->text.empty()) {
      desk.boxes.MsgBox({.text = "Tavlo Composer was not ended in the usual way, and what was kept of the "
                                 "changes that no file holds cannot be read.",
                         .title = "Restore",
                         .icon = Icon::Exclamation});
    }
    // What was restored stays where it is until it is kept for this session.
    const bool restored = Unsaved(desk.source);
    if (!restored || !keep.Failing()) keep.Remove(*left);
    if (restored) return;
  }
}

}  // namespace tavlo
