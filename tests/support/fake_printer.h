// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/printer.h"

namespace tavlo::testing {

/// Remembers what it printed; may be cancelled, or fail.
class FakePrinter : public Printer {
 public:
  [[nodiscard]] bool AskPrinter() override {
    ++asked;
    if (on_ask) on_ask();
    return chosen;
  }
  Outcome Print(const PaperDocument& document) override {
    if (!failure.empty()) return Outcome::Failed(failure);
    printed.push_back(document);
    return {};
  }

  bool chosen = true;
  std::string failure;
  int asked = 0;
  std::vector<PaperDocument> printed;
  /// What happens while the dialog is up.
  std::function<void()> on_ask;
};

}  // namespace tavlo::testing
