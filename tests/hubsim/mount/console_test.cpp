// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/mount/console.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "hubsim/hub_bench.h"
#include "hubsim/machine/faults.h"
#include "hubsim/wire_prompts.h"

namespace tavlo::hubsim {
namespace {

struct CommandCase {
  const char* line;
  const char* answer;
};

constexpr const char* kNoLimit =
    "Nothing happens: no program runs, nothing moves, or the axis has no drive that uses its limit "
    "switches.\n";

TEST(HubConsole, WrongCommandsGetAClearLine) {
  HubBench bench;
  Console console(bench.hub);
  const CommandCase cases[] = {
      {"", ""},
      {"  \t\r", ""},
      {"fly", "Unknown command \"fly\". Type help for the list.\n"},
      {"input 1 3", "Usage: input AXIS N high|low\n"},
      {"input 1 3 low now", "Usage: input AXIS N high|low\n"},
      {"input 0 3 low", "The axis is a number from 1 to 8.\n"},
      {"input 9 3 low", "The axis is a number from 1 to 8.\n"},
      {"input one 3 low", "The axis is a number from 1 to 8.\n"},
      {"input 1 9 low", "The input is a number from 1 to 8, or X0 to X7.\n"},
      {"input 1 0 low", "The input is a number from 1 to 8, or X0 to X7.\n"},
      {"input 1 X8 low", "The input is a number from 1 to 8, or X0 to X7.\n"},
      {"input 1 X low", "The input is a number from 1 to 8, or X0 to X7.\n"},
      {"input 1 3 off", "The level is high or low.\n"},
      {"limit 2", kNoLimit},
      {"stop", "Nothing happens: no program runs, and nothing moves.\n"},
      {"fault 1 1", "Nothing happens: there is no drive on this axis.\n"},
      {"replug", "Nothing happens: the cable is on.\n"},
      {"fault 1 16384", "The code is a number from 0 to 16383, or the name of a fault.\n"},
      {"fault 1 x", "The code is a number from 0 to 16383, or the name of a fault.\n"},
      {"fault 1 -1", "The code is a number from 0 to 16383, or the name of a fault.\n"},
      {"knob 9 1", "The axis is a number from 1 to 8.\n"},
      {"knob 1 x", "The counts are a number from -10000 to 10000.\n"},
      {"knob 1 -10001", "The counts are a number from -10000 to 10000.\n"},
      {"knob 1 5", "Nothing happens: no line follows the hand wheel of this axis.\n"},
      {"fail everything", "Unknown failure mode. tavlo-hubsim --list-fail-modes lists them.\n"},
      {"say xyz", "The bytes are pairs of hexadecimal digits.\n"},
  };
  for (const auto& one : cases) EXPECT_EQ(console.Execute(one.line, bench.now), one.answer) << one.line;
  EXPECT_EQ(bench.hub.TakeOutput(), "");
}

TEST(HubConsole, InputsAreCountedFromOneAndXInputsFromX0) {
  HubBench bench;
  Console console(bench.hub);
  EXPECT_EQ(console.Execute("input 1 3 low\r", bench.now), "ok\n");
  EXPECT_EQ(console.Execute("  input  8   X0 low", bench.now), "ok\n");
  EXPECT_EQ(console.Execute("input 8 x7 low", bench.now), "ok\n");
  EXPECT_EQ(bench.hub.Axis(0).inputs, 0xFB);
  EXPECT_EQ(bench.hub.Axis(7).x_inputs, 0x7E);
  EXPECT_EQ(console.Execute("input 1 3 high", bench.now), "ok\n");
  EXPECT_EQ(bench.hub.Axis(0).inputs, 0xFF);
}

TEST(HubConsole, TheMachineIsPlayed) {
  HubBench bench;
  Console console(bench.hub);
  bench.Download({WaitTime(1000)});
  bench.Run(1);
  EXPECT_EQ(console.Execute("limit 2", bench.now), "ok\n");
  EXPECT_EQ(bench.hub.TakeOutput(), Bytes({252, 1, 0, 0}));
  EXPECT_EQ(console.Execute("fault 3 130", bench.now), "ok\n");
  EXPECT_EQ(bench.hub.TakeOutput(), Bytes({211, 2, 1, 2}));
  EXPECT_EQ(console.Execute("greet", bench.now), "ok\n");
  EXPECT_EQ(bench.hub.TakeOutput(), Bytes({255, 38, 8, 0}));
  EXPECT_EQ(console.Execute("say FC 02 0000", bench.now), "ok\n");
  EXPECT_EQ(bench.hub.TakeOutput(), Bytes({252, 2, 0, 0}));
}

TEST(HubConsole, FailuresComeAndGo) {
  HubBench bench;
  Console console(bench.hub);
  EXPECT_EQ(console.Execute("fail silent-c", bench.now), "ok\n");
  EXPECT_EQ(bench.Ask("C"), "");
  EXPECT_EQ(console.Execute("fail none", bench.now), "ok\n");
  EXPECT_EQ(bench.Ask("C"), Bytes({38, 8}));
  EXPECT_EQ(console.Execute("unplug", bench.now), "ok\n");
  EXPECT_TRUE(bench.hub.Unplugged());
  EXPECT_EQ(console.Execute("replug", bench.now), "ok\n");
  EXPECT_FALSE(bench.hub.Unplugged());
}

TEST(HubConsole, WhatCannotHappenIsNotSaidToHaveHappened) {
  HubBench bench;
  Console console(bench.hub);
  const auto say = [&](const char* line) { return console.Execute(line, bench.now); };
  bench.Download({FeedLength({.distance = 100000, .wait = kProceed})});
  bench.Run(10);
  EXPECT_EQ(say("limit 1"), kNoLimit) << "the program has ended and its move too";
  EXPECT_EQ(say("stop"), "Nothing happens: no program runs, and nothing moves.\n");
  EXPECT_EQ(say("unplug"), "ok\n");
  EXPECT_EQ(say("unplug"), "Nothing happens: the cable is off.\n");
  EXPECT_EQ(say("say 41"), "Nothing happens: the cable is off.\n");
  EXPECT_EQ(say("replug"), "ok\n");
  EXPECT_EQ(say("say 41"), "ok\n");
  EXPECT_EQ(say("replug"), "Nothing happens: the cable is on.\n");
  EXPECT_EQ(bench.hub.TakeOutput(), "A") << "what was on its way is not lost";
}

TEST(HubConsole, EachOfTheFourteenFaultsHasABitAndAName) {
  ASSERT_EQ(kFaultNames.size(), 14U);
  for (int bit = 0; bit < 14; ++bit) {
    SCOPED_TRACE(bit);
    const int code = 1 << bit;
    const std::string told = Bytes({211, 4, code / 128, code % 128});
    HubBench bench;
    Console console(bench.hub);
    bench.Download({WaitTime(1000)});
    bench.Run(0.1);
    EXPECT_EQ(console.Execute("fault 5 " + std::to_string(code), bench.now), "ok\n");
    EXPECT_EQ(bench.hub.TakeOutput(), told);
    EXPECT_EQ(bench.hub.State(), HubState::Halted);
    EXPECT_EQ(console.Execute("fault 5 " + std::string(kFaultNames[bit]), bench.now), "ok\n");
    EXPECT_EQ(bench.hub.TakeOutput(), told);
  }
}

TEST(HubConsole, StateTellsOfTheTerminal) {
  HubBench bench;
  Console console(bench.hub);
  bench.Download({SetPosition(0, 0, 500), LearnPosition(0, 3), YesNo(9)}, TerminalSystem(), PoolOf("Sure?"));
  bench.RunWithTerminal(0.1);
  const auto state = nlohmann::json::parse(console.Execute("state", bench.now));
  EXPECT_EQ(state["display"], nlohmann::json({"Sure?", "", "", ""}));
  EXPECT_EQ(state["variables"], nlohmann::json({{"3", 500}}));
  EXPECT_EQ(state["waitsFor"], "yes or no");
  EXPECT_EQ(state["terminalRun"], true);
}

TEST(HubConsole, StateIsOneLineOfJson) {
  HubBench bench;
  Console console(bench.hub);
  bench.Download({FeedLength({.axis = 1})});
  bench.Run(0.1);
  const std::string text = console.Execute("state", bench.now);
  EXPECT_EQ(text.find('\n'), text.size() - 1);
  const auto state = nlohmann::json::parse(text);
  EXPECT_EQ(state["state"], "running");
  EXPECT_EQ(state["line"], 1);
  EXPECT_EQ(state["model"], 8);
  EXPECT_DOUBLE_EQ(state["firmware"], 1.38);
  ASSERT_EQ(state["axes"].size(), 8U);
  EXPECT_EQ(state["axes"][1]["axis"], 2);
  EXPECT_EQ(state["axes"][1]["moving"], true);
  bench.Send("S");
  EXPECT_TRUE(nlohmann::json::parse(console.Execute("state", bench.now))["line"].is_null());
}

TEST(HubConsole, HelpNamesEveryCommandAndQuitQuits) {
  HubBench bench;
  Console console(bench.hub);
  const std::string help = console.Execute("help", bench.now);
  for (const char* name : {"input", "limit", "fault", "stop", "knob", "greet", "unplug", "replug", "fail",
                           "say", "state", "help", "quit"}) {
    EXPECT_NE(help.find(name), std::string::npos) << name;
  }
  EXPECT_FALSE(console.Quitting());
  EXPECT_EQ(console.Execute("quit", bench.now), "ok\n");
  EXPECT_TRUE(console.Quitting());
}

}  // namespace
}  // namespace tavlo::hubsim
