// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "cli/console/environment.h"

namespace tavlo::cli {

/// Standard input of this process.
class StandardInput : public Feed {
 public:
  [[nodiscard]] bool IsTerminal() const override;
  [[nodiscard]] int Descriptor() const override;
  [[nodiscard]] std::optional<std::string> Read() override;

 private:
  bool ended_ = false;
};

/// Returns what the feed delivers until its end, but at most `limit` bytes. Blocks until then; an
/// interruption throws Interrupted.
[[nodiscard]] std::string ReadToEnd(Feed& feed, std::size_t limit);

}  // namespace tavlo::cli
