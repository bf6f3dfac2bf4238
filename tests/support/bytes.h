// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace tavlo::testing {

/// A byte string from numbers.
inline std::string Bytes(std::initializer_list<int> values) {
  std::string bytes;
  for (const int value : values) bytes += static_cast<char>(static_cast<unsigned char>(value));
  return bytes;
}

/// A message of the hub about a line, 0..199.
inline std::string LineMessage(int header, int line) {
  return {static_cast<char>(header), static_cast<char>(line / 16), static_cast<char>(line % 16), '\0'};
}

inline std::string Hex(std::string_view bytes) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string text;
  for (const char c : bytes) {
    const auto value = static_cast<unsigned char>(c);
    text += kDigits[value >> 4];
    text += kDigits[value & 15];
  }
  return text;
}

}  // namespace tavlo::testing
