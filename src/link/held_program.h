// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string>

#include "codegen/compile.h"
#include "session/desk.h"

namespace tavlo {

/// Returns what a download of the program to a hub of its model and firmware would send. Changes the program
/// as the checks change it before they send it. Throws EncodeError.
[[nodiscard]] CompiledProgram CompileAsDownloaded(Program& program);

/// Compares what is known of the hub's program with a program, by the bytes that a download of it to that hub
/// would send. One that cannot be compiled is in no hub. Changes nothing.
[[nodiscard]] Holds HubHolds(const Program& program, const HubProgram& held);

/// The hub holds this from now on. Nothing is known of a hub that may be another one, or whose download has
/// begun and is not proven.
void NoteHubProgram(const Link& link, HubProgram held);
/// The hub on this port has said who it is. If it is another one than before, nothing is known of it.
void NoteIdentity(const Link& link, std::string_view identity);
/// Who answers on this port, and what it holds, has to be found out anew.
void ForgetHub(const Link& link);

}  // namespace tavlo
