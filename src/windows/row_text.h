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

/// The texts of the rows as they are drawn. Each is worked out again only when something that it depends on
/// has changed.
class RowTexts {
 public:
  /// Returns what the label of this row shows at this width, which includes a margin of 4. A prompt loses its
  /// last characters until it fits, without a mark; any other text that does not fit ends in an ellipsis.
  const QString& Shown(const Source& source, int line, int label_width, const QFontMetrics& font);

  /// Must be called when the font has changed.
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
