// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "model/file_examination.h"
#include "session/desk.h"

namespace tavlo {

/// Asks for a name and writes the file.
void Save(Desk& desk);
/// Writes the program to the .TVH file that it was loaded from or saved to; asks for a name if it has none or
/// came from a hub since. Asks before it replaces what another program has written to that file meanwhile.
void SaveToFile(Desk& desk);
/// Asks for a name, reads the file and shows it.
void Load(Desk& desk);
/// The same for a file that the operator has named already: among the recent ones, by dropping it on the
/// window, or where the program was started. Nothing while the program must stay as it is.
void OpenFile(Desk& desk, const std::string& path);
/// Reads a file and shows it, without a dialog or a question. Returns false if the operator was told that it
/// cannot be read.
bool LoadFile(Desk& desk, const std::string& path);
/// The same for the text of a file that has already been read.
bool LoadText(Desk& desk, const std::string& name, FileKind kind, std::string_view text);
/// The message for a file that cannot be opened.
inline constexpr std::string_view kCannotOpen = "Error: could not open file.";
/// Writes the program to a file, without a dialog or a question.
Outcome SaveFile(Desk& desk, const std::string& path);

/// `BtnClear`
void Clear(Desk& desk);

/// Asks before unsaved changes are lost, and before a machine is left that may be moving. Returns true to go
/// on.
[[nodiscard]] bool MayQuit(Desk& desk);

}  // namespace tavlo
