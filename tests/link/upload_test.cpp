// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "link/upload.h"

#include <gtest/gtest.h>

#include "codegen/compile.h"
#include "codegen/encodings.h"
#include "link/execution.h"
#include "link/polled.h"
#include "session/edit_step.h"
#include "support/bytes.h"
#include "support/fake_desk.h"

namespace tavlo::testing {
namespace {

constexpr const char* kNotCorrect =
    "Your program did not upload correctly.  Make sure the cable connections are secure and that you are not "
    "working around electrical noise, such as a welder, a high powered motor or big relays.";

std::string StoppedAfter(int count) {
  return "The Tavlo Hub stopped responding after " + std::to_string(count) +
         " chars.  Is it connected to the right port and turned on?";
}

/// What the hub of these tests holds: a loop around a move with a test that goes on, a prompt, and settings.
Program ProgramInHub() {
  Program program;
  InitHardware(program.Axis);
  InitProg(program);
  program.HubVersion = 1.38F;
  program.Prog[0].Type = RP;
  program.Prog[1].Type = FL;
  program.Prog[1].Proceed = true;
  program.Prog[1].Dist = 12345;
  program.Prog[2].Type = WT;
  program.Prog[2].Time = 77;
  program.Prog[3].Type = ER;
  program.Prog[4].Type = MMI;
  program.Prog[4].Text = "Ready";
  program.Prog[199].Type = GT;
  program.Axis.AxisName[1] = "Lift";
  program.Axis.DriveModel[0] = 4;
  program.Axis.SameSpare = true;
  program.LimitList = BranchToLine;
  program.LimitBranch = 5;
  return program;
}

std::string Image() {
  Program program = ProgramInHub();
  return ImageOf(CompileProgram(program));
}

std::string WithSum(const std::string& image) {
  return image + Raw2(SumStr(image) % 65536);
}

/// A hub that answers "C" and "U".
struct UploadDesk : FakeDesk {
  UploadDesk() {
    source.program.HubVersion = 1.38F;
    port.on_output = [this](const std::string& bytes) {
      if (on_command) on_command(bytes);
      if (bytes == "C") port.Reply(identity);
      if (bytes != "U") return;
      double delay = 0;
      for (std::size_t at = 0; at < answer.size(); at += piece) {
        port.Reply(answer.substr(at, piece), delay);
        delay += piece_seconds;
      }
    };
    port.OnComm = [this] { ++events; };
  }

