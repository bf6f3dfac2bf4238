// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "session/edit_step.h"

#include <utility>

namespace tavlo {

EditStep::EditStep(Desk& desk, std::string name, Hub hub)
    : desk_(desk), name_(std::move(name)), hub_(hub), before_{desk.source.program, desk.source.file_name} {}

EditStep::~EditStep() {
  Source& source = desk_.source;
  if (hub_ == Hub::Reported) {
    before_.program.HubIndex = source.program.HubIndex;
    before_.program.HubVersion = source.program.HubVersion;
  }
  source.history.Record(std::move(name_), before_, source.program, source.file_name);
  // An edit may count as one although it has left everything as it was.
  if (source.Changed) source.history.MarkChanged();
  TellEdited(desk_);
}

void MarkUnchanged(Desk& desk, Unchanged why) {
  desk.source.Changed = false;
  desk.source.history.MarkUnchanged(why, desk.source.file_name);
  TellEdited(desk);
}

void TellEdited(Desk& desk) {
  desk.view.CaptionChanged();
  if (desk.keeper != nullptr) desk.keeper->Keep(desk.source);
}

bool Unsaved(const Source& source) {
  return source.Changed || !source.history.InFile(source.file_name);
}

}  // namespace tavlo
