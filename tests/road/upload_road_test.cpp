// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
// The way back in memory: what was sent to the simulated hub is read from it.
#include <gtest/gtest.h>

#include "codegen/compile.h"
#include "codegen/decode.h"
#include "link/com_port.h"
#include "link/download.h"
#include "link/drive_check.h"
#include "link/upload.h"
#include "model/program_queries.h"
#include "programs.h"
#include "support/new_program.h"
#include "support/send_program.h"
#include "support/sim_desk.h"

namespace tavlo::testing {
namespace {

/// A desk whose hub holds this program, and whose own program is a fresh one.
struct UploadRoad : SimDesk {
  explicit UploadRoad(const Program& program) : SimDesk(OptionsFor(program)) {
    source.program = program;
    EXPECT_FALSE(CheckDrive(road).empty());
    source.program.MMIused = ProgHasMMI(program);
    EXPECT_EQ(SendProgram(road, source.program.HubVersion), DownloadResult::Done);
    sent = source.program;
    InitSession(source);
    source.link.ComNum = 1;
    source.Changed = true;
    EXPECT_TRUE(boxes.shown.empty());
  }

  /// Uploads, and says yes to the question before its changes are replaced.
  std::optional<UploadResult> Take() {
    const auto result = Upload(road);
    std::erase_if(boxes.shown, [](const ShownBox& box) { return box.title == "Upload"; });
    return result;
  }
  void Fail(const char* mode) {
    const auto plan = hubsim::ParseFailure(mode);
    ASSERT_TRUE(plan) << mode;
    sim.hub.SetFailure(*plan);
  }
  [[nodiscard]] std::string ImageInHub() const {
    const auto bytes = sim.hub.MemoryImage();
    return {reinterpret_cast<const char*>(bytes.data()), kImageBytes};
  }

