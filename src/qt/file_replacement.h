// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string>
#include <string_view>

#include "platform/outcome.h"

namespace tavlo {

/// Replaces the whole file or leaves the old one, whichever step fails: the bytes are written beside it,
/// synced, and only then renamed to it. If `path` is a link, the file that it leads to is replaced. The file
/// keeps its permissions. Anything that is not a file is left alone.
Outcome ReplaceFile(const std::string& path, std::string_view bytes);

/// Writes to an open file. Returns false and sets errno if that fails, also where the file would become
/// larger than this process may make it.
[[nodiscard]] bool WriteAll(int descriptor, std::string_view bytes);

}  // namespace tavlo
