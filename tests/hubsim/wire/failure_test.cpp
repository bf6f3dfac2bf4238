// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/wire/failure.h"

#include <gtest/gtest.h>

#include <set>

#include "hubsim/hub_bench.h"
#include "hubsim/wire_prompts.h"

namespace tavlo::hubsim {
namespace {

HubOptions Failing(const std::string& text) {
  HubOptions options;
  const auto plan = ParseFailure(text);
  EXPECT_TRUE(plan.has_value()) << text;
  options.failure = plan.value_or(FailurePlan{});
  return options;
}

/// Sends a download of empty lines piece by piece and gives the first piece that was not answered with
/// exactly "Y", as "F", "line 7", "system 2", "pool 1"; then the answer to "K".
std::string FirstBadAnswer(HubBench& bench, std::string& sum) {
  std::string bad;
  const auto send = [&](const std::string& bytes, const std::string& name) {
    if (bad.empty() && bench.Ask(bytes) != "Y") bad = name;
  };
  send("F", "F");
  for (int line = 1; line <= 200; ++line) send(Empty(), "line " + std::to_string(line));
  for (int block = 1; block <= 8; ++block) send(std::string(32, '\1'), "system " + std::to_string(block));
  send(std::string(32, 'p'), "pool 1");
  send(std::string(32, 'p'), "pool 2");
  send(std::string(1, '\0'), "pool 3");
  sum = bad.empty() ? bench.Ask("K") : "";
  return bad;
}

const std::string kRightSum = Big2((200 * 11 + 256 + 64 * 'p') % 65536);

TEST(HubFailure, NamesAreReadWithTheirNumbers) {
  EXPECT_EQ(ParseFailure("silent-line:17")->mode, Failure::SilentLine);
  EXPECT_EQ(ParseFailure("silent-line:17")->at, 17);
  EXPECT_EQ(ParseFailure("silent-line")->at, 1);
  for (const char* bad : {"", "silent", "silent-line:", "silent-line:0", "silent-line:-3", "silent-line:x",
                          "silent-line:3x", "no-sum:3", "silent-line:99999999999999"}) {
    EXPECT_FALSE(ParseFailure(bad).has_value()) << bad;
  }
}

TEST(HubFailure, EachModeHasANameOfItsOwnAndAMeaning) {
  std::set<std::string_view> names;
  for (const auto& row : kFailures) {
    EXPECT_TRUE(names.insert(row.name).second) << row.name;
    EXPECT_FALSE(row.meaning.empty());
    EXPECT_EQ(ParseFailure(row.name)->mode, row.mode);
  }
}

struct DownloadCase {
  const char* mode;
  const char* bad;
};

TEST(HubFailure, DownloadsFailWhereTheModeSays) {
  const DownloadCase cases[] = {
      {"none", ""},
      {"silent-f", "F"},
      {"late-f", "F"},
      {"silent-line:1", "line 1"},
      {"silent-line:200", "line 200"},
      {"late-line:5", "line 5"},
      {"wrong-line:6", "line 6"},
      {"noise-line:7", "line 7"},
      {"silent-system:8", "system 8"},
      {"noise-system:3", "system 3"},
      {"silent-pool:1", "pool 1"},
      {"silent-pool:3", "pool 3"},
      {"noise-pool:2", "pool 2"},
      {"drop:2", "line 1"},
      {"unplug:10", "line 10"},
      {"unplug-tx:4", "line 4"},
  };
  for (const auto& one : cases) {
    HubBench bench(Failing(one.mode));
    std::string sum;
    EXPECT_EQ(FirstBadAnswer(bench, sum), one.bad) << one.mode;
    EXPECT_EQ(sum, *one.bad == '\0' ? kRightSum : "");
  }
}

TEST(HubFailure, TheCableComesOffBehindTheNthByteFromThePc) {
  HubBench bench(Failing("unplug:3"));
  EXPECT_EQ(bench.Ask("F"), "Y");
  EXPECT_EQ(bench.Ask(Empty()), "Y");
  EXPECT_FALSE(bench.hub.Unplugged());
  EXPECT_EQ(bench.Ask(Empty()), "Y") << "the answer was on its way already";
  EXPECT_TRUE(bench.hub.Unplugged());
  EXPECT_EQ(bench.Ask(Empty()), "");
  bench.hub.Replug();
  bench.Wait(1);
  EXPECT_EQ(bench.Ask("C"), Bytes({38, 8})) << "a mended cable stays on";
}

TEST(HubFailure, TheCableComesOffBehindTheNthByteToThePc) {
  HubBench bench(Failing("unplug-tx:3"));
  EXPECT_EQ(bench.Ask("C"), Bytes({38, 8}));
  EXPECT_FALSE(bench.hub.Unplugged());
  EXPECT_EQ(bench.Ask("C"), Bytes({38}));
  EXPECT_TRUE(bench.hub.Unplugged());
}

struct SumCase {
  const char* mode;
  std::string sum;
};

TEST(HubFailure, SumsFailAsTheModeSays) {
  const std::string off_by_a_bit{kRightSum[0], static_cast<char>(kRightSum[1] ^ 1)};
  const SumCase cases[] = {{"no-sum", ""},
                           {"late-sum", ""},
                           {"wrong-sum", off_by_a_bit},
                           {"short-sum", kRightSum.substr(0, 1)},
                           {"long-sum", kRightSum + "~"}};
  for (const auto& one : cases) {
    HubBench bench(Failing(one.mode));
    std::string sum;
    EXPECT_EQ(FirstBadAnswer(bench, sum), "") << one.mode;
    EXPECT_EQ(sum, one.sum) << one.mode;
  }
}

TEST(HubFailure, AFlippedByteShowsInTheSum) {
  HubBench bench(Failing("flip:250"));
  std::string sum;
  EXPECT_EQ(FirstBadAnswer(bench, sum), "");
  EXPECT_NE(sum, kRightSum);
}

struct AnswerCase {
  const char* mode;
  const char* question;
  std::string answer;
};

TEST(HubFailure, AnswersAreSpoiledAsTheModeSays) {
  const std::string identity = Bytes({38, 8});
  const std::string drives = Bytes({1, 5, 1, 5, 1, 5, 1, 5, 1, 5, 1, 5, 1, 5, 1, 5});
  const std::string revisions = "200200200200200200200200";
  std::string strange = drives;
  strange[5] = '\xC8';
  std::string missing = drives;
  missing[15] = '\0';
  const AnswerCase cases[] = {
      {"none", "C", identity},
      {"silent-c", "C", ""},
      {"one-byte-c", "C", identity.substr(0, 1)},
      {"late-c", "C", ""},
      {"unknown-model", "C", Bytes({38, 16})},
      {"none", "D", drives},
      {"silent-d", "D", ""},
      {"short-d", "D", drives.substr(0, 15)},
      {"unknown-drive:3", "D", strange},
      {"missing-drive:8", "D", missing},
      {"missing-drive:9", "D", drives},
      {"none", "R", revisions},
      {"silent-r", "R", ""},
      {"short-r", "R", revisions.substr(0, 23)},
      {"garbled-r:2", "R", "200???200200200200200200"},
      {"none", "E", "X"},
      {"silent-e", "E", ""},
      {"late-e", "E", ""},
      {"noise-e", "E", "X~"},
  };
  for (const auto& one : cases) {
    HubBench bench;
    bench.Download({});
    bench.hub.SetFailure(*ParseFailure(one.mode));
    EXPECT_EQ(bench.Ask(one.question), one.answer) << one.mode << ' ' << one.question;
  }
}

TEST(HubFailure, ALateAnswerComesAfterMoreThanASecond) {
  HubBench bench(Failing("late-c"));
  EXPECT_EQ(bench.Ask("C"), "");
  bench.Wait(1.01);
  EXPECT_EQ(bench.hub.TakeOutput(), "");
  bench.Wait(0.4);
  EXPECT_EQ(bench.hub.TakeOutput(), Bytes({38, 8}));
}

TEST(HubFailure, UploadsFailAsTheModeSays) {
  HubBench good;
  good.Download({WaitTime(7)});
  const std::string image = good.Ask("U");
  const auto upload = [&](const char* mode) {
    HubBench bench;
    bench.Download({WaitTime(7)});
    bench.hub.SetFailure(*ParseFailure(mode));
    return bench.Ask("U");
  };
  EXPECT_EQ(upload("silent-u"), "");
  EXPECT_EQ(upload("short-u:8193"), image.substr(0, 8193));
  EXPECT_EQ(upload("short-u:9000"), image);
  const std::string wrong = upload("wrong-u");
  EXPECT_EQ(wrong.substr(0, 8193), image.substr(0, 8193));
  EXPECT_NE(wrong[8193], image[8193]);
}

TEST(HubFailure, AResetStaysUnansweredWhenTold) {
  HubBench bench(Failing("silent-reset"));
  bench.Download({WaitTime(1000)});
  bench.Run(1);
  ASSERT_TRUE(bench.hub.PressStop(bench.now));
  EXPECT_EQ(bench.hub.TakeOutput(), Bytes({251, 0, 0, 0}));
  EXPECT_EQ(bench.Ask("RRRRRRRRRR"), "");
}

TEST(HubFailure, ARunFallsSilentAfterItsMessages) {
  HubBench bench;
  bench.Download({WaitTime(1), WaitTime(1), GoTo(0)});
  bench.hub.SetFailure(*ParseFailure("silent-run:5"));
  EXPECT_EQ(bench.Run(10).size(), 5U);
}

/// A program whose lines begin with 254 and the status of the first axis: 8 bytes for the first of them.
const std::vector<std::string> kTalkative{WaitInput(0, 0, 2)};
const std::string kFirstLine = Bytes({254, 0, 0, 0, 241, 15, 15, 127});

TEST(HubFailure, ARunIsCutInTheMiddleOfAMessage) {
  for (const std::size_t bytes : {2U, 3U, 5U}) {
    HubBench bench;
    bench.Download(kTalkative);
    bench.hub.SetFailure(*ParseFailure("cut-run:" + std::to_string(bytes)));
    EXPECT_EQ(bench.Ask("X"), kFirstLine.substr(0, bytes));
    bench.Wait(10);
    EXPECT_EQ(bench.Ask("IP"), "") << "the program falls silent";
    EXPECT_EQ(bench.Ask("SC"), Bytes({38, 8})) << "the hub does not";
  }
}

TEST(HubFailure, AHubStallsInTheMiddleOfAMessage) {
  for (const std::size_t bytes : {2U, 3U, 4U, 5U}) {
    HubBench bench;
    bench.Download(kTalkative);
    bench.hub.SetFailure(*ParseFailure("stall-run:" + std::to_string(bytes)));
    EXPECT_EQ(bench.Ask("X"), kFirstLine.substr(0, bytes));
    bench.Wait(0.015);
    EXPECT_EQ(bench.Ask("SC"), "") << "nothing overtakes what is held back";
    bench.Wait(0.006);
    EXPECT_EQ(bench.hub.TakeOutput(), kFirstLine.substr(bytes) + Bytes({38, 8}));
    EXPECT_EQ(bench.Ask("C"), Bytes({38, 8})) << "it stalls once";
  }
}

TEST(HubFailure, APromptIsCutAndStallsLikeAnyMessage) {
  const std::string cleared = "\x1B" + std::string("E");
  const std::string next = Bytes({237, 0, 0, 0, 254, 0, 1, 0, 241, 15, 15, 127});
  for (const auto& [mode, later] : {std::pair{"cut-run:5", std::string()}, {"stall-run:5", "mpt" + next}}) {
    HubBench bench;
    bench.Download({Display(0), WaitInput(0, 0, 2)}, TerminalSystem(), PoolOf("prompt"));
    EXPECT_EQ(bench.Ask("M"), cleared + Bytes({254, 0, 0, 0}));
    bench.hub.SetFailure(*ParseFailure(mode));
    EXPECT_EQ(bench.Ask("I"), cleared + "pro") << mode;
    bench.Wait(1);
    EXPECT_EQ(bench.hub.TakeOutput(), later) << mode;
  }
}

TEST(HubFailure, AHastyRunTakesUpALineInSoManyMilliseconds) {
  HubBench bench(Failing("hasty:20"));
  bench.acknowledging = false;
  bench.Download({GoTo(1), GoTo(0)});
  const auto messages = bench.Run(1);
  EXPECT_NEAR(HubBench::Count(messages, 254), 51, 1);
  EXPECT_NEAR(HubBench::Count(messages, 237), 50, 1);
  EXPECT_NEAR(HubBench::TimeOf(messages, 254, 1), 0, 1e-9) << "the first line has not to wait";
  EXPECT_NEAR(messages.back().at, 1, 0.021);
  bench.Send("S");
  EXPECT_TRUE(bench.Go(1).empty());
}

TEST(HubFailure, AHastyRunWaitsForAllThatIsNoAcknowledgement) {
  HubBench bench(Failing("hasty"));
  bench.acknowledging = false;
  bench.Download({WaitTime(100), WaitInput(0, 2, 1), GoTo(0)});
  EXPECT_EQ(HubBench::LineEvents(bench.Run(10)), "+0 -0 +1");
  bench.Wait(100);
  ASSERT_TRUE(bench.hub.SetInput(0, 2, false, bench.now));
  const auto messages = bench.Go(0.5);
  EXPECT_EQ(HubBench::LineEvents(messages), "-1 +2 -2 +0");
}

}  // namespace
}  // namespace tavlo::hubsim
