// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "text/line_words.h"

#include <array>

#include "motion/units.h"
#include "platform/number_format.h"

namespace tavlo {
namespace {

using Four = std::array<std::string_view, 4>;
constexpr Four kLevels = {" high", " low", " rising edge", " falling edge"};
constexpr Four kActions = {"high", "low", "high pulse", "low pulse"};
constexpr int kHighPulse = 2;
// Input numbers that stand for the encoder's index in a feed and in a search for home.
constexpr int kIndexOfFeed = 8;
constexpr int kIndexOfHome = 6;
constexpr Four kIdle = {"0%", "25%", "50%", "100%"};

/// The entry of a table by a number that may be anything: nothing outside it.
std::string_view Pick(const Four& table, int index) {
  return index >= 0 && index < 4 ? table[index] : "";
}

bool InputsHaveLetters(const Program& program, int axis) {
  const int model = DriveModelOf(program, axis);
  return PlainModel(model) || ProgModel(model);
}

/// The inputs that a test of several inputs wants high and low, as lists of names.
struct InputLists {
  std::string highs;
  std::string lows;
};

InputLists ListInputs(const Program& program, const Instruction& line, std::string_view joint) {
  InputLists lists;
  const auto walk = [&](int mask, int state, int first, std::string_view between) {
    for (int bit = 0; bit < 8; ++bit) {
      if ((mask >> bit & 1) == 0) continue;
      std::string& list = (state >> bit & 1) != 0 ? lists.highs : lists.lows;
      if (!list.empty()) list += between;
      list += InputName(program, first + bit, line.Drive);
    }
  };
  walk(line.InMask, line.InState, 0, joint);
  walk(line.DrvMask, line.DrvState, 8, ",");
  return lists;
}

}  // namespace

std::string InputName(const Program& program, int n, int axis) {
  if (n >= kFirstDriveInput) return "X" + Joined(n - kFirstDriveInput);
  if (n >= 8) return "X" + Joined(n - 8);
  return (InputsHaveLetters(program, axis) ? "X" : "") + Joined(n + 1);
}

bool SeeksEncoderIndex(const Instruction& line) {
  const bool feed = line.Type == FS || line.Type == FSS;
  return (feed && line.IONum == kIndexOfFeed) || (line.Type == SH && line.IONum == kIndexOfHome);
}

std::string_view IdleText(int idle_pct) {
  return Pick(kIdle, idle_pct);
}

bool LineWords::UsesUnits() const {
  return tavlo::UsesUnits(program_, line_.Drive);
}

std::string LineWords::UnitName() const {
  return UsesUnits() ? program_.Axis.UnitName[line_.Drive] : "";
}

std::string LineWords::UserSpeed(double rev_s) const {
  return Format(RevToUser(program_, rev_s, line_.Drive), "#.0#");
}

std::string LineWords::UserSpeedUnit() const {
  return " " + UnitName().substr(0, 1) + "ps";
}

std::string LineWords::UserDist(double steps) const {
  return Format(ShownDist(program_, steps, line_.Drive), "#.0#") + " " + UnitName();
}

std::string LineWords::Level() const {
  return std::string(Pick(kLevels, line_.State));
}

std::string_view LineWords::Action() const {
  return Pick(kActions, line_.State);
}

bool LineWords::IsPulse() const {
  return line_.State >= kHighPulse && !Action().empty();
}

std::string LineWords::TimedAction() const {
  if (Action().empty()) return "";
  const std::string action = " " + std::string(Action());
  return IsPulse() ? action + " " + Joined(line_.Time) + " msec" : action;
}

bool LineWords::NamesXandY() const {
  return InputsHaveLetters(program_, line_.Drive);
}

std::string LineWords::OutName() const {
  const int n = line_.IONum;
  if (n >= kFirstDriveInput) return "Y" + Joined(n - kFirstDriveInput + 1);
  return (NamesXandY() ? "Y" : "") + Joined(n + 1);
}

std::string LineWords::SeveralInputs(std::string_view joint) const {
  const auto [highs, lows] = ListInputs(program_, line_, joint);
  std::string text;
  if (!highs.empty()) text += highs + " high";
  if (!highs.empty() && !lows.empty()) text += AndOr();
  if (!lows.empty()) text += lows + " low";
  return text;
}

std::string LineWords::Current() const {
  return Format(line_.Current, "#0.00") + " A (" + std::string(IdleText(line_.IdlePct)) + " idle)";
}

}  // namespace tavlo
