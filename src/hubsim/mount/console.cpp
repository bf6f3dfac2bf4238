// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/mount/console.h"

#include <algorithm>
#include <optional>

#include "hubsim/option_text.h"

namespace tavlo::hubsim {

struct Console::Row {
  std::string_view name;
  std::size_t least;  ///< words behind the name
  std::size_t most;
  std::string (Console::*run)(const Words&, double);
  std::string_view usage;
  std::string_view meaning;
};

namespace {

constexpr std::size_t kAnyNumber = 10000;

const std::string kOk = "ok\n";
const std::string kNoAxis = "The axis is a number from 1 to 8.\n";
constexpr std::string_view kNoLimit =
    "Nothing happens: no program runs, nothing moves, or the axis has no drive that uses its limit switches.";

std::string Line(std::string_view text) {
  return std::string(text) + '\n';
}

}  // namespace

const std::vector<Console::Row>& Console::Rows() {
  static const std::vector<Row> rows{
      {"input", 3, 3, &Console::Input, "input AXIS N high|low", "sets input N (1..8, X0..X7) of an axis"},
      {"limit", 1, 1, &Console::Limit, "limit AXIS", "the axis runs onto a limit switch"},
      {"fault", 2, 2, &Console::Fault, "fault AXIS CODE",
       "its drive reports a fault, CODE 0..16383, a bit each, or a name"},
      {"knob", 2, 2, &Console::Knob, "knob AXIS COUNTS",
       "the axis's hand wheel is turned, counter-clockwise below 0"},
      {"stop", 0, 0, &Console::Stop, "stop", "the stop button on a drive is pressed"},
      {"greet", 0, 0, &Console::Greet, "greet", "the hub's power goes off and on"},
      {"unplug", 0, 0, &Console::Unplug, "unplug", "the cable comes off"},
      {"replug", 0, 0, &Console::Replug, "replug", "the cable is put back"},
      {"fail", 1, 1, &Console::SetFailure, "fail MODE[:N]",
       "changes what goes wrong; \"fail none\" mends all"},
      {"say", 1, kAnyNumber, &Console::Say, "say HEX", "sends bytes to the PC"},
      {"state", 0, 0, &Console::State, "state", "prints the hub as a line of JSON"},
      {"help", 0, 0, &Console::Help, "help", "prints this"},
      {"quit", 0, 0, &Console::Quit, "quit", "ends the hub"},
  };
  return rows;
}

std::string Console::Execute(std::string_view line, double now) {
  const Words words = SplitWords(line);
  if (words.empty()) return {};
  const auto row = std::ranges::find(Rows(), words[0], &Row::name);
  if (row == Rows().end()) {
    return Line("Unknown command \"" + std::string(words[0]) + "\". Type help for the list.");
  }
  const std::size_t count = words.size() - 1;
  if (count < row->least || count > row->most) return Line("Usage: " + std::string(row->usage));
  return (this->*row->run)(words, now);
}

std::string Console::Input(const Words& words, double now) {
  const auto axis = ParseAxis(words[1]);
  if (!axis) return kNoAxis;
  const auto input = ParseInput(words[2]);
  if (!input) return Line("The input is a number from 1 to 8, or X0 to X7.");
  if (words[3] != "high" && words[3] != "low") return Line("The level is high or low.");
  return hub_.SetInput(*axis, *input, words[3] == "high", now) ? kOk : kNoAxis;
}

std::string Console::Limit(const Words& words, double now) {
  const auto axis = ParseAxis(words[1]);
  if (!axis) return kNoAxis;
  if (hub_.HitLimit(*axis, now)) return kOk;
  return Line(kNoLimit);
}

std::string Console::Fault(const Words& words, double now) {
  const auto axis = ParseAxis(words[1]);
  if (!axis) return kNoAxis;
  const auto code = ParseFault(words[2]);
  if (!code) {
    return Line("The code is a number from 0 to 16383, or the name of a fault.");
  }
  return hub_.Fail(*axis, *code, now) ? kOk : Line("Nothing happens: there is no drive on this axis.");
}

std::string Console::Knob(const Words& words, double now) {
  const auto axis = ParseAxis(words[1]);
  if (!axis) return kNoAxis;
  const auto counts = ParseCounts(words[2]);
  if (!counts) return Line("The counts are a number from -10000 to 10000.");
  if (hub_.TurnKnob(*axis, *counts, now)) return kOk;
  return Line("Nothing happens: no line follows the hand wheel of this axis.");
}

std::string Console::Stop(const Words& /*words*/, double now) {
  return hub_.PressStop(now) ? kOk : Line("Nothing happens: no program runs, and nothing moves.");
}

std::string Console::Greet(const Words& /*words*/, double now) {
  hub_.PowerUp(now);
  return kOk;
}

std::string Console::Unplug(const Words& /*words*/, double /*now*/) {
  return hub_.Unplug() ? kOk : Line("Nothing happens: the cable is off.");
}

std::string Console::Replug(const Words& /*words*/, double /*now*/) {
  return hub_.Replug() ? kOk : Line("Nothing happens: the cable is on.");
}

std::string Console::Say(const Words& words, double /*now*/) {
  std::string text;
  for (std::size_t i = 1; i < words.size(); ++i) text += words[i];
  const auto bytes = ParseHex(text);
  if (!bytes) return Line("The bytes are pairs of hexadecimal digits.");
  return hub_.Say(*bytes) ? kOk : Line("Nothing happens: the cable is off.");
}

std::string Console::SetFailure(const Words& words, double /*now*/) {
  const auto plan = ParseFailure(words[1]);
  if (!plan) return Line("Unknown failure mode. tavlo-hubsim --list-fail-modes lists them.");
  hub_.SetFailure(*plan);
  return kOk;
}

std::string Console::State(const Words& /*words*/, double now) {
  hub_.Advance(now);
  return Line(DescribeState(hub_));
}

std::string Console::Help(const Words& /*words*/, double /*now*/) {
  constexpr std::size_t kColumn = 24;
  std::string text;
  for (const Row& row : Rows()) {
    std::string usage(row.usage);
    usage.resize(std::max(kColumn, usage.size() + 1), ' ');
    text += usage + Line(row.meaning);
  }
  return text;
}

std::string Console::Quit(const Words& /*words*/, double /*now*/) {
  quitting_ = true;
  return kOk;
}

}  // namespace tavlo::hubsim
