// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <nlohmann/json.hpp>

#include "cli/companion.h"

namespace tavlo::testing {

/// A program that is simulated, in a world that a script plays.
class Simulated : public Companion {
 protected:
  using Json = nlohmann::json;

  static Instruction OfType(Type type) {
    Instruction line;
    line.Type = type;
    return line;
  }
  /// One revolution at 1 rev/s with 10 rev/s/s both ways: 0.1 s, 0.9 s and 0.1 s.
  static Instruction Revolution(int axis = 0) {
    Instruction line = OfType(FL);
    line.Drive = static_cast<std::int16_t>(axis);
    line.Dist = 20000;
    line.Speed = 1;
    line.Accel = line.Decel = 10;
    return line;
  }
  static Instruction WaitTime(int hundredths) {
    Instruction line = OfType(WT);
    line.Time = hundredths;
    return line;
  }
  /// A line of a kind that names another one, by its number.
  static Instruction To(Type type, int number) {
    Instruction line = OfType(type);
    line.LineNum = static_cast<std::int16_t>(number - 1);
    return line;
  }
  static Instruction Times(int count) {
    Instruction line = OfType(RP);
    line.Count = count;
    return line;
  }
  /// A line of a kind that has an input or an output, by its number: 0 is high, 1 is low.
  static Instruction With(Type type, int number, int state = 1) {
    Instruction line = OfType(type);
    line.IONum = static_cast<std::int16_t>(number - 1);
    line.State = static_cast<std::int16_t>(state);
    return line;
  }
  static Instruction IfInput(int number, int target) {
    Instruction line = With(II, number);
    line.LineNum = static_cast<std::int16_t>(target - 1);
    return line;
  }
  static Instruction Prompt(MMISub kind, std::string text) {
    Instruction line = OfType(MMI);
    line.SubType = kind;
    line.Text = std::move(text);
    return line;
  }

  Outcome Simulate(const std::string& script = {}, std::vector<std::string> more = {}) {
    ScanLoops(program);
    more.insert(more.begin(), {"simulate", File()});
    if (!script.empty()) more.insert(more.end(), {"--inputs", folder.Write("inputs", script)});
    return Tavlo(more);
  }
  Json SimulateJson(const std::string& script = {}, std::vector<std::string> more = {}) {
    more.emplace_back("--json");
    const Outcome outcome = Simulate(script, more);
    EXPECT_EQ(std::count(outcome.out.begin(), outcome.out.end(), '\n'), 1) << "one document";
    return Json::parse(outcome.out);
  }
  /// When a line started and ended in its first run, by its number; -1 for an end that did not come.
  static std::pair<double, double> TimesOf(const Json& document, int number) {
    for (const Json& line : document["lines"]) {
      if (line["line"] == number) return {line["start"], line["end"].is_null() ? Json(-1) : line["end"]};
    }
    ADD_FAILURE() << "line " << number << " did not run";
    return {};
  }
};

}  // namespace tavlo::testing
