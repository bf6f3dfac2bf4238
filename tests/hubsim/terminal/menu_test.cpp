// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include <gtest/gtest.h>

#include "hubsim/hub_bench.h"
#include "hubsim/wire_prompts.h"

namespace tavlo::hubsim {
namespace {

constexpr int kStays = 0;

struct KeyCase {
  std::string_view keys;
  int line;
};

void ExpectLine(const std::string& prompt, const KeyCase& one) {
  SCOPED_TRACE(one.keys);
  HubBench bench;
  std::vector<std::string> lines(100, WaitTime(60000));
  lines[0] = prompt;
  bench.Download(lines, TerminalSystem(), PoolOf("Which?"));
  bench.RunWithTerminal(0.1);
  EXPECT_EQ(bench.hub.Display()[0], "Which?");
  bench.Send(one.keys);
  EXPECT_EQ(bench.hub.RunningLine(), one.line);
}

TEST(Menu, TheNumberKeysInUseBranch) {
  for (const KeyCase& one :
       {KeyCase{"1", 10}, KeyCase{"3", 30}, KeyCase{"8", 80}, KeyCase{"2", kStays}, KeyCase{"9", kStays},
        KeyCase{"0", kStays}, KeyCase{"\r+-.\bABCD", kStays}, KeyCase{"293", 30}, KeyCase{"13", 10}}) {
    ExpectLine(Menu(0b10000101), one);
  }
}

TEST(Menu, WithoutAKeyInUseEnterGoesOn) {
  for (const KeyCase& one : {KeyCase{"12345678", kStays}, KeyCase{"\r", 1}}) ExpectLine(Menu(0), one);
}

TEST(Menu, AZeroDoesNotGoToTheFirstLine) {
  HubBench bench;
  bench.Download({WaitTime(10), Menu(1), WaitTime(1)}, TerminalSystem(), PoolOf("Which?"));
  bench.RunWithTerminal(0.2);
  EXPECT_EQ(HubBench::LineEvents(bench.Send("0")), "");
  EXPECT_EQ(bench.hub.RunningLine(), 1);
}

TEST(YesNo, PlusBranchesAndMinusGoesOn) {
  for (const KeyCase& one : {KeyCase{"+", 42}, KeyCase{"-", 1}, KeyCase{"1\r.\bABCD", kStays},
                             KeyCase{"1-", 1}, KeyCase{"+-", 42}}) {
    ExpectLine(YesNo(42), one);
  }
}

TEST(YesNo, ABranchBehindTheLastLineEndsTheProgram) {
  HubBench bench;
  bench.Download({YesNo(250)}, TerminalSystem(), PoolOf("Sure?"));
  bench.RunWithTerminal(0.1);
  bench.Send("+");
  EXPECT_EQ(bench.hub.State(), HubState::Ended);
}

TEST(YesNo, AZeroGoesToTheFirstLine) {
  HubBench bench;
  bench.Download({WaitTime(10), YesNo(5), WaitTime(1)}, TerminalSystem(), PoolOf("Sure?"));
  bench.RunWithTerminal(0.2);
  EXPECT_EQ(HubBench::LineEvents(bench.Send("0")), "-1 +0");
}

}  // namespace
}  // namespace tavlo::hubsim
