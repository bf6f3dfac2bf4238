// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "model/file_examination.h"
#include "session/desk.h"

namespace tavlo {

// The handlers of the main window's own controls. Those that talk to the hub are in link/.

/// "Tavlo Composer  V1.29.1 - " and the file's name.
[[nodiscard]] std::string Caption(const Source& source);

/// Gives a new session its program, rows, lists and boxes, and opens no port.
void InitSession(Source& source);

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
/// Writes the program. Gives a plain text of what went wrong, or nothing.
[[nodiscard]] std::optional<std::string> SaveFile(Desk& desk, const std::string& path);

/// `BtnClear`
void Clear(Desk& desk);

/// The operator chose this index of `ModelList`, which is a change of the program.
void ChooseModel(Desk& desk, int index);
/// The model is this index now, as the hub told it. The program does not count as changed by that.
void SelectModel(Desk& desk, int index);

/// `LimitList` changed to this index.
void SelectLimitAction(Desk& desk, int index);
/// `LimitBranch` lost the focus with this text in it.
void LeaveLimitBranch(Desk& desk, std::string_view text);
/// `LimitBranch` as it stands in its box.
[[nodiscard]] std::string LimitBranchText(const Program& program);

/// A row's icon was dropped on another row's, or on itself, which is how a click arrives. Nothing while a
/// transfer or a run is under way.
void DropIcon(Desk& desk, int source_line, int target_line, bool shift);

/// Copies a whole line over another.
void CopyInst(Desk& desk, int source_line, int target_line);

/// The question before unsaved changes are lost. True to go on.
[[nodiscard]] bool MayQuit(Desk& desk);

}  // namespace tavlo
