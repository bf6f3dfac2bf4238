// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include <gtest/gtest.h>

#include "hubsim/hub_bench.h"
#include "hubsim/wire_prompts.h"

namespace tavlo::hubsim {
namespace {

struct TextCase {
  const char* what;
  std::string pool;
  Rows rows;
};

TEST(Terminal, ATextIsShownTwentyCharactersARow) {
  const std::string twenty = "12345678901234567890";
  const TextCase cases[] = {
      {"short", "Hello", {"Hello", "", "", ""}},
      {"empty", "", {"", "", "", ""}},
      {"padded rows", "Hello               World", {"Hello", "World", "", ""}},
      {"a full row needs no step to the next", twenty + "next", {twenty, "next", "", ""}},
      {"all rows", twenty + twenty + twenty + twenty, {twenty, twenty, twenty, twenty}},
      {"the display's end", twenty + twenty + twenty + twenty + "x", {twenty, twenty, twenty, twenty}},
      {"an empty row between", "one" + std::string(37, ' ') + "three", {"one", "", "three", ""}},
      {"line feeds", "one\ntwo\r\nthree", {"one", "two", "three", ""}},
      {"what no display has", "a\x01\x80z", {"a??z", "", "", ""}},
  };
  for (const TextCase& one : cases) {
    SCOPED_TRACE(one.what);
    HubBench bench;
    bench.Download({Display(0), WaitTime(1000)}, TerminalSystem(), PoolOf(one.pool));
    bench.RunWithTerminal(0.1);
    EXPECT_EQ(bench.hub.Display(), one.rows);
    EXPECT_EQ(bench.hub.RunningLine(), 1) << "a text that asks nothing goes on at once";
  }
}

TEST(Terminal, ATextGoesOutInTheEscapeLanguage) {
  HubBench bench;
  bench.Download({Display(0), WaitTime(1000)}, TerminalSystem(), PoolOf("one                 two"));
  bench.Send("M");
  EXPECT_EQ(bench.text, "\x1B\x45\x1B\x45one\x1BY! two") << "cleared at the start and by the text";
}

TEST(Terminal, WithoutTheTerminalNothingIsShownAndNobodyIsAsked) {
  HubBench bench;
  bench.Download({Display(0), AskFor({}), WaitEnter(), YesNo(9), Menu(1), Bytes({82, 0, 0, 1, 0}) + "x\xFF",
                  WaitTime(1000)},
                 TerminalSystem(), PoolOf("Hello"));
  bench.Run(0.1);
  EXPECT_EQ(bench.hub.RunningLine(), 6);
  EXPECT_EQ(bench.text, "");
  EXPECT_EQ(bench.hub.Display(), Rows());
}

TEST(Terminal, AnOffsetBehindThePoolShowsNothingAndAnUnendedTextEndsWithIt) {
  struct Case {
    int offset;
    Rows rows;
  };
  std::string pool(kPoolSize + 100, 'a');
  pool.back() = '\0';
  for (const Case& one : {Case{1533, {"aaa"}}, Case{1535, {"a"}}, Case{1536, {}}, Case{65535, {}}}) {
    SCOPED_TRACE(one.offset);
    HubBench bench;
    bench.Download({Display(one.offset), WaitTime(1000)}, TerminalSystem(), pool);
    bench.RunWithTerminal(0.1);
    EXPECT_EQ(bench.hub.Display(), one.rows);
  }
}

TEST(Terminal, AnUnknownFunctionShowsItsText) {
  HubBench bench;
  bench.Download({Bytes({14, 77}) + std::string(15, '\0'), WaitTime(1000)}, TerminalSystem(),
                 PoolOf("Hello"));
  bench.RunWithTerminal(0.1);
  EXPECT_EQ(bench.hub.Display()[0], "Hello");
  EXPECT_EQ(bench.hub.RunningLine(), 1);
}

struct LeaveCase {
  const char* what;
  std::string_view bytes;
  HubState state;
  Rows rows;
};

TEST(Terminal, APromptThatIsLeftIsForgotten) {
  const LeaveCase cases[] = {
      {"stop leaves the text", "S", HubState::Idle, {"Hello"}},
      {"to the first line clears it", "0", HubState::Running, {}},
      {"another start clears it", "M", HubState::Running, {}},
      {"a download leaves it", "F", HubState::Downloading, {"Hello"}},
  };
  for (const LeaveCase& one : cases) {
    SCOPED_TRACE(one.what);
    HubBench bench;
    bench.Download({WaitTime(10), YesNo(0), WaitTime(1000)}, TerminalSystem(), PoolOf("Hello"));
    bench.RunWithTerminal(0.2);
    ASSERT_EQ(bench.hub.Waits(), WaitsFor::YesOrNo);
    bench.Ask(one.bytes);
    EXPECT_EQ(bench.hub.State(), one.state);
    EXPECT_EQ(bench.hub.Display(), one.rows);
    EXPECT_NE(bench.hub.Waits(), WaitsFor::YesOrNo);
  }
}

TEST(Terminal, ALimitBranchLeavesThePromptAndClearsItsText) {
  HubBench bench;
  bench.Download({YesNo(0), WaitTime(1), WaitTime(1000)}, SystemOf(1, {1, 0, 0, 1, 2}), PoolOf("Hello"));
  bench.RunWithTerminal(0.1);
  EXPECT_TRUE(bench.hub.HitLimit(0, bench.now));
  bench.Collect();
  EXPECT_EQ(bench.hub.RunningLine(), 2);
  EXPECT_EQ(bench.hub.Display(), Rows());
  EXPECT_EQ(bench.text, "\x1B\x45");
}

TEST(Terminal, APromptCanBeAnsweredWhileTheProgramIsPaused) {
  HubBench bench;
  bench.Download({YesNo(2), WaitTime(1), WaitTime(1000)}, TerminalSystem(), PoolOf("Hello"));
  bench.RunWithTerminal(0.1);
  bench.Send("P");
  EXPECT_EQ(bench.hub.Waits(), WaitsFor::YesOrNo);
  EXPECT_EQ(HubBench::LineEvents(bench.Send("+")), "-0");
  EXPECT_EQ(bench.hub.Waits(), WaitsFor::Resume);
  EXPECT_EQ(HubBench::LineEvents(bench.Send("r")), "+2");
}

TEST(Terminal, AHaltEndsThePromptAndItsKeys) {
  HubBench bench;
  bench.Download({YesNo(2)}, TerminalSystem(), PoolOf("Hello"));
  bench.RunWithTerminal(0.1);
  EXPECT_TRUE(bench.hub.PressStop(bench.now));
  bench.Collect();
  EXPECT_FALSE(bench.hub.TerminalRun());
  EXPECT_EQ(HubBench::LineEvents(bench.Send("+")), "");
}

TEST(Terminal, PowerLossBlanksTheDisplayWithoutAWord) {
  HubBench bench;
  bench.Download({YesNo(2)}, TerminalSystem(), PoolOf("Hello"));
  bench.RunWithTerminal(0.1);
  bench.hub.PowerUp(bench.now);
  EXPECT_EQ(bench.hub.TakeOutput(), Bytes({255, 38, 8, 0}));
  EXPECT_EQ(bench.hub.Display(), Rows());
}

TEST(Terminal, AKeyThatNothingWaitsForIsIgnored) {
  HubBench bench;
  bench.acknowledging = false;
  bench.Download({YesNo(2), WaitTime(100), WaitTime(1000)}, TerminalSystem(), PoolOf("Hello"));
  bench.RunWithTerminal(0.1);
  bench.Send("+");
  bench.acknowledging = true;
  bench.Send("I");
  EXPECT_EQ(bench.hub.Waits(), WaitsFor::YesOrNo) << "the key came before the prompt";
}

struct CountCase {
  int flags;
  std::vector<std::string> rows;
};

TEST(Terminal, ALoopShowsItsCountIfItIsToldTo) {
  const CountCase cases[] = {{0, {"", "", ""}},
                             {128, {"Count 3", "Count 2", "Count 1"}},
                             {128 + 64, {"Count 1", "Count 2", "Count 3"}}};
  for (const CountCase& one : cases) {
    SCOPED_TRACE(one.flags);
    HubBench bench;
    bench.Download({Repeat(0, 3, one.flags), WaitTime(10), EndRepeat(0, 0), WaitTime(1000)},
                   TerminalSystem());
    bench.RunWithTerminal(0.05);
    for (const std::string& row : one.rows) {
      EXPECT_EQ(bench.hub.Display()[3], row);
      bench.Go(0.1);
    }
    EXPECT_EQ(bench.hub.Display()[3], "") << "the loop is over";
  }
}

TEST(Terminal, ASilentRunIsSilentOnTheDisplayToo) {
  HubOptions options;
  options.failure = {Failure::SilentRun, 1};
  HubBench bench(options);
  bench.Download({Display(0)}, TerminalSystem(), PoolOf("Hello"));
  bench.Send("M");
  EXPECT_EQ(bench.text, "\x1B\x45") << "cleared in front of the first message";
}

}  // namespace
}  // namespace tavlo::hubsim
