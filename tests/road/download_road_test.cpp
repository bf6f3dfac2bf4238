// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
// The whole road in memory: a program on the desk, the link, and the simulated hub at the other end.
#include <gtest/gtest.h>

#include "codegen/compile.h"
#include "link/com_port.h"
#include "link/download.h"
#include "link/drive_check.h"
#include "model/program_file.h"
#include "model/program_queries.h"
#include "programs.h"
#include "support/sim_desk.h"

namespace tavlo::testing {
namespace {

std::string ImageInHub(const SimPort& port) {
  const auto bytes = port.hub.MemoryImage();
  return {reinterpret_cast<const char*>(bytes.data()), kImageBytes};
}

/// The lines and settings are compared whole; the pool as far as it was sent, because the hub keeps
/// whatever stood behind its end.
void ExpectHubHolds(const SimDesk& desk, Program program) {
  const std::string image = ImageOf(CompileProgram(program));
  const std::string hub = ImageInHub(desk.sim);
  for (int line = 0; line < kLines; ++line) {
    const std::size_t at = static_cast<std::size_t>(line) * kSlotBytes;
    EXPECT_EQ(hub.substr(at, kSlotBytes), image.substr(at, kSlotBytes)) << "line " << line + 1;
  }
  EXPECT_TRUE(hub.substr(kLines * kSlotBytes) == image.substr(kLines * kSlotBytes));
}

TEST(DownloadRoad, EveryExampleStandsInTheHubByteForByteAndIsProvenByItsSum) {
  for (const auto& example : examples::ExamplePrograms()) {
    SCOPED_TRACE(example.file_name);
    SimDesk desk(OptionsFor(example.program));
    desk.source.program = example.program;
    const auto result = Download(desk.road);
    ASSERT_TRUE(desk.boxes.shown.empty()) << desk.boxes.shown.front().text;
    EXPECT_EQ(result, DownloadResult::Done);
    Program expected = example.program;
    expected.HubVersion = desk.source.program.HubVersion;
    expected.MMIused = ProgHasMMI(expected);
    ExpectHubHolds(desk, expected);
    EXPECT_FALSE(desk.source.Changed);
    EXPECT_FALSE(desk.source.link.Busy);
    EXPECT_FALSE(desk.downbox.visible);
  }
}

TEST(DownloadRoad, TheFirmwareDecidesTheFormOfTheTestsOfSeveralInputs) {
  for (const int firmware : {6, 8, 9, 19, 38}) {
    SCOPED_TRACE(firmware);
    hubsim::HubOptions options;
    options.firmware = static_cast<std::uint8_t>(firmware);
    SimDesk desk(options);
    desk.source.program = examples::ExamplePrograms().back().program;
    EXPECT_EQ(Download(desk.road), DownloadResult::Done);
    EXPECT_EQ(desk.source.program.HubVersion, RevisionOf(static_cast<unsigned char>(firmware)));
    const bool configured = desk.sim.sent.find("0HM\r") != std::string::npos;
    EXPECT_EQ(configured, firmware >= 19);
  }
}

TEST(DownloadRoad, APoolLargerThanTheHubsIsSummedAndAcknowledgedAndTheRestNotKept) {
  SimDesk desk;
  for (int line = 0; line < 100; ++line) {
    desk.Line(line).Type = MMI;
    desk.Line(line).Text = std::string(20, static_cast<char>('a' + line % 26));
  }
  EXPECT_EQ(Download(desk.road), DownloadResult::Done);
  EXPECT_TRUE(desk.boxes.shown.empty());
}

struct DownloadFailure {
  const char* mode;
  std::optional<DownloadResult> result;
  const char* text;
  Icon icon;
};

const DownloadFailure kDownloadFailures[] = {
    {"silent-c", std::nullopt,
     "The Tavlo Hub is not communicating.  Is it connected to the right port and turned on?  Do you have the "
     "right "
     "comm port selected?  Perhaps cycling power will help.",
     Icon::Question},
    {"one-byte-c", std::nullopt,
     "The Tavlo Hub is not communicating.  Is it connected to the right port and turned on?  Do you have the "
     "right "
     "comm port selected?  Perhaps cycling power will help.",
     Icon::Question},
    {"silent-f", DownloadResult::NoAnswer,
     "The Tavlo Hub is not responding to the Download command.  Is it connected to the right port and turned "
     "on?",
     Icon::Question},
    {"late-f", DownloadResult::NoAnswer,
     "The Tavlo Hub is not responding to the Download command.  Is it connected to the right port and turned "
     "on?",
     Icon::Question},
    {"silent-line:1", DownloadResult::StoppedInLines,
     "The Tavlo Hub has stopped responding during transfer of program line 1. Is it connected and turned on?",
     Icon::Question},
    {"silent-line:200", DownloadResult::StoppedInLines,
     "The Tavlo Hub has stopped responding during transfer of program line 200. Is it connected and turned "
     "on?",
     Icon::Question},
    {"noise-line:17", DownloadResult::StoppedInLines,
     "The Tavlo Hub has stopped responding during transfer of program line 17. Is it connected and turned "
     "on?",
     Icon::Question},
    {"silent-system:8", DownloadResult::StoppedInSystem,
     "The Tavlo Hub has stopped responding during system info transfer.", Icon::Question},
    {"silent-pool:1", DownloadResult::StoppedInPool,
     "The Tavlo Hub has stopped responding during string pool transfer.", Icon::Question},
    {"no-sum", DownloadResult::NoSum,
     "The Tavlo Hub did not provide a checksum.  There may be a problem with the download.", Icon::None},
    {"short-sum", DownloadResult::NoSum,
     "The Tavlo Hub did not provide a checksum.  There may be a problem with the download.", Icon::None},
    {"long-sum", DownloadResult::NoSum,
     "The Tavlo Hub did not provide a checksum.  There may be a problem with the download.", Icon::None},
    {"wrong-sum", DownloadResult::WrongSum,
     "Your program did not download correctly.  Make sure the cable connections are secure, less than 50 "
     "feet long, "
     "and that you are not working around electrical noise, such as a welder, a high powered motor or big "
     "relays.",
     Icon::None},
};

TEST(DownloadRoad, EachFailureOfTheHubIsToldInItsWordsAndTheNextDownloadSucceeds) {
  for (const DownloadFailure& failure : kDownloadFailures) {
    SCOPED_TRACE(failure.mode);
    hubsim::HubOptions options;
    const auto plan = hubsim::ParseFailure(failure.mode);
    ASSERT_TRUE(plan.has_value());
    options.failure = *plan;
    SimDesk desk(options);
    desk.source.program = examples::ExamplePrograms().front().program;
    EXPECT_EQ(Download(desk.road), failure.result);
    ASSERT_EQ(desk.boxes.shown.size(), 1u);
    EXPECT_EQ(desk.boxes.shown[0].text, failure.text);
    EXPECT_EQ(desk.boxes.shown[0].icon, failure.icon);
    EXPECT_FALSE(desk.source.link.Busy);
    EXPECT_FALSE(desk.downbox.visible);
    EXPECT_EQ(desk.sim.RThreshold(), 1);

    desk.sim.hub.SetFailure({});
    desk.sim.RunEventLoop(2);
    EXPECT_EQ(Download(desk.road), DownloadResult::Done);
    EXPECT_EQ(desk.boxes.shown.size(), 1u);
  }
}

TEST(DownloadRoad, ACableThatIsPulledEndsTheDownloadAtOnceWithItsMessage) {
  Program compiled_copy = examples::ExamplePrograms().front().program;
  compiled_copy.HubVersion = 1.38F;
  const CompiledProgram compiled = CompileProgram(compiled_copy);
  std::size_t all = compiled.system.size() + compiled.pool.size();
  for (const std::string& line : compiled.lines) all += line.size();
  for (std::size_t byte = 3; byte < all; byte += 17) {
    SCOPED_TRACE(byte);
    hubsim::HubOptions options;
    options.failure = *hubsim::ParseFailure("unplug:" + std::to_string(byte));
    SimDesk desk(options);
    desk.source.program = examples::ExamplePrograms().front().program;
    const Program before = desk.source.program;
    const double start = desk.clock.now;
    EXPECT_NE(Download(desk.road), DownloadResult::Done);
    // The event loop's next turn.
    TellPortLost(desk.road);
    ASSERT_EQ(desk.boxes.shown.size(), 1u);
    EXPECT_TRUE(desk.boxes.shown[0].text.starts_with("Comm 1 has gone.  Check the cable"))
        << desk.boxes.shown[0].text;
    EXPECT_LT(desk.clock.now - start, 2.5);
    EXPECT_EQ(desk.source.program.Prog, before.Prog);
    EXPECT_FALSE(desk.source.link.Busy);
  }
}

}  // namespace
}  // namespace tavlo::testing
