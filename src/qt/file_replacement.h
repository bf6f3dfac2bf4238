// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string>
#include <string_view>

#include "platform/outcome.h"

namespace tavlo {

/// Replaces the file whole or leaves the old one, whatever step fails: the bytes are written beside it and
/// synced, and only then take its name. A link is followed, and the file behind it replaced; a file keeps
/// its permissions. What is there and is no file stays as it is.
Outcome ReplaceFile(const std::string& path, std::string_view bytes);

}  // namespace tavlo
