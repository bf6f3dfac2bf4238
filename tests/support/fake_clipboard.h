// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <optional>
#include <string>

#include "platform/clipboard.h"

namespace tavlo::testing {

/// A clipboard of the test's own.
class FakeClipboard : public Clipboard {
 public:
  void Put(std::string_view kept_text, std::string_view plain_text) override {
    kept = kept_text;
    plain = plain_text;
  }
  [[nodiscard]] std::optional<std::string> Kept() override { return kept; }

  std::optional<std::string> kept;
  std::string plain;
};

}  // namespace tavlo::testing
