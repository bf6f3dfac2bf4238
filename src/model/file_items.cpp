// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "model/file_items.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

#include "platform/blanks.h"
#include "platform/number_format.h"

namespace tavlo {
namespace {

constexpr std::string_view kTrue = "#TRUE#";
constexpr std::string_view kFalse = "#FALSE#";

bool SameLetters(std::string_view a, std::string_view b) {
  const auto upper = [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; };
  return std::ranges::equal(a, b, {}, upper, upper);
}

std::optional<bool> AsFlag(std::string_view text) {
  if (SameLetters(text, kTrue)) return true;
  if (SameLetters(text, kFalse)) return false;
  return std::nullopt;
}

std::optional<double> AsNumber(std::string_view text) {
  if (const auto flag = AsFlag(text)) return *flag ? -1 : 0;
  return ParseNumber(text);
}

}  // namespace

/// Takes the separator behind an item: a comma, or one line end of whichever kind.
void ItemReader::EndItem() {
  if (rest_.empty()) {
    at_end_ = true;
  } else if (rest_.starts_with("\r\n")) {
    rest_.remove_prefix(2);
  } else {
    rest_.remove_prefix(1);
  }
  if (rest_.empty()) at_end_ = true;
}

ItemReader::Item ItemReader::Next() {
  if (at_end_ || rest_.empty()) {
    failed_ = true;
    return {};
  }
  rest_.remove_prefix(std::min(rest_.find_first_not_of(" \t"), rest_.size()));
  Item item;
  if (rest_.starts_with('"')) {
    rest_.remove_prefix(1);
    const std::size_t end = rest_.find('"');
    item = {rest_.substr(0, end), true, end != std::string_view::npos};
    rest_.remove_prefix(end == std::string_view::npos ? rest_.size() : end + 1);
    // Between the closing quote and the separator there is nothing but blanks.
    const std::size_t separator = std::min(rest_.find_first_of(",\r\n"), rest_.size());
    if (!TrimBlanks(rest_.substr(0, separator)).empty()) item.valid = false;
    rest_.remove_prefix(separator);
  } else {
    const std::size_t separator = std::min(rest_.find_first_of(",\r\n"), rest_.size());
    item = {TrimBlanks(rest_.substr(0, separator)), false, true};
    if (item.text.empty()) item.valid = false;
    rest_.remove_prefix(separator);
  }
  EndItem();
  if (!item.valid) failed_ = true;
  return item;
}

template <class Int>
void ItemReader::ReadInteger(Int& field) {
  const Item item = Next();
  if (!item.valid) return;
  const auto number = item.quoted ? std::nullopt : AsNumber(item.text);
  const double whole = number ? RoundHalfEven(*number) : 0;
  if (!number || whole < std::numeric_limits<Int>::min() || whole > std::numeric_limits<Int>::max()) {
    failed_ = true;
    return;
  }
  field = static_cast<Int>(whole);
}

void ItemReader::Read(std::int16_t& field) {
  ReadInteger(field);
}
void ItemReader::Read(std::int32_t& field) {
  ReadInteger(field);
}

void ItemReader::Read(float& field) {
  const Item item = Next();
  if (!item.valid) return;
  const auto number = item.quoted ? std::nullopt : AsNumber(item.text);
  const float single = number ? static_cast<float>(*number) : 0;
  if (!number || !std::isfinite(single)) {
    failed_ = true;
    return;
  }
  field = single;
}

void ItemReader::Read(double& field) {
  const Item item = Next();
  if (!item.valid) return;
  if (const auto number = item.quoted ? std::nullopt : AsNumber(item.text)) {
    field = *number;
  } else {
    failed_ = true;
  }
}

void ItemReader::Read(bool& field) {
  const Item item = Next();
  if (!item.valid) return;
  if (const auto number = item.quoted ? std::nullopt : AsNumber(item.text)) {
    field = *number != 0;
  } else {
    failed_ = true;
  }
}

void ItemReader::Read(std::string& field) {
  const Item item = Next();
  if (item.valid) field = item.text;
}

void RecordWriter::Item(std::string_view text) {
  if (!first_) text_ += ',';
  first_ = false;
  text_ += text;
}

RecordWriter& RecordWriter::operator<<(std::int16_t value) {
  Item(std::to_string(value));
  return *this;
}
RecordWriter& RecordWriter::operator<<(std::int32_t value) {
  Item(std::to_string(value));
  return *this;
}
RecordWriter& RecordWriter::operator<<(float value) {
  Item(Written(value));
  return *this;
}
RecordWriter& RecordWriter::operator<<(double value) {
  Item(Written(value));
  return *this;
}
RecordWriter& RecordWriter::operator<<(bool value) {
  Item(value ? kTrue : kFalse);
  return *this;
}
RecordWriter& RecordWriter::operator<<(const std::string& value) {
  // There is no escape: a double quote inside would end the item and damage the file.
  std::string text = value;
  std::ranges::replace(text, '"', '\'');
  Item('"' + text + '"');
  return *this;
}

void RecordWriter::End() {
  text_ += "\r\n";
  first_ = true;
}

void RecordWriter::PrintLine(std::string_view text) {
  text_ += text;
  text_ += "\r\n";
}

}  // namespace tavlo
