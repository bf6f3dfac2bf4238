// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <deque>
#include <memory>
#include <optional>
#include <string>

#include "platform/printer.h"
#include "platform/services.h"

class QPrinter;

namespace tavlo {

/// The system's printers on QPrinter and QPrintDialog. What is to become a PDF file is made in memory and
/// handed to the file store.
class GuiPrinter : public Printer {
 public:
  /// The store must outlive it.
  explicit GuiPrinter(FileStore& files);
  ~GuiPrinter() override;

  [[nodiscard]] bool AskPrinter() override;
  Outcome Print(const PaperDocument& document) override;

  /// Answers the next dialog instead of the operator with a PDF file of this path; nothing stands for a
  /// cancelled dialog.
  void setNextFile(std::optional<std::string> path) { answers_.push_back(std::move(path)); }

 private:
  FileStore& files_;
  /// Made at the first dialog, because it asks the system for all its printers. Keeps what was chosen.
  std::unique_ptr<QPrinter> printer_;
  std::deque<std::optional<std::string>> answers_;
};

}  // namespace tavlo
