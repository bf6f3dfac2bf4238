// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "session/history.h"

#include <algorithm>

namespace tavlo {
namespace {

/// What the hub reports about itself stays unless it is still what the edit made of it.
template <class T>
void SetUnlessChangedSince(T& value, const T& from, const T& to) {
  if (value == from) value = to;
}

}  // namespace

History::Settings History::SettingsOf(const Program& program) {
  return {.Axis = program.Axis,
          .HubIndex = program.HubIndex,
          .LimitList = program.LimitList,
          .LimitBranch = program.LimitBranch,
          .HubVersion = program.HubVersion};
}

void History::Apply(const Settings& from, const Settings& to, Program& program) {
  if (from.Axis != to.Axis) program.Axis = to.Axis;
  if (from.LimitList != to.LimitList) program.LimitList = to.LimitList;
  if (from.LimitBranch != to.LimitBranch) program.LimitBranch = to.LimitBranch;
  SetUnlessChangedSince(program.HubIndex, from.HubIndex, to.HubIndex);
  SetUnlessChangedSince(program.HubVersion, from.HubVersion, to.HubVersion);
}

History::Kept History::Keep(const Instruction& record, int line) const {
  // An inserted or a deleted line moves those below it by one.
  for (const int near : {line, line - 1, line + 1}) {
    if (near < 0 || near > kLines) continue;
    if (const Kept& kept = kept_[near]; kept != nullptr && *kept == record) return kept;
  }
  return std::make_shared<const Instruction>(record);
}

std::vector<History::Line> History::LinesThatDiffer(const Program& before, const Program& after) {
  std::vector<Line> lines;
  for (int line = 0; line <= kLines; ++line) {
    if (before.Prog[line] == after.Prog[line]) continue;
    kept_[line] = Keep(before.Prog[line], line);
    lines.push_back({line, kept_[line], nullptr});
  }
  // All of them are kept as they were before one is looked for as it is now.
  for (Line& changed : lines) changed.after = Keep(after.Prog[changed.line], changed.line);
  for (const Line& changed : lines) kept_[changed.line] = changed.after;
  return lines;
}

void History::Record(std::string name, const Edited& before, const Program& after,
                     const std::string& file_after) {
  Step step{.name = std::move(name),
            .lines = LinesThatDiffer(before.program, after),
            .settings = nullptr,
            .file_before = before.file_name,
            .file_after = file_after};
  if (auto settings = std::pair(SettingsOf(before.program), SettingsOf(after));
      settings.first != settings.second) {
    step.settings = std::make_unique<const std::pair<Settings, Settings>>(std::move(settings));
  }
  if (step.lines.empty() && step.settings == nullptr && before.file_name == file_after) return;
  steps_.resize(at_);
  positions_.resize(at_ + 1);
  steps_.push_back(std::move(step));
  positions_.push_back({.unchanged = false, .empty = false, .from_hub = Here().from_hub, .saved_as = {}});
  if (steps_.size() > kSteps) {
    steps_.erase(steps_.begin());
    positions_.erase(positions_.begin());
  }
  at_ = steps_.size();
}

std::string_view History::UndoName() const {
  return at_ == 0 ? std::string_view() : steps_[at_ - 1].name;
}

std::string_view History::RedoName() const {
  return at_ == steps_.size() ? std::string_view() : steps_[at_].name;
}

std::optional<int> History::Undo(Program& program, std::string& file_name) {
  Step& step = steps_[--at_];
  for (const Line& changed : step.lines) {
    program.Prog[changed.line] = *changed.before;
    kept_[changed.line] = changed.before;
  }
  if (step.settings != nullptr) Apply(step.settings->second, step.settings->first, program);
  // Either name may have changed by a save since.
  if (step.file_before != step.file_after) step.file_after = std::exchange(file_name, step.file_before);
  return step.lines.empty() ? std::nullopt : std::optional(step.lines.front().line);
}

std::optional<int> History::Redo(Program& program, std::string& file_name) {
  Step& step = steps_[at_++];
  for (const Line& changed : step.lines) {
    program.Prog[changed.line] = *changed.after;
    kept_[changed.line] = changed.after;
  }
  if (step.settings != nullptr) Apply(step.settings->first, step.settings->second, program);
  if (step.file_before != step.file_after) step.file_before = std::exchange(file_name, step.file_after);
  return step.lines.empty() ? std::nullopt : std::optional(step.lines.front().line);
}

void History::MarkUnchanged(Unchanged why, const std::string& file_name) {
  const bool elsewhere =
      why == Unchanged::Saved || why == Unchanged::Transferred || why == Unchanged::Uploaded;
  for (Position& position : positions_) {
    if (elsewhere) position.unchanged = false;
    if (why == Unchanged::Saved && position.saved_as == file_name) position.saved_as.clear();
  }
  Here().unchanged = true;
  if (why == Unchanged::Saved || why == Unchanged::Loaded) Here().saved_as = file_name;
  if (why == Unchanged::Cleared) Here().empty = true;
  if (why != Unchanged::Transferred && why != Unchanged::Otherwise)
    Here().from_hub = why == Unchanged::Uploaded;
}

void History::MarkChanged() {
  Here().unchanged = false;
}

bool History::InFile(const std::string& file_name) const {
  return Here().empty || (!Here().saved_as.empty() && Here().saved_as == file_name);
}

}  // namespace tavlo
