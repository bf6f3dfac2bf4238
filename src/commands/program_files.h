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
/// Asks for a name, reads the file and shows it.
void Load(Desk& desk);
/// Reads a file and shows it, without a dialog or a question. False if it was told as unreadable.
bool LoadFile(Desk& desk, const std::string& path);
/// The same with the text of a file that has been read already.
bool LoadText(Desk& desk, const std::string& name, FileKind kind, std::string_view text);
/// What is told of a file that cannot be opened.
inline constexpr std::string_view kCannotOpen = "Error: could not open file.";
/// Writes the program.
Outcome SaveFile(Desk& desk, const std::string& path);

/// `BtnClear`
void Clear(Desk& desk);

/// The question before unsaved changes are lost. True to go on.
[[nodiscard]] bool MayQuit(Desk& desk);

}  // namespace tavlo