  Program sent;
};

const Program& AnyExample() {
  static const Program kProgram = examples::ExamplePrograms().front().program;
  return kProgram;
}

void ExpectSame(const Program& program, const Program& expected) {
  for (int line = 0; line < kLines; ++line) {
    EXPECT_TRUE(program.Prog[line] == expected.Prog[line]) << "line " << line + 1;
  }
  EXPECT_TRUE(program.Axis == expected.Axis);
  EXPECT_EQ(program.LimitList, expected.LimitList);
  EXPECT_EQ(program.LimitBranch, expected.LimitBranch);
}

TEST(UploadRoad, EveryExampleComesBackFromTheHubThatItWasSentTo) {
  for (const auto& example : examples::ExamplePrograms()) {
    SCOPED_TRACE(example.file_name);
    UploadRoad d(example.program);
    EXPECT_EQ(d.Take(), UploadResult::Done);
    ASSERT_TRUE(d.boxes.shown.empty()) << d.boxes.shown.front().text;
    Program expected = NewProgram();
    expected.HubVersion = d.sent.HubVersion;
    DecodeImage(expected, ImageOf(CompileProgram(d.sent)));
    ExpectSame(d.source.program, expected);
    EXPECT_EQ(d.source.program.HubIndex, example.program.HubIndex);
    for (int line = 0; line < kLines; ++line) {
      EXPECT_EQ(d.source.program.Prog[line].Type, example.program.Prog[line].Type) << "line " << line + 1;
    }
    EXPECT_FALSE(d.source.Changed);
    EXPECT_FALSE(d.source.link.Busy);
    EXPECT_FALSE(d.upbox.visible);
  }
}

struct UploadFailure {
  const char* mode;
  UploadResult result;
  const char* text;
};

constexpr const char* kNotCorrect =
    "Your program did not upload correctly.  Make sure the cable connections are secure and that you are not "
    "working around electrical noise, such as a welder, a high powered motor or big relays.";

constexpr UploadFailure kUploadFailures[] = {
    {"silent-u", UploadResult::Stopped,
     "The Tavlo Hub stopped responding after 0 chars.  Is it connected to the right port and turned on?"},
    {"short-u:1", UploadResult::Stopped,
     "The Tavlo Hub stopped responding after 1 chars.  Is it connected to the right port and turned on?"},
    {"short-u:6400", UploadResult::Stopped,
     "The Tavlo Hub stopped responding after 6400 chars.  Is it connected to the right port and turned on?"},
    {"short-u:8193", UploadResult::Stopped,
     "The Tavlo Hub stopped responding after 8193 chars.  Is it connected to the right port and turned on?"},
    {"wrong-u", UploadResult::WrongSum, kNotCorrect}};

TEST(UploadRoad, AFailureIsToldLeavesTheProgramAndTheNextUploadWorks) {
  for (const UploadFailure& c : kUploadFailures) {
    SCOPED_TRACE(c.mode);
    UploadRoad d(AnyExample());
    d.Line(7).Text = "mine";
    const Program before = d.source.program;
    d.Fail(c.mode);
    EXPECT_EQ(d.Take(), c.result);
    ASSERT_EQ(d.boxes.shown.size(), 1U);
    EXPECT_EQ(d.boxes.shown[0].text, c.text);
    ExpectSame(d.source.program, before);
    EXPECT_TRUE(d.source.Changed);
    EXPECT_FALSE(d.source.link.Busy);
    EXPECT_FALSE(d.upbox.visible);
    d.Fail("none");
    EXPECT_EQ(d.Take(), UploadResult::Done);
    EXPECT_EQ(d.boxes.shown.size(), 1U);
    EXPECT_EQ(d.sim.RThreshold(), 1);
  }
}

TEST(UploadRoad, AHubThatIsSilentFromTheStartEndsItBeforeTheTransfer) {
  UploadRoad d(AnyExample());
  d.Fail("silent-c");
  EXPECT_EQ(d.Take(), std::nullopt);
  ASSERT_EQ(d.boxes.shown.size(), 1U);
  EXPECT_TRUE(d.upbox.gauges.empty());
  EXPECT_FALSE(d.source.link.Busy);
}

TEST(UploadRoad, ACableThatComesOffInTheMiddleEndsItWithTheProgramAsItWas) {
  // Three bytes go to the hub before the command, and two identities of two come before the image.
  for (const char* mode : {"unplug-tx:5", "unplug-tx:4000", "unplug-tx:8197", "unplug:3"}) {
    SCOPED_TRACE(mode);
    UploadRoad d(AnyExample());
    const Program before = d.source.program;
    d.Fail(mode);
    const double start = d.clock.now;
    EXPECT_EQ(d.Take(), UploadResult::Stopped);
    EXPECT_TRUE(d.boxes.shown.empty()) << d.boxes.shown[0].text;
    TellPortLost(d.road);
    ASSERT_EQ(d.boxes.shown.size(), 1U);
    EXPECT_TRUE(d.boxes.shown[0].text.starts_with("Comm 1 has gone.  Check the cable"))
        << d.boxes.shown[0].text;
    ExpectSame(d.source.program, before);
    EXPECT_LT(d.clock.now - start, 8.0);
    EXPECT_FALSE(d.source.link.Busy);
    EXPECT_FALSE(d.upbox.visible);
    d.Fail("none");
    d.sim.hub.Replug();
    d.source.link.ComNum = 1;
    EXPECT_EQ(d.Take(), UploadResult::Done);
  }
}

TEST(UploadRoad, AnUploadStopsAProgramThatRuns) {
  UploadRoad d(AnyExample());
  d.road.Comm1.Output("E");
  d.sim.RunEventLoop(0.2);
  d.road.Comm1.Output("X");
  d.sim.RunEventLoop(0.05);
  EXPECT_EQ(d.sim.hub.State(), hubsim::HubState::Running);
  EXPECT_EQ(d.Take(), UploadResult::Done);
  EXPECT_NE(d.sim.hub.State(), hubsim::HubState::Running);
  EXPECT_TRUE(d.boxes.shown.empty());
}

}  // namespace
}  // namespace tavlo::testing
