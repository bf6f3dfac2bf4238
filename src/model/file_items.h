// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tavlo {

/// Reads the items of a program file one after the other. Commas and line ends both separate items.
///
/// A bad item never stops the reader: it sets Failed(), its field keeps its value, and the next call reads
/// the next item. An item is bad if it is empty, is malformed, does not fit its field, is quoted where a
/// number is wanted, or is missing because the text has ended. A flag (-1 or 0) is accepted as a number, and
/// a number as a flag.
class ItemReader {
 public:
  /// `text` must outlive the reader; any bytes are allowed.
  explicit ItemReader(std::string_view text) : rest_(text) {}

  void Read(std::int16_t& field);
  void Read(std::int32_t& field);
  void Read(float& field);
  void Read(double& field);
  void Read(bool& field);
  void Read(std::string& field);

  /// Reads one item for each field, in order.
  template <class... Fields>
  void ReadAll(Fields&... fields) {
    (Read(fields), ...);
  }

  void Fail() { failed_ = true; }
  [[nodiscard]] bool Failed() const { return failed_; }
  /// Whether only blanks, line ends and the end mark of old systems are left.
  [[nodiscard]] bool AtEnd() const {
    return rest_.find_first_not_of(" \t\r\n\x1A") == std::string_view::npos;
  }

 private:
  struct Item {
    std::string_view text;
    bool quoted = false;
    bool valid = false;
  };
  Item Next();
  void EndItem();
  template <class Int>
  void ReadInteger(Int& field);

  std::string_view rest_;
  bool at_end_ = false;
  bool failed_ = false;
};

/// Writes records: items separated by commas, each record terminated by CR LF.
class RecordWriter {
 public:
  RecordWriter& operator<<(std::int16_t value);
  RecordWriter& operator<<(std::int32_t value);
  RecordWriter& operator<<(float value);
  RecordWriter& operator<<(double value);
  RecordWriter& operator<<(bool value);
  RecordWriter& operator<<(const std::string& value);
  void End();
  /// Writes the text unchanged, as a line of its own.
  void PrintLine(std::string_view text);

  [[nodiscard]] const std::string& Text() const { return text_; }

 private:
  void Item(std::string_view text);

  std::string text_;
  bool first_ = true;
};

}  // namespace tavlo
