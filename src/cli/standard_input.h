// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "cli/environment.h"

namespace tavlo::cli {

/// Standard input of this process.
class StandardInput : public Feed {
 public:
  /// A process that was started without one gets an empty one: the next descriptor that is opened, a port,
  /// would be read as standard input.
  StandardInput();

  [[nodiscard]] bool IsTerminal() const override;
  [[nodiscard]] int Descriptor() const override;
  [[nodiscard]] std::optional<std::string> Read() override;

 private:
  bool ended_ = false;
};

}  // namespace tavlo::cli
