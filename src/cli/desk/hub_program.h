// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <optional>

#include "codegen/compile.h"
#include "link/upload.h"
#include "session/desk.h"

namespace tavlo::cli {

/// What a download of the program to a hub of its model and firmware would send. The program is brought into
/// the shape in which the checks send it. Throws EncodeError.
[[nodiscard]] CompiledProgram CompileAsDownloaded(Program& program);

/// The sum of the last download, which an idle hub tells at once; nothing from a hub that has been switched
/// off since, or whose last download was broken off.
[[nodiscard]] std::optional<int> AskLastSum(Desk& desk);

/// Reads the memory of an idle hub, with the progress of an upload.
[[nodiscard]] ImageReading ReadIdleHub(Desk& desk);

}  // namespace tavlo::cli
