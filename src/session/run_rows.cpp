// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "session/run_rows.h"

#include <algorithm>

#include "platform/number_format.h"

namespace tavlo {
namespace {

/// What an event is called, and whether its text is a value.
struct KindRow {
  RunEventKind kind;
  std::string_view name;
  bool text_is_value = false;
};

constexpr std::array kRunKinds = {
    KindRow{RunEventKind::LineStarted, "line started"},
    KindRow{RunEventKind::LineGoesOn, "line goes on"},
    KindRow{RunEventKind::LineFinished, "line finished"},
    KindRow{RunEventKind::ProgramCounter, "program counter", true},
    KindRow{RunEventKind::StepDone, "step done"},
    KindRow{RunEventKind::State, "state", true},
    KindRow{RunEventKind::Input, "input"},
    KindRow{RunEventKind::Output, "output"},
    KindRow{RunEventKind::Display, "display", true},
    KindRow{RunEventKind::Key, "key"},
    KindRow{RunEventKind::Control, "control"},
    KindRow{RunEventKind::LimitHit, "limit"},
    KindRow{RunEventKind::StopButton, "stop button"},
    KindRow{RunEventKind::StackOverflow, "stack overflow"},
    KindRow{RunEventKind::StackUnderflow, "stack underflow"},
    KindRow{RunEventKind::DriveDisabled, "drive disabled"},
    KindRow{RunEventKind::DriveFault, "drive fault"},
    KindRow{RunEventKind::DriveLost, "drive lost"},
    KindRow{RunEventKind::WrongDrive, "wrong drive"},
    KindRow{RunEventKind::OldFirmware, "old firmware", true},
    KindRow{RunEventKind::HubSwitchedOn, "hub switched on", true},
    KindRow{RunEventKind::OtherMessage, "other message", true},
    KindRow{RunEventKind::End, "end"},
};
constexpr bool InOrder() {
  for (std::size_t i = 0; i < kRunKinds.size(); ++i) {
    if (static_cast<std::size_t>(kRunKinds[i].kind) != i) return false;
  }
  return true;
}
static_assert(InOrder() && kRunKinds.size() == static_cast<std::size_t>(RunEventKind::End) + 1);

constexpr std::string_view kLineEnd = "\r\n";
/// Spreadsheets take what begins so for a formula. The apostrophe stands for itself.
constexpr std::string_view kFormulaMarks = "=+-@\t'";
constexpr int kMsPerSecond = 1000;

std::string Seconds(std::int64_t ms) {
  const std::string rest = std::to_string(kMsPerSecond + ms % kMsPerSecond);
  return std::to_string(ms / kMsPerSecond) + '.' + rest.substr(1);
}

bool NamesLine(RunEventKind kind) {
  return kind == RunEventKind::LineStarted || kind == RunEventKind::LineGoesOn ||
         kind == RunEventKind::LineFinished;
}

std::string_view StateOf(Led led) {
  if (led == Led::Unknown) return "unknown";
  return led == Led::Green || led == Led::Red ? "on" : "off";
}

std::string NameOf(const RunEvent& light) {
  const bool limit = light.led == Led::Red || light.led == Led::RedOff;
  return LedCaption(light.row, light.bit) + (limit ? " (limit)" : "");
}

std::string WallText(std::time_t when) {
  std::array<char, 32> text{};
  const std::tm* const local = std::localtime(&when);
  if (local == nullptr) return {};
  return {text.data(), std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M:%S", local)};
}

std::string Field(std::string text) {
  if (!text.empty() && kFormulaMarks.find(text.front()) != std::string_view::npos) text.insert(0, 1, '\'');
  if (text.find_first_of("\",\r\n") == std::string::npos) return text;
  std::string quoted = "\"";
  for (const char c : text) {
    if (c == '"') quoted += c;
    quoted += c;
  }
  return quoted + '"';
}

std::string Unmarked(std::string field) {
  const bool marked =
      field.size() >= 2 && field[0] == '\'' && kFormulaMarks.find(field[1]) != std::string::npos;
  return marked ? field.substr(1) : field;
}

/// Reads fields up to the end of a line. Returns nothing if that does not come, and takes all there is.
std::optional<std::vector<std::string>> TakeLine(std::string_view& csv) {
  std::vector<std::string> fields(1);
  bool quoted = false;
  while (!csv.empty()) {
    const char c = csv.front();
    csv.remove_prefix(1);
    if (quoted && c == '"' && csv.starts_with('"')) {
      csv.remove_prefix(1);
      fields.back() += c;
    } else if (c == '"') {
      quoted = !quoted;
    } else if (!quoted && c == ',') {
      if (fields.size() < kRunColumns.size()) fields.emplace_back();
    } else if (!quoted && c == '\n') {
      return fields;
    } else if (quoted || c != '\r') {
      fields.back() += c;
    }
  }
  return std::nullopt;
}

}  // namespace

RunRow RowOf(const RunLog& log, std::uint64_t number) {
  const RunEvent& event = log.At(number);
  const KindRow& kind = kRunKinds[static_cast<std::size_t>(event.kind)];
  RunRow row;
  row[RunColumn::Time] = Seconds(event.ms);
  row[RunColumn::Event] = kind.name;
  if (event.line >= 0) row[RunColumn::Line] = Joined(event.line + 1);
  if (event.axis >= 0) row[RunColumn::Axis] = log.AxisName(event.axis);
  row[kind.text_is_value ? RunColumn::Value : RunColumn::What] = event.text;
  if (NamesLine(event.kind)) row[RunColumn::What] = log.LineText(event.line);
  if (event.kind == RunEventKind::Input || event.kind == RunEventKind::Output) {
    row[RunColumn::What] = NameOf(event);
    row[RunColumn::Value] = StateOf(event.led);
  }
  if (event.kind == RunEventKind::DriveFault) row[RunColumn::Value] = Joined(event.code);
  return row;
}

std::vector<RunRow> HeadOf(const RunLog& log) {
  std::vector<RunRow> head;
  head.push_back({{Seconds(0), "begin", "", "", log.ProgramName(), WallText(log.Began())}});
  if (log.First() > 0) {
    head.push_back(
        {{Seconds(log.LostUntil()), "missing", "", "", "earlier events", std::to_string(log.First())}});
  }
  return head;
}

std::string CsvOf(const RunRow& row) {
  std::string line;
  for (const std::string& cell : row.cells) {
    if (&cell != &row.cells.front()) line += ',';
    line += Field(cell);
  }
  return line.append(kLineEnd);
}

std::string CsvHeader() {
  RunRow header;
  std::ranges::transform(kRunColumns, header.cells.begin(),
                         [](std::string_view name) { return std::string(name); });
  return CsvOf(header);
}

std::string CsvOf(const RunLog& log) {
  std::string csv = CsvHeader();
  for (const RunRow& row : HeadOf(log)) csv += CsvOf(row);
  for (std::uint64_t number = log.First(); number < log.Last(); ++number) csv += CsvOf(RowOf(log, number));
  return csv;
}

std::optional<std::vector<RunRow>> ReadRunRows(std::string_view csv) {
  const std::string header = CsvHeader();
  if (!csv.starts_with(header)) return std::nullopt;
  csv.remove_prefix(header.size());
  std::vector<RunRow> rows;
  while (auto fields = TakeLine(csv)) {
    RunRow& row = rows.emplace_back();
    std::ranges::transform(*fields, row.cells.begin(), Unmarked);
  }
  return rows;
}

}  // namespace tavlo
