// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/option_text.h"

#include <charconv>
#include <vector>

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
