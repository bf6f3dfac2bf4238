// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "model/kept_text.h"

#include <array>
#include <charconv>
#include <concepts>
#include <type_traits>

#include "model/record_fields.h"
#include "platform/encoding.h"

namespace tavlo {
namespace {

// A row is a name, a blank and a value; the values of an array are separated by commas. Texts are hex digits.
// Only what differs from a new record is written.
constexpr std::string_view kProgramHead = "tavlo-kept-program 1\n";
constexpr std::string_view kLinesHead = "tavlo-kept-lines 1\n";
constexpr std::string_view kLine = "line";
constexpr std::string_view kEnd = "end ";
/// Longest number: a double in all its digits.
constexpr std::size_t kLongestNumber = 32;

template <class T>
concept Number = std::integral<T> || std::floating_point<T>;

template <Number T>
std::string TextOf(T value) {
  std::array<char, kLongestNumber> digits{};
  if constexpr (std::same_as<T, bool>) {
    return value ? "1" : "0";
  } else {
    const auto end = std::to_chars(digits.begin(), digits.end(), value);
    return {digits.begin(), end.ptr};
  }
}
std::string TextOf(const std::string& value) {
  return HexOf(value);
}
template <class T, std::size_t kCount>
std::string TextOf(const std::array<T, kCount>& values) {
  std::string text;
  for (std::size_t i = 0; i < kCount; ++i) text += (i == 0 ? "" : ",") + TextOf(values[i]);
  return text;
}

template <Number T>
bool Read(std::string_view text, T& value) {
  if constexpr (std::same_as<T, bool>) {
    value = text == "1";
    return value || text == "0";
  } else {
    const auto end = std::from_chars(text.data(), text.data() + text.size(), value);
    return end.ec == std::errc() && end.ptr == text.data() + text.size();
  }
}
bool Read(std::string_view text, std::string& value) {
  value.clear();
  if (text.size() % 2 != 0) return false;
  for (; !text.empty(); text.remove_prefix(2)) {
    unsigned char byte = 0;
    const auto end = std::from_chars(text.data(), text.data() + 2, byte, 16);
    if (end.ec != std::errc() || end.ptr != text.data() + 2) return false;
    value += static_cast<char>(byte);
  }
  return true;
}
template <class T, std::size_t kCount>
bool Read(std::string_view text, std::array<T, kCount>& values) {
  for (std::size_t i = 0; i < kCount; ++i) {
    const std::size_t comma = text.find(',');
    if ((comma == std::string_view::npos) != (i + 1 == kCount) || !Read(text.substr(0, comma), values[i])) {
      return false;
    }
    text.remove_prefix(comma == std::string_view::npos ? text.size() : comma + 1);
  }
  return true;
}

template <class T>
void AddRow(std::string& text, std::string_view name, const T& value) {
  text += std::string(name) + " " + TextOf(value) + "\n";
}

/// The fields that differ from those of a new record.
template <class Record, class Fields>
void AddFields(std::string& text, const Record& record, const Record& fresh, const Fields& fields) {
  const auto add = [&](const auto& field) {
    if (record.*field.field != fresh.*field.field) AddRow(text, field.name, record.*field.field);
  };
  std::apply([&](const auto&... field) { (add(field), ...); }, fields);
}

/// The rows of a text, one after the other.
class Rows {
 public:
  explicit Rows(std::string_view text) : rest_(text) {}

  [[nodiscard]] bool AtEnd() const { return rest_.empty(); }
  [[nodiscard]] std::string_view Name() const { return Row().substr(0, Row().find(' ')); }
  /// Reads the row into the value if it has this name; then the next row's turn comes.
  template <class T>
  bool Take(std::string_view name, T& value) {
    if (AtEnd() || Name() != name || Row().size() <= name.size()) return false;
    if (!tavlo::Read(Row().substr(name.size() + 1), value)) return false;
    rest_.remove_prefix(Row().size() + 1);
    return true;
  }
  /// Reads the row into the field of its name.
  template <class Record, class Fields>
  bool TakeField(Record& record, const Fields& fields) {
    return std::apply([&](const auto&... field) { return (Take(field.name, record.*field.field) || ...); },
                      fields);
  }

