// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/terminal/value_entry.h"

#include <gtest/gtest.h>

#include "hubsim/hub_bench.h"
#include "hubsim/wire_prompts.h"

namespace tavlo::hubsim {
namespace {

struct EntryCase {
  ValueEntry::Rules rules;
  std::string_view keys;
  std::string_view text;
  Fixed4 value;
};

TEST(ValueEntry, KeysMakeANumber) {
  const EntryCase cases[] = {
      {{true, true}, "", "", 0},
      {{true, true}, "12", "12", 120000},
      {{true, true}, "1.5", "1.5", 15000},
      {{true, true}, ".5", ".5", 5000},
      {{true, true}, "5.", "5.", 50000},
      {{true, true}, "1.2.3", "1.23", 12300},
      {{true, true}, "1.23456", "1.2345", 12345},
      {{true, true}, "1234567890", "123456789", 1234567890000},
      {{true, true}, "12-", "-12", -120000},
      {{true, true}, "-12+", "12", 120000},
      {{true, true}, "--1", "-1", -10000},
      {{true, false}, "-12", "12", 120000},
      {{false, false}, "1.5", "15", 150000},
      {{true, true}, "12\b3", "13", 130000},
      {{true, true}, "1\b\b\b", "", 0},
      {{true, true}, "1A\rz2", "12", 120000},
      {{true, true}, "007", "007", 70000},
  };
  for (const EntryCase& one : cases) {
    SCOPED_TRACE(one.keys);
    ValueEntry entry(one.rules);
    for (const char key : one.keys) entry.Key(key);
    EXPECT_EQ(entry.Text(), one.text);
    EXPECT_EQ(entry.Value(), one.value);
  }
}

TEST(ValueEntry, ASignOrAPointAloneIsNoNumber) {
  for (const std::string_view keys : {"", "-", ".", "-."}) {
    ValueEntry entry({true, true});
    for (const char key : keys) entry.Key(key);
    EXPECT_TRUE(entry.Empty()) << keys;
  }
}

TEST(ValueEntry, NumbersAreWrittenWithoutIdleZeros) {
  EXPECT_EQ(FormatFixed4(0), "0");
  EXPECT_EQ(FormatFixed4(500000), "50");
  EXPECT_EQ(FormatFixed4(5), "0.0005");
  EXPECT_EQ(FormatFixed4(-12500), "-1.25");
  EXPECT_EQ(FormatFixed4(1005000), "100.5");
}

/// A bench whose program asks for one value and then waits.
struct AskBench : HubBench {
  explicit AskBench(const Value& value, const std::vector<std::string>& first = {}) {
    std::vector<std::string> lines = first;
    lines.push_back(AskFor(value));
    lines.push_back(WaitTime(60000));
    Download(lines, TerminalSystem(), PoolOf("How much?"));
    RunWithTerminal(0.1);
  }
};

struct StoreCase {
  const char* what;
  Value value;
  std::string_view keys;
  int stored;
};

/// The axis has 20000 steps a revolution and a unit.
TEST(ValuePrompt, WhatIsEnteredIsStoredInTheHubsUnits) {
  const StoreCase cases[] = {
      {"steps", {.sub_type = 0}, "2.5\r", 50000},
      {"rounded to whole steps", {.sub_type = 0, .upper = 99}, "1.0001\r", 20002},
      {"a fortieth of rev/s", {.sub_type = 1, .variable = 25}, "3\r", 120},
      {"count", {.sub_type = 2, .variable = 35}, "12\r", 12},
      {"lower limit itself", {.sub_type = 2}, "1\r", 1},
      {"upper limit itself", {.sub_type = 2}, "50\r", 50},
      {"fraction of a limit", {.sub_type = 0, .lower = 0, .lower_fraction = 5000, .upper = 1}, ".5\r", 10000},
      {"corrected", {.sub_type = 2}, "49\b8\r", 48},
      {"a position has a sign", {.sub_type = 0, .variable = 15}, "-2\r", -40000},
      {"a distance has none", {.sub_type = 0, .variable = 0}, "-2\r", 40000},
      {"a zero is a digit", {.sub_type = 2}, "10\r", 10},
      {"without an axis steps", {.sub_type = 0, .axis = 9}, "7\r", 7},
      {"without an axis rev/s", {.sub_type = 1, .axis = 255}, "7\r", 280},
  };
  for (const StoreCase& one : cases) {
    SCOPED_TRACE(one.what);
    AskBench bench(one.value);
    ASSERT_EQ(bench.hub.Waits(), WaitsFor::Value);
    EXPECT_EQ(bench.hub.Display()[0], "How much?");
    bench.Send(one.keys);
    EXPECT_EQ(bench.hub.Variable(one.value.variable), one.stored);
    EXPECT_EQ(bench.hub.RunningLine(), 1);
  }
}

/// Units of the first axis, as its block holds them.
struct UnitsCase {
  const char* what;
  int steps_per_unit;
  int factor;
  Value value;
  std::string_view keys;
  int stored;
};

TEST(ValuePrompt, AnEntryIsMultipliedByWhatTheAxisBlockHolds) {
  const UnitsCase cases[] = {
      {"the factor as it stands, not the quotient it was rounded from", 1900, 2, {.sub_type = 1}, "20\r", 40},
      {"a factor of its own", 20000, 7, {.sub_type = 1}, "3\r", 21},
      {"a fraction, and a half to even", 20000, 1, {.sub_type = 1}, "2.5\r", 2},
      {"a half to even, upwards", 20000, 1, {.sub_type = 1}, "3.5\r", 4},
      {"just above a half", 20000, 1, {.sub_type = 1}, "2.5001\r", 3},
      {"a factor that was rounded to nothing", 100, 0, {.sub_type = 1}, "20\r", 0},
      {"no units: rev/s", 0, 0, {.sub_type = 1}, "20\r", 800},
      {"a distance", 1900, 2, {.sub_type = 0}, "20\r", 38000},
      {"a distance with a fraction", 1900, 2, {.sub_type = 0}, "1.5005\r", 2851},
      {"a distance on a half", 5000, 10, {.sub_type = 0, .lower = 0}, ".0003\r", 2},
      {"a distance on a half, to even", 5000, 10, {.sub_type = 0, .lower = 0}, ".0005\r", 2},
      {"no units: steps", 0, 0, {.sub_type = 0}, "20\r", 20},
      {"a position", 1900, 2, {.sub_type = 0, .variable = 15}, "20-\r", -38000},
      {"a count", 1900, 2, {.sub_type = 2}, "20\r", 20},
  };
  for (const UnitsCase& one : cases) {
    SCOPED_TRACE(one.what);
    HubBench bench;
    std::string system = TerminalSystem();
    system.replace(8, 3, Big3(one.steps_per_unit)).replace(24, 3, Big3(one.factor));
    bench.Download({AskFor(one.value), WaitTime(60000)}, system, PoolOf("How much?"));
    bench.RunWithTerminal(0.1);
    bench.Send(one.keys);
    EXPECT_EQ(bench.hub.RunningLine(), 1);
    EXPECT_EQ(bench.hub.Variable(one.value.variable), one.stored);
  }
}

TEST(ValuePrompt, AKeptSpeedIsShownByTheSameFactor) {
  const auto shown = [](int factor, std::string_view keys) {
    HubBench bench;
    std::string system = TerminalSystem();
    system.replace(24, 3, Big3(factor));
    const std::string ask = AskFor({.sub_type = 1, .variable = 25});
    bench.Download({ask, ask}, system, PoolOf("How fast?"));
    bench.RunWithTerminal(0.1);
    bench.Send(keys);
    bench.Go(0.1);
    EXPECT_EQ(bench.hub.RunningLine(), 1);
    return bench.hub.Display()[3];
  };
  EXPECT_EQ(shown(2, "20\r"), "20");
  EXPECT_EQ(shown(3, "1.3333\r"), "1.3333");
  EXPECT_EQ(shown(0, "20\r"), "") << "every speed is 0, which is none of the operator's";
}

TEST(ValuePrompt, AVariableThatDoesNotExistIsEnteredAndForgotten) {
  AskBench bench({.sub_type = 2, .variable = 200});
  bench.Send("7\r");
  EXPECT_EQ(bench.hub.RunningLine(), 1);
  EXPECT_EQ(bench.hub.Variable(200), 0);
}

struct RefuseCase {
  Value value;
  std::string_view keys;
  std::string_view message;
};

TEST(ValuePrompt, OutOfLimitsTellsTheLimitsAndStartsAnew) {
  const RefuseCase cases[] = {
      {{.sub_type = 2}, "51\r", "1 to 50"},
      {{.sub_type = 2}, "0\r", "1 to 50"},
      {{.sub_type = 0}, "50.0001\r", "1 to 50"},
      {{.sub_type = 0, .lower = 1, .lower_fraction = 2500}, "1.2499\r", "1.25 to 50"},
      {{.sub_type = 2}, "\r", "1 to 50"},
      {{.sub_type = 0, .variable = 15}, "-51\r", "1 to 50"},
      {{.sub_type = 2, .lower = 10, .upper = 5}, "7\r", "10 to 5"},
      {{.sub_type = 0, .lower = 16000000, .lower_fraction = 1, .upper = 16000000, .upper_fraction = 2},
       "1\r",
       "out of limits"},
  };
  for (const RefuseCase& one : cases) {
    SCOPED_TRACE(one.message);
    AskBench bench(one.value);
    bench.Send(one.keys);
    EXPECT_EQ(bench.hub.Waits(), WaitsFor::Value);
    EXPECT_EQ(bench.hub.Display()[3], one.message);
    bench.Send("2");
    EXPECT_EQ(bench.hub.Display()[3], "2");
    bench.Send("\b");
    EXPECT_EQ(bench.hub.Display()[3], "");
  }
}

TEST(ValuePrompt, TheEntryGoesOutKeyByKey) {
  AskBench bench({.sub_type = 2});
  bench.Send("1");
  EXPECT_EQ(bench.text, "\x1BY# 1");
  bench.text.clear();
  bench.Send("2\b");
  EXPECT_EQ(bench.text, "2\b");
  bench.text.clear();
  bench.Send("99\r");
  EXPECT_EQ(bench.text, "99\x1BK1 to 50");
}

TEST(ValuePrompt, EnterAloneKeepsAValueWithinTheLimits) {
  const std::string learn = SetPosition(0, 0, 30000);
  AskBench bench({.sub_type = 0}, {learn, LearnPosition(0, 0)});
  EXPECT_EQ(bench.hub.Display()[3], "1.5");
  bench.Send("\r");
  EXPECT_EQ(bench.hub.Variable(0), 30000);
  EXPECT_EQ(bench.hub.RunningLine(), 3);
}

TEST(ValuePrompt, TheFirstKeyWipesTheKeptValue) {
  for (const auto& [keys, row] : {std::pair{"7", "7"}, std::pair{"\b", ""}, std::pair{".", "."}}) {
    AskBench bench({.sub_type = 0}, {SetPosition(0, 0, 30000), LearnPosition(0, 0)});
    bench.Send(keys);
    EXPECT_EQ(bench.hub.Display()[3], row);
  }
}

TEST(ValuePrompt, AKeptValueOutOfTheLimitsIsNotOffered) {
  AskBench bench({.sub_type = 0}, {SetPosition(0, 0, 10000), LearnPosition(0, 0)});
  EXPECT_EQ(bench.hub.Display()[3], "");
  bench.Send("\r");
  EXPECT_EQ(bench.hub.Display()[3], "1 to 50");
}

TEST(ValuePrompt, AMoveTakesWhatWasEntered) {
  HubBench bench;
  bench.Download({AskFor({.sub_type = 0, .variable = 3}), AskFor({.sub_type = 1, .variable = 25}),
                  Bytes({0, 2 + 4, 25, 0}) + Big2(100) + Big2(100) + Bytes({3, 0, 0, 0})},
                 TerminalSystem(), PoolOf("x"));
  bench.RunWithTerminal(0.1);
  bench.Send("4\r");
  bench.Send("2\r");
  const auto messages = bench.Go(1.5);
  EXPECT_NEAR(bench.hub.Axis(0).speed_steps_s, 40000, 1);
  bench.Go(5);
  EXPECT_EQ(bench.hub.Axis(0).position_steps, 80000);
}

TEST(ValuePrompt, ARepeatTakesTheCountThatWasEntered) {
  HubBench bench;
  bench.Download(
      {AskFor({.sub_type = 2, .variable = 35}), Bytes({7, 8, 35, 0, 0}), SetOutput(0, 0, 1), EndRepeat(0, 1)},
      TerminalSystem(), PoolOf("x"));
  bench.RunWithTerminal(0.1);
  auto messages = bench.Send("3\r");
  const auto more = bench.Go(1);
  messages.insert(messages.end(), more.begin(), more.end());
  EXPECT_EQ(HubBench::LineEvents(messages), "-0 +1 -1 +2 -2 +3 -3 +2 -2 +3 -3 +2 -2 +3 -3");
}

}  // namespace
}  // namespace tavlo::hubsim
