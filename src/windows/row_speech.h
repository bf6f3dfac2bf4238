// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QString>

#include "session/rows.h"

namespace tavlo {

/// What a screen reader says of a row: its name, such as "Line 3: Go to line 1, executing", and a description
/// of what else can be seen there: the marker, the thick frame and the colour of the number.
struct RowSpeech {
  QString name;
  QString description;
};

/// `line` is 0-based. `at_program_counter`: the marker of the running line is beside the row.
[[nodiscard]] RowSpeech SpeechOf(const Row& row, int line, bool at_program_counter);

}  // namespace tavlo
