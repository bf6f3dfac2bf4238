// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QFontMetrics>
#include <QString>
#include <array>
#include <string>
#include <string_view>

#include "session/desk.h"

namespace tavlo {

/// Line ends and other controls of a text have no place in one line: blanks stand for them.
[[nodiscard]] QString InOneLine(std::string_view text);

/// The texts of the rows as they are drawn, worked out again only when something of it has changed.
class RowTexts {
 public:
  /// What the label of this row shows at this width, with 4 to spare. A prompt loses its last characters
  /// until it fits, and no mark shows it; any other text that does not fit ends in an ellipsis.
  const QString& Shown(const Source& source, int line, int label_width, const QFontMetrics& font);

  /// The font has changed.
  void Forget() { rows_ = {}; }

 private:
  struct Entry {
    std::string desc;
    int label_width = -1;
    bool is_prompt = false;
    QString text;
  };
  std::array<Entry, kLines> rows_;
};

}  // namespace tavlo
