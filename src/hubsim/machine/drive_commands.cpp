// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/machine/drive_commands.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

namespace tavlo::hubsim {
namespace {

constexpr std::string_view kUnknown = "?";
/// The bell of a terminal: the command is known, its number is not one.
constexpr std::string_view kRefused = "\a";
constexpr std::size_t kNameLength = 2;
constexpr std::size_t kMostDigits = 9;

struct Drive {
  int axis;
  const DriveBay& bay;
  const Machine& machine;
  double now;
};

std::string Revision(const Drive& drive) {
  const int hundredths = drive.bay.Revision(drive.axis);
  const std::string digits = std::to_string(100 + hundredths % 100);
  return std::to_string(hundredths / 100) + '.' + digits.substr(1);
}

std::string Position(const Drive& drive) {
  return std::to_string(std::llround(drive.machine.At(drive.axis).Position(drive.now)));
}

std::string Status(const Drive& drive) {
  if (!drive.machine.MotorOn(drive.axis)) return "off";
  return drive.machine.At(drive.axis).Idle() ? "ready" : "moving";
}

std::string Levels(int bits, int count) {
  std::string levels;
  for (int i = 0; i < count; ++i) levels += (bits >> i & 1) != 0 ? '1' : '0';
  return levels;
}

std::string Inputs(const Drive& drive) {
  return Levels(drive.machine.Io().MainInputs(drive.axis), kFirstXInput);
}

std::string Outputs(const Drive& drive) {
  return Levels(drive.machine.Io().Outputs(drive.axis), kFirstYOutput);
}

struct QuestionRow {
  std::string_view name;
  std::string (*answer)(const Drive&);
};
constexpr std::array<QuestionRow, 5> kQuestions{
    {{"RV", Revision}, {"RP", Position}, {"RS", Status}, {"RI", Inputs}, {"RO", Outputs}}};

/// The settings that a download writes; they are taken without a word.
struct SettingRow {
  std::string_view name;
  bool takes_number;
};
constexpr std::array<SettingRow, 8> kSettings{{{"PR", true},
                                               {"TD", true},
                                               {"AO", true},
                                               {"BO", true},
                                               {"MO", true},
                                               {"AI", true},
                                               {"SI", true},
                                               {"SA", false}}};

bool IsNumber(std::string_view text) {
  return !text.empty() && text.size() <= kMostDigits &&
         text.find_first_not_of("0123456789") == std::string_view::npos;
}

std::string Ask(std::string_view command, const Drive& drive) {
  const std::string_view name = command.substr(0, kNameLength);
  const std::string_view number = command.substr(name.size());
  if (const auto* row = std::ranges::find(kQuestions, name, &QuestionRow::name); row != kQuestions.end()) {
    return number.empty() ? row->answer(drive) : std::string(kRefused);
  }
  if (const auto* row = std::ranges::find(kSettings, name, &SettingRow::name); row != kSettings.end()) {
    const bool fits = row->takes_number ? IsNumber(number) : number.empty();
    return fits ? std::string() : std::string(kRefused);
  }
  return std::string(kUnknown);
}

std::string_view Trimmed(std::string_view line) {
  return line.substr(0, line.find_last_not_of(' ') + 1);
}

}  // namespace

std::string AnswerDriveCommand(std::string_view line, const DriveBay& bay, const Machine& machine,
                               double now) {
  line = Trimmed(line);
  if (line.empty()) return {};
  const int axis = line.front() - '1';
  if (axis < 0 || axis >= bay.AxisCount() || bay.PluggedModel(axis) == 0) return {};
  std::string answer = Ask(line.substr(1), Drive{axis, bay, machine, now});
  if (!answer.empty()) answer += '\r';
  return answer;
}

}  // namespace tavlo::hubsim
