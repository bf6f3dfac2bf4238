// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <optional>
#include <string>

#include "cli/console/console.h"
#include "session/desk.h"

namespace tavlo::cli {

// Files as the commands read and write them.

/// The name as a message tells it.
[[nodiscard]] std::string ShownName(const std::string& path, std::string_view standard);

/// At most `limit` bytes of a file, as they stand. If it cannot be read, nothing, and `reason` says why.
[[nodiscard]] std::optional<std::string> ReadFile(Console& console, const std::string& path,
                                                  std::size_t limit, std::string& reason);

/// Reads a program file and warns of what follows its last record. False after the message of a file that is
/// no program, is damaged, has a name that stands for another kind of file, or holds a version, a hub code or
/// a drive model that there is not.
[[nodiscard]] bool LoadProgram(Source& source, Console& console, const std::string& path);

/// Writes the program to a file, which is replaced whole or not at all, and tells what the file does not
/// hold. False after the message of a failure.
[[nodiscard]] bool SaveProgram(Source& source, Console& console, const std::string& path);

/// Tells the drive models that there are not. True if there is one.
[[nodiscard]] bool TellUnknownModels(Console& console, const std::string& name, const Program& program);

/// The output is the very file that is read, by whatever name or link. True after its message.
[[nodiscard]] bool IsSameFile(Console& console, const std::string& input, const std::string& output);
/// Standard output cannot take both the output and the result. True after its message.
[[nodiscard]] bool ResultsCollide(Console& console, bool json, const std::string& output);

}  // namespace tavlo::cli
