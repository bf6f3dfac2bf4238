// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tavlo {

/// The clipboard that the programs of a desktop share.
class Clipboard {
 public:
  virtual ~Clipboard() = default;
  /// Puts lines there in place of what it holds: as a kept text for this program, and as a text in UTF-8 for
  /// any other.
  virtual void Put(std::string_view kept, std::string_view plain) = 0;
  /// Returns the kept text that it holds, which may be any bytes; nothing if it holds none.
  [[nodiscard]] virtual std::optional<std::string> Kept() = 0;
};

}  // namespace tavlo