 private:
  [[nodiscard]] std::string_view Row() const { return rest_.substr(0, rest_.find('\n')); }

  std::string_view rest_;
};

std::string SumOf(std::string_view text) {
  constexpr std::uint32_t kStart = 2166136261;
  constexpr std::uint32_t kFactor = 16777619;
  std::uint32_t sum = kStart;
  for (const char c : text) sum = (sum ^ static_cast<unsigned char>(c)) * kFactor;
  return TextOf(sum);
}

/// Returns what stands between head and end; nothing if either is not as it was written.
std::optional<std::string_view> Whole(std::string_view text, std::string_view head) {
  const std::size_t end = text.rfind(kEnd);
  if (text.size() > kLargestKeptText || !text.starts_with(head) || end == std::string_view::npos) {
    return std::nullopt;
  }
  const std::string_view body = text.substr(0, end);
  if (text.substr(end) != std::string(kEnd) + SumOf(body) + "\n" || !body.ends_with('\n')) {
    return std::nullopt;
  }
  return body.substr(head.size());
}

/// The rows of one line; its number has been read.
bool TakeLine(Rows& rows, Instruction& record) {
  record = Instruction();
  while (!rows.AtEnd() && rows.Name() != kLine) {
    if (!rows.TakeField(record, kInstructionFields)) return false;
  }
  return true;
}

}  // namespace

std::string WithSum(std::string text) {
  text += std::string(kEnd) + SumOf(text) + "\n";
  return text;
}

std::string KeptTextOf(const KeptProgram& kept) {
  std::string text(kProgramHead);
  AddRow(text, "file", kept.file_name);
  AddRow(text, "time", kept.time);
  AddRow(text, "unsaved", kept.unsaved);
  AddRow(text, "running", kept.running);
  AddFields(text, kept.program, Program(), kProgramFields);
  AddFields(text, kept.program.Axis, AxisConfig(), kAxisFields);
  for (int line = 0; line <= kLines; ++line) {
    if (kept.program.Prog[line] == Instruction()) continue;
    AddRow(text, kLine, line);
    AddFields(text, kept.program.Prog[line], Instruction(), kInstructionFields);
  }
  return WithSum(std::move(text));
}

std::optional<KeptProgram> ReadKeptProgram(std::string_view text) {
  const auto body = Whole(text, kProgramHead);
  if (!body) return std::nullopt;
  Rows rows(*body);
  KeptProgram kept;
  if (!rows.Take("file", kept.file_name) || !rows.Take("time", kept.time) ||
      !rows.Take("unsaved", kept.unsaved) || !rows.Take("running", kept.running)) {
    return std::nullopt;
  }
  while (!rows.AtEnd() && rows.Name() != kLine) {
    if (!rows.TakeField(kept.program, kProgramFields) && !rows.TakeField(kept.program.Axis, kAxisFields)) {
      return std::nullopt;
    }
  }
  while (!rows.AtEnd()) {
    int line = 0;
    if (!rows.Take(kLine, line) || line < 0 || line > kLines || !TakeLine(rows, kept.program.Prog[line])) {
      return std::nullopt;
    }
  }
  return kept;
}

std::string KeptTextOf(const KeptLines& kept) {
  std::string text(kLinesHead);
  AddRow(text, "first", kept.first);
  AddRow(text, "cut", kept.cut);
  for (const Instruction& record : kept.lines) {
    AddRow(text, kLine, 0);
    AddFields(text, record, Instruction(), kInstructionFields);
  }
  return WithSum(std::move(text));
}

std::optional<KeptLines> ReadKeptLines(std::string_view text) {
  const auto body = Whole(text, kLinesHead);
  if (!body) return std::nullopt;
  Rows rows(*body);
  KeptLines kept;
  if (!rows.Take("first", kept.first) || kept.first < 0 || kept.first >= kLines ||
      !rows.Take("cut", kept.cut))
    return std::nullopt;
  while (!rows.AtEnd()) {
    int unused = 0;
    Instruction record;
    if (kept.lines.size() == kLines || !rows.Take(kLine, unused) || !TakeLine(rows, record)) {
      return std::nullopt;
    }
    kept.lines.push_back(std::move(record));
  }
  if (kept.lines.empty()) return std::nullopt;
  return kept;
}

}  // namespace tavlo
