// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/option_text.h"

#include <algorithm>
#include <charconv>

#include "hubsim/hub.h"
#include "hubsim/machine/faults.h"
#include "hubsim/program/io.h"

namespace tavlo::hubsim {
namespace {

constexpr int kLastModel = 50;
constexpr int kUnlistedModel = 100;
constexpr std::string_view kHexDigits = "0123456789abcdef";

std::vector<std::string_view> Split(std::string_view text, char separator) {
  std::vector<std::string_view> parts;
  while (true) {
    const std::size_t at = text.find(separator);
    parts.push_back(text.substr(0, at));
    if (at == std::string_view::npos) return parts;
    text.remove_prefix(at + 1);
  }
}

/// Fills `values` from the front; false if one is refused or there are too many.
template <typename Parse>
bool FillList(std::string_view text, std::array<int, kAxisCount>& values, Parse parse) {
  const auto parts = Split(text, ',');
  if (parts.size() > values.size()) return false;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    const std::optional<int> value = parse(parts[i]);
    if (!value) return false;
    values[i] = *value;
  }
  return true;
}

std::optional<int> HexDigit(char digit) {
  const char lower = digit >= 'A' && digit <= 'F' ? static_cast<char>(digit - 'A' + 'a') : digit;
  const std::size_t value = kHexDigits.find(lower);
  if (value == std::string_view::npos) return std::nullopt;
  return static_cast<int>(value);
}

}  // namespace

std::vector<std::string_view> SplitWords(std::string_view line) {
  constexpr std::string_view kBlanks = " \t\r";
  std::vector<std::string_view> words;
  while (true) {
    const std::size_t start = line.find_first_not_of(kBlanks);
    if (start == std::string_view::npos) return words;
    line.remove_prefix(start);
    const std::size_t end = line.find_first_of(kBlanks);
    words.push_back(line.substr(0, end));
    if (end == std::string_view::npos) return words;
    line.remove_prefix(end);
  }
}

std::optional<int> ParseAxis(std::string_view word) {
  const auto number = ParseWhole(word);
  if (!number || *number < 1 || *number > kAxisCount) return std::nullopt;
  return *number - 1;
}

std::optional<int> ParseInput(std::string_view word) {
  const bool own = !word.empty() && (word.front() == 'X' || word.front() == 'x');
  const auto number = ParseWhole(own ? word.substr(1) : word);
  if (!number) return std::nullopt;
  if (own) return *number < kInputCount - kFirstXInput ? std::optional(kFirstXInput + *number) : std::nullopt;
  return *number >= 1 && *number <= kFirstXInput ? std::optional(*number - 1) : std::nullopt;
}

std::optional<int> ParseFault(std::string_view word) {
  const auto* name = std::ranges::find(kFaultNames, word);
  if (name != kFaultNames.end()) return 1 << (name - kFaultNames.begin());
  const auto code = ParseWhole(word);
  return code && *code < kFaultCodes ? code : std::nullopt;
}

std::optional<int> ParseCounts(std::string_view word) {
  const bool backwards = word.starts_with('-');
  const auto counts = ParseWhole(backwards ? word.substr(1) : word);
  if (!counts || *counts > kMostKnobCounts) return std::nullopt;
  return backwards ? -*counts : *counts;
}

std::optional<int> ParseWhole(std::string_view text) {
  int value = 0;
  if (text.empty() || text.front() == '-') return std::nullopt;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return value;
}

std::optional<int> ParseHundredths(std::string_view text) {
  const std::size_t point = text.find('.');
  if (point == std::string_view::npos || point > 3 || text.size() != point + 3) return std::nullopt;
  const auto whole = ParseWhole(text.substr(0, point));
  const auto fraction = ParseWhole(text.substr(point + 1));
  if (!whole || !fraction) return std::nullopt;
  return *whole * 100 + *fraction;
}

std::optional<int> ParseFirmware(std::string_view text) {
  const auto hundredths = ParseHundredths(text);
  if (!hundredths || *hundredths < 100 || *hundredths > 227) return std::nullopt;
  return *hundredths - 100;
}

std::optional<std::array<int, kAxisCount>> ParseDrives(std::string_view text) {
  std::array<int, kAxisCount> models{};
  const auto model = [](std::string_view part) -> std::optional<int> {
    const auto code = ParseWhole(part);
    return code && (*code <= kLastModel || *code == kUnlistedModel) ? code : std::nullopt;
  };
  if (!FillList(text, models, model)) return std::nullopt;
  return models;
}

std::optional<std::array<int, kAxisCount>> ParseRevisions(std::string_view text,
                                                          const std::array<int, kAxisCount>& others) {
  std::array<int, kAxisCount> revisions = others;
  const auto revision = [](std::string_view part) -> std::optional<int> {
    const auto hundredths = ParseHundredths(part);
    return hundredths && *hundredths <= 999 ? hundredths : std::nullopt;
  };
  if (!FillList(text, revisions, revision)) return std::nullopt;
  return revisions;
}

std::optional<std::string> ParseHex(std::string_view text) {
  std::string bytes;
  std::optional<int> high;
  for (const char character : text) {
    if (character == ' ') continue;
    const auto digit = HexDigit(character);
    if (!digit) return std::nullopt;
    if (high) bytes += static_cast<char>(*high * 16 + *digit);
    high = high ? std::nullopt : digit;
  }
  if (high || bytes.empty()) return std::nullopt;
  return bytes;
}

std::string ToHex(std::string_view bytes) {
  std::string hex;
  hex.reserve(bytes.size() * 2);
  for (const char byte : bytes) {
    const auto value = static_cast<unsigned char>(byte);
    hex += kHexDigits[value / 16];
    hex += kHexDigits[value % 16];
  }
  return hex;
}

}  // namespace tavlo::hubsim
