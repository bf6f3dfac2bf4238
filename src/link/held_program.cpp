// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "link/held_program.h"

#include <utility>

#include "checks/scans.h"
#include "codegen/image_match.h"
#include "model/program_queries.h"

namespace tavlo {

CompiledProgram CompileAsDownloaded(Program& program) {
  program.MMIused = ProgHasMMI(program);
  if (program.HubIndex == HubQuad) FixMultiIn(program);
  return CompileProgram(program);
}

Holds HubHolds(const Program& program, const HubProgram& held) {
  if (held.by == HubProgram::By::Nothing) return Holds::Unknown;
  // Compiling writes back.
  Program copy = program;
  // What is shown may have been made for another hub, or for none yet.
  copy.HubIndex = held.HubIndex;
  copy.HubVersion = held.HubVersion;
  try {
    return ImageHolds(held.image, CompileAsDownloaded(copy)) ? Holds::TheProgramShown : Holds::Another;
  } catch (const EncodeError&) {
    return Holds::Another;
  }
}

void NoteHubProgram(const Link& link, HubProgram held) {
  link.state.held = std::move(held);
  link.view.HubChanged();
}

void NoteIdentity(const Link& link, std::string_view identity) {
  if (!link.state.identity.empty() && link.state.identity != identity) link.state.held = {};
  link.state.identity = identity;
  link.view.HubChanged();
}

void ForgetHub(const Link& link) {
  link.state.identity.clear();
  NoteHubProgram(link, {});
}

}  // namespace tavlo
