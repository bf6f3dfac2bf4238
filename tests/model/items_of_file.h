// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tavlo::testing {

/// A whole file whose items can be replaced.
class ItemsOfFile {
 public:
  explicit ItemsOfFile(std::string text) : text_(std::move(text)) {
    bool quoted = false;
    std::size_t start = 0;
    for (std::size_t at = 0; at < text_.size(); ++at) {
      if (text_[at] == '"') quoted = !quoted;
      if (quoted || (text_[at] != ',' && text_[at] != '\n')) continue;
      items_.emplace_back(start, text_[at] == ',' ? at : at - 1);
      start = at + 1;
    }
  }

  [[nodiscard]] std::size_t Count() const { return items_.size(); }
  [[nodiscard]] const std::string& Text() const { return text_; }
  /// The item without its separator.
  [[nodiscard]] std::string_view Item(std::size_t number) const {
    const auto [start, end] = items_[number];
    return std::string_view(text_).substr(start, end - start);
  }
  /// The file with other items in place of some.
  [[nodiscard]] std::string With(const std::map<std::size_t, std::string>& others) const {
    std::string text;
    std::size_t taken = 0;
    for (const auto& [number, other] : others) {
      const auto [start, end] = items_[number];
      text.append(text_, taken, start - taken);
      text += other;
      taken = end;
    }
    return text.append(text_, taken);
  }

 private:
  std::string text_;
  /// Where each begins and where its separator is.
  std::vector<std::pair<std::size_t, std::size_t>> items_;
};

}  // namespace tavlo::testing
