// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/console/spelling.h"

#include <algorithm>

namespace tavlo::cli {
namespace {

constexpr int kMostMistakes = 2;

/// How many letters have to be changed, added, taken away or exchanged with their neighbour.
int Mistakes(std::string_view typed, std::string_view word) {
  std::vector<std::vector<int>> least(typed.size() + 1, std::vector<int>(word.size() + 1));
  for (std::size_t i = 0; i <= typed.size(); ++i) {
    for (std::size_t j = 0; j <= word.size(); ++j) {
      int& cell = least[i][j];
      if (i == 0 || j == 0) {
        cell = static_cast<int>(i + j);
        continue;
      }
      const int change = typed[i - 1] == word[j - 1] ? 0 : 1;
      cell = std::min({least[i - 1][j] + 1, least[i][j - 1] + 1, least[i - 1][j - 1] + change});
      const bool exchanged = i > 1 && j > 1 && typed[i - 1] == word[j - 2] && typed[i - 2] == word[j - 1];
      if (exchanged) cell = std::min(cell, least[i - 2][j - 2] + 1);
    }
  }
  return least.back().back();
}

}  // namespace

std::string NearestWord(std::string_view typed, const std::vector<std::string>& words) {
  constexpr std::size_t kLongestTyped = 40;
  if (words.empty() || typed.size() > kLongestTyped) return {};
  const auto nearest =
      std::ranges::min_element(words, {}, [&](const std::string& word) { return Mistakes(typed, word); });
  const int mistakes = Mistakes(typed, *nearest);
  // A short word that shares no letter with what was typed is as near as a misspelt one.
  const bool alike = mistakes <= kMostMistakes && mistakes < static_cast<int>(nearest->size()) - 1;
  return alike ? *nearest : std::string();
}

}  // namespace tavlo::cli
