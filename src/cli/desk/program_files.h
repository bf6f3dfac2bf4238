// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <optional>
#include <string>

#include "cli/console/console.h"
#include "model/file_examination.h"
#include "session/desk.h"

namespace tavlo::cli {

// How the commands read and write files.

/// What messages call the files that are named "-".
inline constexpr std::string_view kStandardInput = "standard input";
inline constexpr std::string_view kStandardOutput = "standard output";
/// Returns the name as messages show it.
[[nodiscard]] std::string ShownName(const std::string& path, std::string_view standard);

/// Returns at most `limit` bytes of a file, unchanged. Returns nothing if it cannot be read; `reason` then
/// says why.
[[nodiscard]] std::optional<std::string> ReadFile(Console& console, const std::string& path,
                                                  std::size_t limit, std::string& reason);

/// Reads a program file and warns of anything that follows its last record. Returns false after a message if
/// the file is not a program, is damaged, has the extension of another kind of file, or holds an unknown
/// version, hub code or drive model.
/// `found` gets what there is to say of the file, if a caller wants to know; then a file that lacks nothing
/// but its port is taken, too.
[[nodiscard]] bool LoadProgram(Source& source, Console& console, const std::string& path,
                               FileFindings* found = nullptr);

/// Writes the program to a file, which is replaced as a whole or not at all, and reports what the file does
/// not hold. Returns false after a message if that fails.
[[nodiscard]] bool SaveProgram(Source& source, Console& console, const std::string& path);

/// Reports the drive models that do not exist. Returns true if there is one.
[[nodiscard]] bool TellUnknownModels(Console& console, const std::string& name, const Program& program);

/// Whether the output is the same file as the input, under whatever name or link. Returns true after a
/// message.
[[nodiscard]] bool IsSameFile(Console& console, const std::string& input, const std::string& output);
/// Whether both the output and the result would go to standard output. Returns true after a message.
[[nodiscard]] bool ResultsCollide(Console& console, bool json, const std::string& output);

}  // namespace tavlo::cli
