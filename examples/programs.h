// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "model/program.h"

namespace tavlo::examples {

struct Example {
  std::string_view file_name;
  Program program;
};

/// The programs of this folder, in the order of its README.
[[nodiscard]] std::vector<Example> ExamplePrograms();

inline constexpr std::string_view kOldExample = "old-feeder.OSK";
/// The file of that name, as the earlier programmer wrote it.
[[nodiscard]] std::string OldExampleFile();

}  // namespace tavlo::examples
