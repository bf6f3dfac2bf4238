// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <cstddef>

#include "forms/controls.h"

namespace tavlo {

/// Shows how full the hub's pool of prompt texts is with so many bytes.
void ShowPoolSize(Gauge& gauge, std::size_t bytes);

}  // namespace tavlo
