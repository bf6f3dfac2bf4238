// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QString>

#include "session/rows.h"

namespace tavlo {

/// What a screen reader says of a row: its name, such as "Line 3: Go to line 1, executing", and in the
/// description what else is to be seen there: the marker, the thick frame and the colour of the number.
struct RowSpeech {
  QString name;
  QString description;
};

/// `line` counts from 0; the program counter may stand beside it.
[[nodiscard]] RowSpeech SpeechOf(const Row& row, int line, bool at_program_counter);

}  // namespace tavlo
