// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string>
#include <vector>

#include "platform/outcome.h"

namespace tavlo {

enum class PaperStyle { Plain, Title, Heading };

/// A row of a document for paper. It goes on below itself, further right, if it is too long for the page.
struct PaperRow {
  std::string text;
  /// Stands at the right edge of the margin before the texts; empty for none.
  std::string number = {};
  /// Columns by which the text begins further right.
  int indent = 0;
  PaperStyle style = PaperStyle::Plain;
};

/// Rows that stay together on one page, as far as a page can hold them.
using PaperBlock = std::vector<PaperRow>;

/// A document for paper. Texts are UTF-8 without control characters.
struct PaperDocument {
  std::string title;
  /// The file that the document is about, named on each page.
  std::string file_name;
  std::vector<PaperBlock> blocks;
};

/// The system's printer.
class Printer {
 public:
  virtual ~Printer() = default;
  /// Shows the system's dialog, in which the operator chooses printer and paper. Returns false if the
  /// operator cancelled.
  [[nodiscard]] virtual bool AskPrinter() = 0;
  /// Prints on what was chosen last. What was to become a file becomes a whole one, or the old one stays.
  virtual Outcome Print(const PaperDocument& document) = 0;
};

}  // namespace tavlo
