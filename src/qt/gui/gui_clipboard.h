// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "platform/clipboard.h"

namespace tavlo {

/// The desktop's clipboard on QClipboard. The kept text has a type of its own beside the plain one.
class GuiClipboard : public Clipboard {
 public:
  static constexpr const char* kType = "application/x-tavlo-lines";

  void Put(std::string_view kept, std::string_view plain) override;
  [[nodiscard]] std::optional<std::string> Kept() override;
};

}  // namespace tavlo
