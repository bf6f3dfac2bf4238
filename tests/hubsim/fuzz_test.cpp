// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <random>

#include "hubsim/hub_bench.h"
#include "hubsim/mount/console.h"

namespace tavlo::hubsim {
namespace {

constexpr int kFuzzBytes = 200000;

/// Whatever happened, the hub can be brought back to answer who it is.
void ExpectItStillAnswers(HubBench& bench) {
  bench.hub.Replug();
  bench.Wait(1);
  static_cast<void>(bench.hub.TakeOutput());
  const std::string answer = bench.Ask("H\r0HM\rSC");
  ASSERT_GE(answer.size(), 2U);
  EXPECT_EQ(answer.substr(answer.size() - 2), Bytes({38, 8}));
}

TEST(HubFuzz, RandomBytesAtRandomTimesLeaveAHubThatAnswers) {
  for (const unsigned seed : {1U, 2U, 3U}) {
    std::mt19937 random(seed);
    HubBench bench;
    for (int byte = 0; byte < kFuzzBytes; ++byte) {
      const char value = static_cast<char>(random() % 256);
      bench.hub.Receive(std::string_view(&value, 1), bench.now);
      if (random() % 50 == 0) bench.Wait(random() % 1000 / 700.0);
      if (random() % 1000 == 0) static_cast<void>(bench.hub.TakeOutput());
    }
    SCOPED_TRACE(seed);
    ExpectItStillAnswers(bench);
  }
}

TEST(HubFuzz, CommandsInAnyOrderLeaveAHubThatAnswers) {
  constexpr std::string_view kCommands = "CDRKEXMPrT0SIIIIIII*";
  for (const unsigned seed : {11U, 12U, 13U}) {
    std::mt19937 random(seed);
    HubBench bench;
    bench.Download(
        {FeedLength({.wait = kProceed}), Call(3), WaitTime(5), FeedSensor({.axis = 1}, 2, 1), Return()});
    for (int byte = 0; byte < kFuzzBytes; ++byte) {
      const char value = kCommands[random() % kCommands.size()];
      bench.hub.Receive(std::string_view(&value, 1), bench.now);
      const auto axis = static_cast<int>(random() % kAxisCount);
      if (random() % 4 == 0)
        bench.hub.SetInput(axis, static_cast<int>(random() % kInputCount), random() % 2, bench.now);
      if (random() % 500 == 0) bench.hub.HitLimit(axis, bench.now);
      if (random() % 2000 == 0) bench.hub.Fail(axis, static_cast<int>(random() % 16384), bench.now);
      bench.Wait(random() % 100 / 1000.0);
      if (random() % 100 == 0) static_cast<void>(bench.hub.TakeOutput());
    }
    SCOPED_TRACE(seed);
    ExpectItStillAnswers(bench);
  }
}

/// Any 6656 bytes are a program: lines with any code, axis, input, line and variable.
TEST(HubFuzz, RandomProgramsRunWithoutHarm) {
  int started = 0;
  for (unsigned seed = 100; seed < 160; ++seed) {
    std::mt19937 random(seed);
    HubBench bench;
    std::vector<std::string> lines;
    while (lines.size() < kLineCount) {
      std::string line;
      std::vector<std::uint8_t> so_far;
      do {
        const bool low = random() % 3 != 0;
        so_far.push_back(static_cast<std::uint8_t>(random() % (low ? 8 : 256)));
        if (so_far.size() == 1) so_far[0] = static_cast<std::uint8_t>(random() % 256);
        line += static_cast<char>(so_far.back());
      } while (!LineComplete(so_far, 38));
      lines.push_back(line);
    }
    std::string system;
    for (int i = 0; i < kSystemSize; ++i) system += static_cast<char>(random() % 256);
    bench.Download(lines, system);
    bench.acknowledging = false;
    bench.Run(1);
    for (int step = 0; step < 300; ++step) {
      bench.hub.SetInput(static_cast<int>(random() % kAxisCount), static_cast<int>(random() % kInputCount),
                         random() % 2, bench.now);
      bench.Go(random() % 1000 / 10.0);
      for (int line = 0; line < 20; ++line) started += HubBench::Count(bench.Send("I"), 254);
      if (bench.hub.State() != HubState::Running) bench.Send("SX");
    }
    SCOPED_TRACE(seed);
    for (int axis = 0; axis < kAxisCount; ++axis) {
      EXPECT_TRUE(std::isfinite(bench.hub.Axis(axis).position_steps));
      EXPECT_TRUE(std::isfinite(bench.hub.Axis(axis).speed_steps_s));
    }
    ExpectItStillAnswers(bench);
  }
  EXPECT_GT(started, 10000) << "lines that ran";
}

/// Nothing but lines that talk to the operator, over random texts, and an operator who hits every key.
TEST(HubFuzz, RandomKeysInRandomPromptsDoNoHarm) {
  constexpr std::string_view kKeys = "0123456789.+-\r\r\r\bABCDPrT0";
  constexpr int kTalking[] = {14, 14, 14, 26, 5, 18, 82, 7, 8, 0};
  int answered = 0;
  for (unsigned seed = 200; seed < 240; ++seed) {
    std::mt19937 random(seed);
    HubBench bench;
    std::vector<std::string> lines;
    while (lines.size() < kLineCount) {
      std::vector<std::uint8_t> line{static_cast<std::uint8_t>(kTalking[random() % std::size(kTalking)])};
      while (!LineComplete(line, 38)) {
        line.push_back(static_cast<std::uint8_t>(random() % (random() % 3 != 0 ? 7 : 256)));
      }
      lines.emplace_back(line.begin(), line.end());
    }
    std::string pool;
    while (pool.size() < kPoolSize) pool += static_cast<char>(random() % 255 + 1);
    bench.Download(lines, SystemOf(1, {1, 0, 0, 2}), pool + '\0');
    bench.Send("M");
    for (int step = 0; step < 2000; ++step) {
      const char key = kKeys[random() % kKeys.size()];
      answered += HubBench::Count(bench.Send({&key, 1}), 237);
      const auto axis = static_cast<int>(random() % kAxisCount);
      if (random() % 5 == 0) bench.hub.TurnKnob(axis, static_cast<int>(random() % 200) - 100, bench.now);
      if (random() % 7 == 0)
        bench.hub.SetInput(axis, static_cast<int>(random() % kInputCount), random() % 2, bench.now);
      if (random() % 50 == 0) bench.hub.HitLimit(axis, bench.now);
      answered += HubBench::Count(bench.Go(random() % 100 / 200.0), 237);
      if (bench.hub.State() != HubState::Running && bench.hub.State() != HubState::Paused) bench.Send("SM");
      for (const std::string& row : bench.hub.Display()) ASSERT_LE(row.size(), 20U);
    }
    SCOPED_TRACE(seed);
    EXPECT_TRUE(
        std::ranges::none_of(bench.text, [](char byte) { return static_cast<unsigned char>(byte) > 127; }));
    ExpectItStillAnswers(bench);
  }
  EXPECT_GT(answered, 1000) << "lines that came to their end";
}

TEST(HubFuzz, RandomConsoleLinesAreAnswered) {
  constexpr std::string_view kLetters = " 0123456789Xabehilmnopstuw-:\tqf";
  std::mt19937 random(7);
  HubBench bench;
  Console console(bench.hub);
  for (int i = 0; i < 20000; ++i) {
    std::string line = i % 2 == 0 ? "input " : "fault ";
    for (unsigned length = random() % 12; length > 0; --length) line += kLetters[random() % kLetters.size()];
    EXPECT_FALSE(console.Execute(line, bench.now).empty()) << line;
  }
}

}  // namespace
}  // namespace tavlo::hubsim
