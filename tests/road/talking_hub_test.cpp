// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
// A hub that talks when it is asked who it is: what was still on its way must never pass for its answer.
#include "road/talking_hub.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <functional>
#include <random>

#include "link/download.h"
#include "link/execution.h"
#include "link/upload.h"
#include "support/sim_desk.h"

namespace tavlo::testing {
namespace {

constexpr int kRuns = 304;
constexpr unsigned kSeed = 7;
constexpr std::string_view kHalfMessage = "\xf1\x03";

hubsim::HubOptions Talker() {
  hubsim::HubOptions options;
  options.firmware = kTalkersFirmware;
  return options;
}

/// A session at a hub that talks, on a line with a pace and a latency.
struct TalkDesk : SimDesk {
  TalkDesk(Talk talk, double latency_s) : SimDesk(Talker(), {true, latency_s}) {
    WriteTalker(source.program, talk);
    told = Download(road);
    StartTalk(
        sim.hub, talk, [this](std::string_view command) { sim.Output(command); },
        [this](double seconds) {
          // Whoever left the hub had acknowledged its lines.
          source.link.Stopped = false;
          sim.RunEventLoop(seconds);
        });
    boxes.shown.clear();
  }
  std::optional<DownloadResult> told;
};

/// One operation, the whole of it right.
using HubOperation = std::function<void(TalkDesk&)>;

void ExpectRightHub(const TalkDesk& d) {
  EXPECT_EQ(d.source.program.HubVersion, 1.4F);
  EXPECT_EQ(d.source.link.DriveVersion, "1.40");
  EXPECT_EQ(d.source.program.HubIndex, HubOcto);
  EXPECT_TRUE(d.boxes.shown.empty()) << d.boxes.shown[0].text;
}

/// Runs it at moments of every kind of talk, with each latency.
void RunWhileItTalks(const char* name, const HubOperation& operation) {
  std::mt19937 random(kSeed);
  std::uniform_real_distribution<double> moment(0, 0.2);
  int runs = 0;
  while (runs < kRuns) {
    for (const Talk talk : kTalks) {
      for (const double latency : kLatencies) {
        SCOPED_TRACE(std::string(NameOf(talk)) + ", latency " + std::to_string(latency) + ", run " +
                     std::to_string(runs));
        TalkDesk d(talk, latency);
        ASSERT_EQ(d.told, DownloadResult::Done);
        ASSERT_NE(d.sim.hub.State(), hubsim::HubState::Idle);
        d.sim.RunEventLoop(moment(random));
        if (talk == Talk::HalfMessage) d.sim.hub.Say(kHalfMessage);
        operation(d);
        ExpectRightHub(d);
        if (::testing::Test::HasFailure()) return;
        ++runs;
      }
    }
  }
  std::printf("%s: %d runs against a talking hub, seed %u, no identity misread\n", name, runs, kSeed);
}

TEST(TalkingHub, IsKnownForWhatItIsByADownload) {
  RunWhileItTalks("Download", [](TalkDesk& d) { EXPECT_EQ(Download(d.road), DownloadResult::Done); });
}

TEST(TalkingHub, IsKnownForWhatItIsByAnUpload) {
  RunWhileItTalks("Upload", [](TalkDesk& d) { EXPECT_EQ(Upload(d.road), UploadResult::Done); });
}

TEST(TalkingHub, IsKnownForWhatItIsByARun) {
  RunWhileItTalks("Execute", [](TalkDesk& d) {
    d.run.on_show = [&d](RunWindow window) {
      EXPECT_EQ(window, RunWindow::fakeMMI);
      StartRun(d.road, window);
      StopRun(d.road, window);
    };
    EXPECT_EQ(Execute(d.road), ExecuteResult::Ran);
  });
}

/// The counts above prove something only if the hub really talks at those moments.
TEST(TalkingHub, HasSomethingOnItsWayAtMostMoments) {
  for (const Talk talk : kTalks) {
    int talking = 0;
    for (int moment = 0; moment < 40; ++moment) {
      TalkDesk d(talk, 0.016);
      d.sim.RunEventLoop(moment * 0.005);
      if (talk == Talk::HalfMessage) d.sim.hub.Say(kHalfMessage);
      d.sim.RThreshold(0);
      static_cast<void>(d.sim.Input());
      d.sim.Output("S");
      d.sim.WaitForInput(0.025);
      talking += d.sim.InBufferCount() > 0 ? 1 : 0;
    }
    EXPECT_GE(talking, 10) << NameOf(talk);
  }
}

}  // namespace
}  // namespace tavlo::testing
