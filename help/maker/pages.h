// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QList>
#include <QTextDocument>
#include <QTextFormat>

namespace tavlo::help {

/// Set on the format of a block that must not be the last thing on a page.
inline constexpr int kKeepWithNext = QTextFormat::UserProperty + 1;

/// What lies between two heights of the document.
struct Slice {
  double from = 0;
  double to = 0;
  [[nodiscard]] double Height() const { return to - from; }
};

/// What one page shows of a document.
struct Page {
  /// The heading of a table that goes on from the page before; of no height if there is none.
  Slice head;
  Slice body;
};

/// Returns the pages of a document that is laid out, for a paint device, as one long column. Paragraphs,
/// pictures and the rows of tables are not divided, and what is marked stays with what follows. Only what is
/// higher than a page goes on beyond its foot.
[[nodiscard]] QList<Page> BreakPages(const QTextDocument& document, double page_height);

}  // namespace tavlo::help