  std::string identity = Bytes({38, 8});
  std::string answer = WithSum(Image());
  std::size_t piece = 10000;
  double piece_seconds = 0;
  std::function<void(const std::string&)> on_command;
  int events = 0;
};

void ExpectOneBox(const UploadDesk& d, const std::string& text) {
  ASSERT_EQ(d.boxes.shown.size(), 1U);
  EXPECT_EQ(d.boxes.shown[0].text, text);
  EXPECT_EQ(d.boxes.shown[0].title, kApplicationTitle);
  EXPECT_EQ(d.boxes.shown[0].buttons, Buttons::OK);
  EXPECT_EQ(d.boxes.shown[0].icon, Icon::None);
}

void ExpectUntouched(const UploadDesk& d, const Program& before) {
  const Program& program = d.source.program;
  EXPECT_TRUE(program.Prog == before.Prog);
  EXPECT_TRUE(program.Axis == before.Axis);
  EXPECT_EQ(program.LimitList, before.LimitList);
  EXPECT_EQ(program.LimitBranch, before.LimitBranch);
  EXPECT_EQ(program.HubVersion, before.HubVersion);
}

TEST(ReadImage, GivesTheProvenBytesAndTouchesNothing) {
  UploadDesk d;
  d.source.Changed = true;
  const Program before = d.source.program;
  const EventsOff events(d.port);
  const ImageReading reading = ReadImage(d.desk.link(), d.desk.uploading());
  EXPECT_EQ(reading.result, UploadResult::Done);
  EXPECT_TRUE(reading.image == Image());
  EXPECT_EQ(d.port.AllSent(), "U");
  EXPECT_TRUE(d.boxes.shown.empty());
  ExpectUntouched(d, before);
  EXPECT_TRUE(d.source.Changed);
}

TEST(ReadImage, GivesNoByteThatIsNotProven) {
  for (const std::size_t count : {std::size_t{0}, std::size_t{8193}, std::size_t{8194}}) {
    UploadDesk d;
    d.answer = (Image() + "no").substr(0, count);
    const EventsOff events(d.port);
    const ImageReading reading = ReadImage(d.desk.link(), d.desk.uploading());
    EXPECT_EQ(reading.result, count == 8194 ? UploadResult::WrongSum : UploadResult::Stopped);
    EXPECT_EQ(reading.image.size(), 0U);
    EXPECT_EQ(d.boxes.shown.size(), 1U);
    EXPECT_FALSE(d.upbox.visible);
  }
}

TEST(UploadProg, SendsOneCommandAndTakesLinesAndSettings) {
  UploadDesk d;
  d.source.Changed = true;
  d.source.program.HubIndex = HubQuad;
  d.source.program.Axis.StepResCode[0] = 7;
  EXPECT_EQ(UploadProg(d.desk, 1.38F), UploadResult::Done);
  EXPECT_EQ(d.port.AllSent(), "U");
  EXPECT_TRUE(d.boxes.shown.empty());
  const Program& program = d.source.program;
  EXPECT_EQ(program.Prog[1].Dist, 12345);
  EXPECT_EQ(program.Prog[3].LineNum, 0) << "linked to its Repeat";
  EXPECT_EQ(program.Prog[4].Text, "Ready");
  EXPECT_EQ(program.Axis.AxisName[1], "Lift");
  EXPECT_EQ(program.LimitList, BranchToLine);
  EXPECT_EQ(program.LimitBranch, 5);
  EXPECT_EQ(program.Axis.StepResCode[0], 7) << "kept";
  EXPECT_EQ(program.HubIndex, HubQuad) << "kept";
  EXPECT_FALSE(d.source.Changed);
  EXPECT_FALSE(d.upbox.visible);
  EXPECT_EQ(d.port.RThreshold(), 1);
}

TEST(UploadProg, WhatTheHubHoldsCompilesToWhatItHolds) {
  UploadDesk d;
  EXPECT_EQ(UploadProg(d.desk, 1.38F), UploadResult::Done);
  Program program = d.source.program;
  EXPECT_TRUE(ImageOf(CompileProgram(program)) == Image());
}

TEST(UploadProg, ThePoolComesOverAsItStandsInTheHubBehindItsEndToo) {
  UploadDesk d;
  std::string image = Image();
  const std::string pool("\0behind\xff", 8);
  image.replace(6656, pool.size(), pool);
  image.replace(20 * 32, 5, Bytes({MMI, DisplayOnly, 0, 1, 0}));
  d.answer = WithSum(image);
  const EventsOff events(d.port);
  EXPECT_TRUE(ReadImage(d.desk.link(), d.desk.uploading()).image == image);
  EXPECT_EQ(UploadProg(d.desk, 1.38F), UploadResult::Done);
  EXPECT_EQ(d.Line(20).Text, "behind");
}

TEST(UploadProg, ClearsNoRecordFirst) {
  UploadDesk d;
  d.Line(199).Text = "held";
  d.Line(199).Drive = 3;
  EXPECT_EQ(UploadProg(d.desk, 1.38F), UploadResult::Done);
  EXPECT_EQ(d.Line(199).Type, GT);
  EXPECT_EQ(d.Line(199).Text, "held");
  EXPECT_EQ(d.Line(199).Drive, 3);
}

TEST(UploadProg, ShowsTheLinesTheAxesAndTheLimits) {
  UploadDesk d;
  EXPECT_EQ(UploadProg(d.desk, 1.38F), UploadResult::Done);
  EXPECT_NE(d.source.shown.rows[1].desc, "");
  EXPECT_EQ(d.source.shown.rows[1].icon, IconFor(FL, IconSet::Normal));
  EXPECT_EQ(d.source.shown.rows[4].icon, IconFor(MMI, IconSet::Cyan)) << "the limit's line";
  EXPECT_EQ(d.source.shown.rows[4].state, RowState::LimitTarget);
  EXPECT_EQ(d.source.shown.LimitLine, 5);
  EXPECT_EQ(d.source.shown.arrows.size(), 2U) << "the end of the loop and the jump";
  EXPECT_GE(d.view.drives, 1);
  EXPECT_GE(d.view.limit, 1);
  EXPECT_GE(d.view.arrows, 1);
  EXPECT_EQ(d.view.scrolls, std::vector{0});
}

TEST(UploadProg, TheGaugeFollowsTheBytesAndThenTheLines) {
  UploadDesk d;
  d.piece = 4097;
  d.piece_seconds = 0.01;
  EXPECT_EQ(UploadProg(d.desk, 1.38F), UploadResult::Done);
  const auto& gauges = d.upbox.gauges;
  EXPECT_EQ(d.upbox.first_seen, 10);
  ASSERT_EQ(gauges.size(), 1U + 2 + 200);
  EXPECT_EQ(gauges[0], 10);
  EXPECT_DOUBLE_EQ(gauges[1], 4097.0 / 8192 * 190 + 10);
  EXPECT_DOUBLE_EQ(gauges[2], 8194.0 / 8192 * 190 + 10);
  for (std::size_t line = 0; line < 200; ++line) {
    EXPECT_DOUBLE_EQ(gauges[3 + line], 10 + static_cast<double>(line) * 190 / 199);
  }
  EXPECT_EQ(d.loop.yields, 202);
  EXPECT_EQ(d.upbox.bytes_done, 8194);
  EXPECT_EQ(d.upbox.bytes_total, 8194);
}

TEST(UploadProg, Exactly8194BytesEndTheWaitAtOnce) {
  UploadDesk d;
  const double start = d.clock.now;
  EXPECT_EQ(UploadProg(d.desk, 1.38F), UploadResult::Done);
  EXPECT_EQ(d.clock.now, start);
}

TEST(UploadProg, TheFiveSecondsAreTheWholeTransfers) {
  struct Case {
    double seconds;
    UploadResult result;
  };
  for (const Case& c :
       {Case{4.3, UploadResult::Done}, {4.95, UploadResult::Done}, {5.2, UploadResult::Stopped}}) {
    UploadDesk d;
    d.piece = 82;
    d.piece_seconds = c.seconds / 99;
    const double start = d.clock.now;
    EXPECT_EQ(UploadProg(d.desk, 1.38F), c.result) << c.seconds;
    EXPECT_LE(d.clock.now - start, 5.1);
  }
}

TEST(UploadProg, AnyOtherCountAtTheEndOfTheFiveSecondsFailsAndIsTold) {
  for (const int count : {0, 1, 8193, 8195}) {
    UploadDesk d;
    d.source.Changed = true;
    d.port.threshold = 3;
    d.answer.resize(static_cast<std::size_t>(count));
    const Program before = d.source.program;
    const double start = d.clock.now;
    d.boxes.on_box = [&](const ShownBox&) { EXPECT_TRUE(d.upbox.visible) << "hidden after the box"; };
    EXPECT_EQ(UploadProg(d.desk, 1.38F), UploadResult::Stopped) << count;
    ExpectOneBox(d, StoppedAfter(count));
    ExpectUntouched(d, before);
    EXPECT_GT(d.clock.now - start, 5.0);
    EXPECT_LT(d.clock.now - start, 5.1);
    EXPECT_EQ(d.port.AllSent(), "U") << "nothing is repeated";
    EXPECT_EQ(d.port.RThreshold(), 1);
    EXPECT_FALSE(d.upbox.visible);
    EXPECT_TRUE(d.source.Changed);
    EXPECT_EQ(d.events, 0);
    EXPECT_GT(d.loop.yields, 50) << "the window stays alive in the silence";
  }
}

TEST(UploadProg, ASumThatDiffersLeavesTheProgramAndTheEventsOff) {
  for (const std::size_t at : {0U, 1000U, 6400U, 8191U, 8192U, 8193U}) {
    UploadDesk d;
    d.source.Changed = true;
    d.answer[at] = static_cast<char>(d.answer[at] ^ 1);
    const Program before = d.source.program;
    EXPECT_EQ(UploadProg(d.desk, 1.38F), UploadResult::WrongSum) << at;
    ExpectOneBox(d, kNotCorrect);
    ExpectUntouched(d, before);
    EXPECT_EQ(d.port.RThreshold(), 0);
    EXPECT_FALSE(d.upbox.visible);
    EXPECT_TRUE(d.source.Changed);
    EXPECT_TRUE(d.view.rows.empty());
  }
}

TEST(UploadProg, ALineThatCannotBeReadLeavesTheProgram) {
  UploadDesk d;
  std::string image = Image();
  image.replace(150 * 32, 6, Bytes({SO, 1, 2, 255, 255, 0}));
  d.answer = WithSum(image);
  const Program before = d.source.program;
  EXPECT_EQ(UploadProg(d.desk, 1.38F), UploadResult::CannotDecode);
  ExpectOneBox(d, kNotCorrect);
  ExpectUntouched(d, before);
  EXPECT_FALSE(d.upbox.visible);
  EXPECT_EQ(d.port.RThreshold(), 1);
}

TEST(UploadProg, WhatWaitedBeforeIsThrownAway) {
  UploadDesk d;
  d.port.Reply("stale");
  EXPECT_EQ(UploadProg(d.desk, 1.38F), UploadResult::Done);
}

TEST(UploadProg, NoEventRunsWhileTheBytesCome) {
  UploadDesk d;
  d.piece = 100;
  d.piece_seconds = 0.01;
  bool off = true;
  d.loop.on_yield = [&] { off = off && d.port.RThreshold() == 0; };
  EXPECT_EQ(UploadProg(d.desk, 1.38F), UploadResult::Done);
  EXPECT_TRUE(off);
}

TEST(UploadProg, APortThatVanishesEndsTheWaitAtOnce) {
  UploadDesk d;
  d.answer.resize(500);
  const Program before = d.source.program;
  d.loop.on_yield = [&] { d.port.is_open = false; };
  const double start = d.clock.now;
  EXPECT_EQ(UploadProg(d.desk, 1.38F), UploadResult::Stopped);
  EXPECT_TRUE(d.boxes.shown.empty()) << "what has gone is told once, as the port";
  EXPECT_FALSE(d.upbox.visible);
  ExpectUntouched(d, before);
  EXPECT_EQ(d.clock.now, start);
}

TEST(UploadProg, TheFirmwareDecidesHowTheTestsOfSeveralInputsAreRead) {
  for (const float firmware : {1.08F, 1.09F}) {
    UploadDesk d;
    std::string image = Image();
    image.replace(10 * 32, 7, Bytes({WII, 3, 5, 1, 0, 0x81, 0x81}));
    d.answer = WithSum(image);
    d.Line(10).DrvMask = 0x55;
    EXPECT_EQ(UploadProg(d.desk, firmware), UploadResult::Done);
    EXPECT_EQ(d.Line(10).DrvMask, firmware > 1.08F ? 3 : 0x55);
  }
}

TEST(Upload, StopsTheHubAsksTwiceTransfersAndAsksAgain) {
  UploadDesk d;
  d.port.threshold = 3;
  EXPECT_EQ(Upload(d.desk), UploadResult::Done);
  EXPECT_EQ(d.port.AllSent(), "SCCUC");
  EXPECT_EQ(d.source.program.HubVersion, 1.38F);
  EXPECT_EQ(d.source.link.DriveVersion, "1.38");
  EXPECT_FALSE(d.source.link.Busy);
  EXPECT_FALSE(d.source.Changed);
}

TEST(Upload, FramesTheLinesThatRunBesideAMove) {
  UploadDesk d;
  EXPECT_EQ(Upload(d.desk), UploadResult::Done);
  const auto frames = ChainFramesOf(d.source.program);
  int framed = 0;
  for (int line = 0; line < kLines; ++line) {
    EXPECT_EQ(d.source.shown.rows[line].frame, frames[line]);
    framed += frames[line] == kChainFrame ? 1 : 0;
  }
  EXPECT_GT(framed, 0);
}

TEST(Upload, IsBusyFromTheStopToTheLastQuestion) {
  UploadDesk d;
  bool always = true;
  d.on_command = [&](const std::string&) { always = always && d.source.link.Busy; };
  d.loop.on_yield = [&] { always = always && d.source.link.Busy; };
  EXPECT_EQ(Upload(d.desk), UploadResult::Done);
  EXPECT_TRUE(always);
}

TEST(Upload, KeepsOutWhileAnotherOperationRunsAndKeepsOthersOut) {
  UploadDesk d;
  d.source.link.Busy = true;
  EXPECT_EQ(Upload(d.desk), std::nullopt);
  EXPECT_TRUE(d.port.sent.empty());
  EXPECT_TRUE(d.source.link.Busy);
  d.source.link.Busy = false;
  int refused = 0;
  d.loop.on_yield = [&] {
    if (refused > 0) return;
    EXPECT_EQ(Upload(d.desk), std::nullopt);
    EXPECT_EQ(Execute(d.desk), ExecuteResult::Busy);
    ++refused;
  };
  EXPECT_EQ(Upload(d.desk), UploadResult::Done);
  EXPECT_EQ(refused, 1);
  EXPECT_EQ(d.port.AllSent(), "SCCUC");
}

TEST(Upload, AHubThatDoesNotSayWhoItIsEndsIt) {
  UploadDesk d;
  d.identity = "";
  d.source.Changed = true;
  EXPECT_EQ(Upload(d.desk), std::nullopt);
  EXPECT_EQ(d.port.AllSent(), "SC");
  EXPECT_EQ(d.boxes.shown.size(), 2U) << "the question, and that the hub is silent";
  EXPECT_FALSE(d.source.link.Busy);
  EXPECT_TRUE(d.source.Changed);
  EXPECT_TRUE(d.upbox.gauges.empty());
}

TEST(Upload, ChangesAreOnlyReplacedIfTheOperatorSaysSo) {
  UploadDesk d;
  d.source.Changed = true;
  d.boxes.setNextAnswer(Answer::Cancel);
  EXPECT_EQ(Upload(d.desk), std::nullopt);
  ASSERT_EQ(d.boxes.shown.size(), 1U);
  EXPECT_EQ(
      d.boxes.shown[0],
      (ShownBox{"You have made changes without Saving or Downloading.  Do you really want to upload and "
                "replace your program?",
                "Upload", Buttons::OKCancel, Icon::Question}));
  EXPECT_EQ(d.port.AllSent(), "");
  EXPECT_TRUE(d.source.Changed);
  EXPECT_EQ(Upload(d.desk), UploadResult::Done);
  EXPECT_EQ(Upload(d.desk), UploadResult::Done);
  EXPECT_EQ(d.boxes.shown.size(), 2U) << "what has just been uploaded is asked about no more";
}

TEST(Upload, CanBeTakenBack) {
  UploadDesk d;
  d.Line(3).Type = RT;
  const auto lines = d.source.program.Prog;
  const AxisConfig axes = d.source.program.Axis;
  d.source.file_name = "mine.TVH";
  ASSERT_EQ(Upload(d.desk), UploadResult::Done);
  EXPECT_FALSE(d.source.program.Prog == lines);
  EXPECT_EQ(d.source.history.UndoName(), "upload");
  EXPECT_TRUE(Unsaved(d.source)) << "the file of that name does not hold it";
  static_cast<void>(d.source.history.Undo(d.source.program, d.source.file_name));
  EXPECT_TRUE(d.source.program.Prog == lines);
  EXPECT_TRUE(d.source.program.Axis == axes);
  EXPECT_EQ(d.source.file_name, "mine.TVH");
}

TEST(Upload, AHubThatFallsSilentBeforeItIsAskedAgainEndsIt) {
  UploadDesk d;
  int asked = 0;
  d.on_command = [&](const std::string& bytes) {
    if (bytes == "C" && ++asked == 2) d.identity = "";
  };
  EXPECT_EQ(Upload(d.desk), std::nullopt);
  EXPECT_EQ(d.port.AllSent(), "SCC");
  EXPECT_FALSE(d.source.link.Busy);
}

TEST(Upload, ShowsTheVersionOfADeviceOfUnknownModelAndAsksNothingMoreOfIt) {
  UploadDesk d;
  d.identity = Bytes({5, 99});
  EXPECT_EQ(Upload(d.desk), std::nullopt);
  EXPECT_EQ(d.port.AllSent(), "SCC");
  EXPECT_EQ(d.source.link.DriveVersion, "1.05");
  EXPECT_EQ(d.source.program.HubIndex, HubOcto) << "as it was";
}

TEST(Upload, TheModelIsTheOneThatTheHubSaysItIs) {
  UploadDesk d;
  d.identity = Bytes({38, 24});
  EXPECT_EQ(Upload(d.desk), UploadResult::Done);
  EXPECT_EQ(d.source.program.HubIndex, HubQuad);
  EXPECT_EQ(d.source.program.Axis.AxisName[1], "Lift");
}

TEST(Upload, AfterAFailureTheHubIsAskedAgainAndNothingIsBusy) {
  UploadDesk d;
  d.answer.pop_back();
  d.answer += static_cast<char>(~WithSum(Image()).back());
  d.source.Changed = true;
  EXPECT_EQ(Upload(d.desk), UploadResult::WrongSum);
  EXPECT_EQ(d.port.AllSent(), "SCCUC");
  EXPECT_EQ(d.port.RThreshold(), 0) << "until the next command";
  EXPECT_FALSE(d.source.link.Busy);
  EXPECT_TRUE(d.source.Changed);
}

}  // namespace
}  // namespace tavlo::testing
