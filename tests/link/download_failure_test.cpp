// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <gtest/gtest.h>

#include "link/download.h"
#include "link/scripted_hub.h"
#include "support/send_program.h"

namespace tavlo::testing {
namespace {

constexpr std::string_view kNoAnswer =
    "The Tavlo Hub is not responding to the Download command.  Is it connected to the right port and turned "
    "on?";
constexpr std::string_view kNoSystem = "The Tavlo Hub has stopped responding during system info transfer.";
constexpr std::string_view kNoPool = "The Tavlo Hub has stopped responding during string pool transfer.";
constexpr std::string_view kNoSum =
    "The Tavlo Hub did not provide a checksum.  There may be a problem with the download.";
constexpr std::string_view kWrongSum =
    "Your program did not download correctly.  Make sure the cable connections are secure, less than 50 feet "
    "long, and that you are not working around electrical noise, such as a welder, a high powered motor or "
    "big "
    "relays.";

std::string NoLine(int line) {
  return "The Tavlo Hub has stopped responding during transfer of program line " + std::to_string(line) +
         ". Is it connected and turned on?";
}

struct FailureDesk : FakeDesk {
  FailureDesk() {
    // Three blocks of pool.
    Line(0).Type = MMI;
    Line(0).SubType = DisplayOnly;
    Line(0).Text = std::string(70, 'p');
  }
  ScriptedHub hub{port};
};

struct Failure {
  std::string place;
  /// What the hub answers there.
  std::string reply;
  DownloadResult result;
  std::string text;
  Icon icon;
  /// The operation clears `Busy` itself.
  bool clears_busy;
};

std::vector<Failure> Failures() {
  std::vector<Failure> failures = {
      {"F", "", DownloadResult::NoAnswer, std::string(kNoAnswer), Icon::Question, true},
      {"F", "N", DownloadResult::NoAnswer, std::string(kNoAnswer), Icon::Question, true},
      {"F", "y", DownloadResult::NoAnswer, std::string(kNoAnswer), Icon::Question, true},
      {"K", "", DownloadResult::NoSum, std::string(kNoSum), Icon::None, false},
      {"K", "1", DownloadResult::NoSum, std::string(kNoSum), Icon::None, false},
      {"K", "123", DownloadResult::NoSum, std::string(kNoSum), Icon::None, false},
      {"K", "12", DownloadResult::WrongSum, std::string(kWrongSum), Icon::None, false},
  };
  // Noise beside the "Y" in one read hides it.
  for (const char* reply : {"", "xY", "Yx", "YY", "\xff"}) {
    for (const int line : {1, 2, 100, 199, 200}) {
      failures.push_back({"line " + std::to_string(line), reply, DownloadResult::StoppedInLines, NoLine(line),
                          Icon::Question, true});
    }
    for (const int block : {1, 5, 8}) {
      failures.push_back({"system " + std::to_string(block), reply, DownloadResult::StoppedInSystem,
                          std::string(kNoSystem), Icon::Question, true});
    }
    for (const int block : {1, 2, 3}) {
      failures.push_back({"pool " + std::to_string(block), reply, DownloadResult::StoppedInPool,
                          std::string(kNoPool), Icon::Question, true});
    }
  }
  return failures;
}

TEST(DownloadFailure, EachIsToldInItsWordsAndLeavesTheLinkUsable) {
  for (const Failure& failure : Failures()) {
    SCOPED_TRACE(failure.place + " answered by \"" + failure.reply + "\"");
    FailureDesk d;
    d.source.link.Busy = true;
    d.hub.instead[failure.place] = failure.reply;
    EXPECT_EQ(SendProgram(d.desk, 1.38F), failure.result);
    const std::vector<ShownBox> expected = {
        {failure.text, std::string(kApplicationTitle), Buttons::OK, failure.icon}};
    EXPECT_EQ(d.boxes.shown, expected);
    EXPECT_EQ(d.source.link.Busy, !failure.clears_busy);
    EXPECT_EQ(d.port.RThreshold(), 1);
    EXPECT_FALSE(d.downbox.visible);
  }
}

TEST(DownloadFailure, NothingIsSentAfterTheHubFellSilent) {
  for (const Failure& failure : Failures()) {
    FailureDesk d;
    std::size_t sent = 0;
    d.hub.on_place = [&](const std::string& place) {
      if (place == failure.place) sent = d.port.sent.size();
    };
    d.hub.instead[failure.place] = failure.reply;
    EXPECT_EQ(SendProgram(d.desk, 1.38F), failure.result);
    EXPECT_EQ(d.port.sent.size(), sent) << failure.place;
  }
}

TEST(DownloadFailure, SilenceIsGivenASecond) {
  for (const Failure& failure : Failures()) {
    if (!failure.reply.empty()) continue;
    FailureDesk d;
    d.hub.instead[failure.place] = "";
    const double start = d.clock.now;
    EXPECT_EQ(SendProgram(d.desk, 1.38F), failure.result);
    EXPECT_GE(d.clock.now - start, 1.0) << failure.place;
    EXPECT_LT(d.clock.now - start, 1.1) << failure.place;
  }
}

TEST(DownloadFailure, AnAnswerThatComesTooLateIsNone) {
  for (const Failure& failure : Failures()) {
    if (!failure.reply.empty()) continue;
    FailureDesk d;
    d.hub.delays[failure.place] = 1.05;
    EXPECT_EQ(SendProgram(d.desk, 1.38F), failure.result) << failure.place;
  }
}

TEST(DownloadFailure, WhatIsNoSumStaysInTheBuffer) {
  for (const char* reply : {"1", "123"}) {
    FailureDesk d;
    d.hub.instead["K"] = reply;
    EXPECT_EQ(SendProgram(d.desk, 1.38F), DownloadResult::NoSum);
    EXPECT_EQ(d.port.Input(), reply);
  }
}

TEST(DownloadFailure, EventsAreBackWhateverTheThresholdWas) {
  for (const int before : {0, 1, 3}) {
    for (const char* place : {"F", "line 3", "system 2", "pool 1", "K"}) {
      FailureDesk d;
      d.port.threshold = before;
      d.hub.instead[place] = "";
      EXPECT_NE(SendProgram(d.desk, 1.38F), DownloadResult::Done);
      EXPECT_EQ(d.port.RThreshold(), 1) << place;
    }
  }
}

TEST(DownloadFailure, ThePortThatVanishesEndsTheTransferAtOnce) {
  struct Case {
    const char* place;
    DownloadResult result;
  };
  for (const Case& c : {Case{"F", DownloadResult::NoAnswer}, Case{"line 50", DownloadResult::StoppedInLines},
                        Case{"system 3", DownloadResult::StoppedInSystem},
                        Case{"pool 2", DownloadResult::StoppedInPool}, Case{"K", DownloadResult::NoSum}}) {
    FailureDesk d;
    d.hub.on_place = [&](const std::string& place) {
      if (place == c.place) d.port.is_open = false;
    };
    d.hub.instead[c.place] = "";
    const double start = d.clock.now;
    EXPECT_EQ(SendProgram(d.desk, 1.38F), c.result) << c.place;
    EXPECT_LE(d.clock.now - start, 1.1) << c.place;
    EXPECT_TRUE(d.boxes.shown.empty()) << c.place << ": what has gone is told once, as the port";
    EXPECT_FALSE(d.downbox.visible) << c.place;
  }
}

TEST(DownloadFailure, WithNoPortOpenTheHubIsNotResponding) {
  FailureDesk d;
  d.port.is_open = false;
  d.source.link.ComNum = 0;
  EXPECT_EQ(SendProgram(d.desk, 1.38F), DownloadResult::NoAnswer);
  ASSERT_EQ(d.boxes.shown.size(), 1u);
  EXPECT_EQ(d.boxes.shown[0].text, kNoAnswer);
}

TEST(DownloadFailure, TheProgramIsAsItWas) {
  for (const char* place : {"F", "line 3", "system 2", "pool 1", "K"}) {
    FailureDesk d;
    d.Line(3).Type = GT;
    const auto before = d.source.program.Prog;
    d.hub.instead[place] = "";
    EXPECT_NE(SendProgram(d.desk, 1.38F), DownloadResult::Done);
    EXPECT_EQ(d.source.program.Prog, before) << place;
  }
}

struct BadLine {
  const char* name;
  std::function<void(Instruction&)> spoil;
};

std::vector<BadLine> BadLines() {
  return {{"a negative distance",
           [](Instruction& line) {
             line.Type = FL;
             line.Dist = -1;
           }},
          {"a negative time",
           [](Instruction& line) {
             line.Type = WT;
             line.Time = -5;
           }},
          {"a whole byte above 255",
           [](Instruction& line) {
             line.Type = GT;
             line.LineNum = 256;
           }},
          {"an End Repeat without a Repeat", [](Instruction& line) { line.Type = ER; }},
          {"a first byte above 255",
           [](Instruction& line) {
             line.Type = FE;
             line.CountIsMMI = true;
             line.Proceed = true;
             line.WaitThis = true;
           }},
          {"an unknown type", [](Instruction& line) { line.Type = 32; }}};
}

TEST(DownloadFailure, ALineWithoutBytesIsToldBeforeTheHubIsTouched) {
  for (const BadLine& bad : BadLines()) {
    for (const int line : {0, 56, 199}) {
      SCOPED_TRACE(bad.name);
      FailureDesk d;
      bad.spoil(d.Line(line));
      EXPECT_EQ(SendProgram(d.desk, 1.38F), DownloadResult::CannotCompile);
      EXPECT_TRUE(d.port.sent.empty());
      ASSERT_EQ(d.boxes.shown.size(), 1u);
      const ShownBox& box = d.boxes.shown[0];
      const std::string head = "Line " + std::to_string(line + 1) + " cannot be compiled: ";
      EXPECT_TRUE(box.text.starts_with(head)) << box.text;
      EXPECT_TRUE(box.text.ends_with('.')) << box.text;
      EXPECT_GT(box.text.size(), head.size() + 1);
      EXPECT_EQ(box.title, kApplicationTitle);
      EXPECT_EQ(box.buttons, Buttons::OK);
      EXPECT_EQ(d.view.gone_to, std::vector<int>{line});
      EXPECT_FALSE(d.downbox.visible);
      EXPECT_GT(d.port.RThreshold(), 0);
    }
  }
}

TEST(DownloadFailure, ASettingWithoutBytesBelongsToNoLine) {
  FailureDesk d;
  d.source.program.Axis.AxisName[2] = "much too long a name";
  EXPECT_EQ(SendProgram(d.desk, 1.38F), DownloadResult::CannotCompile);
  EXPECT_EQ(d.boxes.shown.size(), 1u);
  EXPECT_TRUE(d.view.gone_to.empty());
}

TEST(DownloadFailure, TheFirstLineWithoutBytesIsTheOneThatIsTold) {
  FailureDesk d;
  for (const int line : {30, 20, 40}) {
    d.Line(line).Type = WT;
    d.Line(line).Time = -1;
  }
  EXPECT_EQ(SendProgram(d.desk, 1.38F), DownloadResult::CannotCompile);
  ASSERT_EQ(d.boxes.shown.size(), 1u);
  EXPECT_TRUE(d.boxes.shown[0].text.starts_with("Line 21 cannot be compiled: "));
}

TEST(Download, ALineWithoutBytesLetsOnlyStopAndTheQuestionWhoGoOut) {
  for (const bool changed : {false, true}) {
    FailureDesk d;
    d.source.Changed = changed;
    d.Line(5).Type = FL;
    d.Line(5).Dist = -1;
    EXPECT_EQ(Download(d.desk), DownloadResult::CannotCompile);
    EXPECT_EQ(d.port.AllSent(), "SC");
    EXPECT_FALSE(d.source.link.Busy);
    EXPECT_EQ(d.source.Changed, changed);
  }
}

/// A program with everything that a check or the compiler puts right on its way: a pulse that is too long, an
/// idle current, a Repeat that has not been numbered, and masks of inputs that a Hub Quad does not have.
void WriteWhatIsPutRight(Program& program) {
  program.HubIndex = HubQuad;
  program.Prog[10].Type = FLSO;
  program.Prog[10].Time = 900;
  program.Prog[11].Type = WII;
  program.Prog[11].Drive = 4;
  program.Prog[11].InMask = 0xFF;
  program.Prog[11].InState = 0xF0;
  program.Prog[12].Type = RP;
  program.Prog[12].LoopIndex = 44;
  program.Prog[13].Type = ER;
  program.Axis.DriveModel[0] = 36;
  program.Axis.DriveCurrent[0] = 1;
  program.Axis.PeakCurrent[0] = 1.75F;
}

TEST(Download, ThatIsRefusedLeavesEveryFieldAsItWas) {
  struct Case {
    const char* name;
    std::function<void(Program&)> spoil;
    DownloadResult result;
  };
  for (const Case& c :
       {Case{"a check", [](Program& program) { program.Prog[20].Type = CL; }, DownloadResult::Refused},
        Case{"a check of Repeats", [](Program& program) { program.Prog[20].Type = RP; },
             DownloadResult::Refused},
        Case{"the last line's bytes",
             [](Program& program) {
               program.Prog[199].Type = FL;
               program.Prog[199].Dist = -1;
             },
             DownloadResult::CannotCompile},
        Case{"a name of the settings", [](Program& program) { program.Axis.AxisName[7] = "much too long"; },
             DownloadResult::CannotCompile}}) {
    FailureDesk d;
    d.hub.model = 24;
    WriteWhatIsPutRight(d.source.program);
    c.spoil(d.source.program);
    const auto lines = d.source.program.Prog;
    const auto peaks = d.source.program.Axis.PeakCurrent;
    EXPECT_EQ(Download(d.desk), c.result) << c.name;
    EXPECT_EQ(d.source.program.Prog, lines) << c.name;
    EXPECT_EQ(d.source.program.Axis.PeakCurrent, peaks) << c.name;
  }
}

TEST(Download, ThatIsSentTakesOverWhatWasPutRight) {
  FailureDesk d;
  d.hub.model = 24;
  WriteWhatIsPutRight(d.source.program);
  EXPECT_EQ(Download(d.desk), DownloadResult::Done);
  EXPECT_EQ(d.source.program.Prog[10].Time, 255);
  EXPECT_EQ(d.source.program.Prog[11].InMask, 0x0F);
  EXPECT_EQ(d.source.program.Prog[11].InState, 0);
  EXPECT_EQ(d.source.program.Prog[12].LoopIndex, 0);
  EXPECT_EQ(d.source.program.Axis.PeakCurrent[0], 0.5F);
}

TEST(Download, StopsTheHubAsksWhoItIsAndTransfers) {
  FailureDesk d;
  d.source.Changed = true;
  EXPECT_EQ(Download(d.desk), DownloadResult::Done);
  ASSERT_GE(d.hub.commands.size(), 4u);
  EXPECT_EQ(std::vector<std::string>(d.hub.commands.begin(), d.hub.commands.begin() + 4),
            (std::vector<std::string>{"S", "C", "F", "K"}));
  EXPECT_FALSE(d.source.Changed);
  EXPECT_FALSE(d.source.link.Busy);
  EXPECT_EQ(d.source.program.HubVersion, 1.38F);
}

TEST(Download, IsBusyFromTheStopToTheSum) {
  FailureDesk d;
  bool always = true;
  d.hub.on_place = [&](const std::string&) { always = always && d.source.link.Busy; };
  EXPECT_EQ(Download(d.desk), DownloadResult::Done);
  EXPECT_TRUE(always);
}

TEST(Download, ASecondClickDoesNothing) {
  FailureDesk d;
  d.source.link.Busy = true;
  d.source.Changed = true;
  EXPECT_EQ(Download(d.desk), std::nullopt);
  EXPECT_TRUE(d.port.sent.empty());
  EXPECT_TRUE(d.boxes.shown.empty());
  EXPECT_TRUE(d.source.link.Busy);
  EXPECT_TRUE(d.source.Changed);
}

TEST(Download, AProgramThatTheChecksStopIsNotSentAndOnlyOneWhoseRepeatsDoNotPairIsTakenAsSaved) {
  struct Case {
    std::vector<std::int16_t> types;
    bool changed;
  };
  // The last is two lines the wrong way about: its loops must have been numbered for that to be seen.
  for (const Case& c :
       {Case{{CL}, true}, Case{{RT}, true}, Case{{RP}, false}, Case{{ER}, false}, Case{{ER, RP}, false}}) {
    FailureDesk d;
    d.source.Changed = true;
    for (std::size_t i = 0; i < c.types.size(); ++i) d.Line(static_cast<int>(i) + 5).Type = c.types[i];
    EXPECT_EQ(Download(d.desk), DownloadResult::Refused);
    EXPECT_EQ(d.port.AllSent(), "SC");
    EXPECT_EQ(d.boxes.shown.size(), 1u);
    EXPECT_EQ(d.source.Changed, c.changed) << c.types[0];
    EXPECT_FALSE(d.source.link.Busy);
  }
}

TEST(Download, IsBusyWhileACheckAsksAndCancelLeavesTheChanges) {
  for (const Answer answer : {Answer::Cancel, Answer::OK}) {
    FailureDesk d;
    d.source.Changed = true;
    d.Line(3).Type = FL;
    d.Line(3).DistIsMMI = true;
    d.Line(4).Type = MMI;
    d.Line(4).SubType = GetCount;
    d.boxes.setNextAnswer(answer);
    bool busy = false;
    d.boxes.on_box = [&](const ShownBox&) {
      busy = d.source.link.Busy;
      EXPECT_EQ(Download(d.desk), std::nullopt) << "a second click";
    };
    EXPECT_EQ(Download(d.desk), answer == Answer::OK ? DownloadResult::Done : DownloadResult::Refused);
    EXPECT_TRUE(busy);
    EXPECT_EQ(d.boxes.shown.size(), 1u);
    EXPECT_EQ(d.source.Changed, answer == Answer::Cancel);
    EXPECT_FALSE(d.source.link.Busy);
  }
}

TEST(Download, AHubThatDoesNotSayWhoItIsEndsItWithTheChangesTakenAsSaved) {
  FailureDesk d;
  d.source.Changed = true;
  d.hub.instead["C"] = "";
  EXPECT_EQ(Download(d.desk), std::nullopt);
  EXPECT_EQ(d.port.AllSent(), "SC");
  EXPECT_EQ(d.boxes.shown.size(), 1u);
  EXPECT_FALSE(d.source.link.Busy);
  EXPECT_FALSE(d.source.Changed);
}

TEST(Download, ClearsBusyAndChangedWhateverTheTransferReached) {
  for (const Failure& failure : Failures()) {
    FailureDesk d;
    d.source.Changed = true;
    d.hub.instead[failure.place] = failure.reply;
    EXPECT_EQ(Download(d.desk), failure.result) << failure.place;
    EXPECT_FALSE(d.source.link.Busy) << failure.place;
    EXPECT_FALSE(d.source.Changed) << failure.place;
  }
}

TEST(Download, TheHubsOwnVersionDecidesWhetherTheDrivesAreSetUp) {
  for (const int revision : {18, 19}) {
    FailureDesk d;
    d.hub.revision = revision;
    EXPECT_EQ(Download(d.desk), DownloadResult::Done);
    EXPECT_EQ(d.hub.commands.back(), revision == 19 ? "0HM\r" : "K");
  }
}

TEST(Download, TheHubsVersionDecidesHowALineIsCompiled) {
  for (const int revision : {8, 9}) {
    FailureDesk d;
    d.hub.revision = revision;
    d.Line(1).Type = WII;
    EXPECT_EQ(Download(d.desk), DownloadResult::Done);
    EXPECT_EQ(d.hub.lines[1].size(), revision == 8 ? 5u : 7u);
  }
}

TEST(Download, TellsTheHubThatTheProgramNeedsTheTerminal) {
  FailureDesk with;
  EXPECT_EQ(Download(with.desk), DownloadResult::Done);
  EXPECT_EQ(with.hub.system[31], 1);
  FailureDesk without;
  without.Line(0).Type = NO;
  without.source.program.MMIused = true;
  EXPECT_EQ(Download(without.desk), DownloadResult::Done);
  EXPECT_EQ(without.hub.system[31], 0);
}

}  // namespace
}  // namespace tavlo::testing
