// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string>
#include <vector>

#include "model/every_field.h"
#include "model/hand_file.h"
#include "oskel_writer.h"
#include "program_text.h"

namespace tavlo::fuzzing {

// A whole file of each version, with lines of every kind.

inline std::vector<testing::ItemsOfFile> WholeHubFiles() {
  std::vector<testing::ItemsOfFile> wholes;
  testing::HandFile file = testing::HandFileOf(testing::ProgramOfDifferentValues(1));
  for (const auto& revision : testing::kHubRevisions) {
    file.As(revision);
    wholes.emplace_back(std::string(revision.version) + "\r\n" + file.Body());
  }
  return wholes;
}

inline std::vector<testing::ItemsOfFile> WholeOldFiles() {
  std::vector<testing::ItemsOfFile> wholes;
  const Program program = testing::ProgramOfDifferentValues(1);
  for (const auto& revision : examples::kOskelRevisions) {
    wholes.emplace_back(WriteOskelProg(revision, program, {}));
  }
  return wholes;
}

}  // namespace tavlo::fuzzing
