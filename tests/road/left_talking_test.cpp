// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
// A hub that was left alone in the middle of something: it goes on unasked, breaks off or stalls.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <iostream>
#include <string>
#include <string_view>

#include "hubsim/wire/failure.h"
#include "link/download.h"
#include "link/drive_check.h"
#include "link/polled.h"
#include "support/sim_desk.h"

namespace tavlo::testing {
namespace {

constexpr std::array<double, 4> kLatencies{0, 0.001, 0.004, 0.016};

/// A session at the end of a line with the pace of the wire.
struct PacedDesk : SimDesk {
  explicit PacedDesk(double latency_s = 0) : SimDesk({}, {true, latency_s}) {}
};

/// What a hub that somebody left is in the middle of.
struct LeftTalk {
  std::string_view name;
  std::string_view start;    ///< what was sent to it; "M" starts the program for the operator terminal
  std::string_view failure;  ///< its failure mode, as on the command line
};

constexpr std::array<LeftTalk, 8> kLeftTalks{{
    {"paused, with status ten times a second", "XP", "none"},
    {"paused on the operator terminal", "MP", "none"},
    {"running with line events", "X", "hasty:5"},
    {"writing one prompt after the other", "M", "hasty:40"},
    {"silent behind a header", "XP", "cut-run:5"},
    {"silent behind two bytes of a message", "XP", "cut-run:14"},
    {"silent before the last byte of a message", "XP", "cut-run:27"},
    {"stalled behind two bytes of a message", "XP", "stall-run:6"},
}};

/// Downloads a program that shows a long prompt over and over, starts it as told, and leaves the hub alone
/// for `seconds`: nothing it says is acknowledged. Gives what has arrived by then, of which the line keeps
/// nothing.
std::string LeaveTalking(PacedDesk& desk, const LeftTalk& talk, double seconds) {
  const std::string text(80, 't');
  desk.source.program.Axis.DriveModel.fill(11);
  for (const int line : {0, 1}) {
    desk.Line(line).Type = MMI;
    desk.Line(line).SubType = 3;
    desk.Line(line).Text = text;
  }
  desk.Line(2).Type = GT;
  desk.Line(2).LineNum = 0;
  EXPECT_EQ(Download(desk.road), DownloadResult::Done);
  // The drives' set-up is still on its way.
  desk.sim.RunEventLoop(1);
  desk.sim.hub.SetFailure(hubsim::ParseFailure(talk.failure).value());
  const int threshold = desk.sim.RThreshold();
  desk.sim.RThreshold(0);
  desk.sim.Output(talk.start);
  desk.sim.RunEventLoop(seconds);
  desk.sim.RThreshold(threshold);
  desk.sim.sent.clear();
  return desk.sim.Input();
}

/// What a hub says in the `seconds` from now on, if nobody answers.
std::string Overhear(PacedDesk& desk, double seconds) {
  desk.sim.RThreshold(0);
  desk.sim.RunEventLoop(seconds);
  return desk.sim.Input();
}

TEST(HubLeftTalking, AHubThatWasLeftTalkingGoesOn) {
  for (const std::size_t talk : {0U, 1U, 2U, 3U}) {
    for (const double latency : {0.0, 0.001, 0.004, 0.016}) {
      SCOPED_TRACE(kLeftTalks[talk].name);
      PacedDesk desk(latency);
      EXPECT_FALSE(LeaveTalking(desk, kLeftTalks[talk], 1).empty());
      EXPECT_GT(Overhear(desk, 0.3).size(), 100U) << "it speaks for a good part of the time";
    }
  }
}

TEST(HubLeftTalking, APausedOneTellsOfAllDrivesTenTimesASecond) {
  PacedDesk desk;
  LeaveTalking(desk, kLeftTalks[0], 1);
  constexpr std::size_t kDrives = 8;
  constexpr std::size_t kStatusBytes = 12;
  EXPECT_NEAR(static_cast<double>(Overhear(desk, 10).size()), 100 * kDrives * kStatusBytes,
              kDrives * kStatusBytes);
}

TEST(HubLeftTalking, APromptIsOnItsWayMostOfTheTime) {
  PacedDesk desk;
  LeaveTalking(desk, kLeftTalks[3], 1);
  const std::string said = Overhear(desk, 1);
  EXPECT_GT(std::ranges::count(said, 't'), 1000);
}

TEST(HubLeftTalking, AHubFallsSilentInTheMiddleOfAMessage) {
  for (const auto& [talk, bytes] : {std::pair{4U, 5U}, std::pair{5U, 14U}, std::pair{6U, 27U}}) {
    SCOPED_TRACE(kLeftTalks[talk].name);
    PacedDesk desk;
    EXPECT_EQ(LeaveTalking(desk, kLeftTalks[talk], 1).size(), bytes);
    EXPECT_EQ(Overhear(desk, 1), "");
  }
}

TEST(HubLeftTalking, AStalledHubSaysTheRestLater) {
  PacedDesk desk;
  EXPECT_EQ(LeaveTalking(desk, kLeftTalks[7], 0.01).size(), 6U);
  EXPECT_EQ(Overhear(desk, 0.01), "");
  const std::string rest = Overhear(desk, 0.02);
  ASSERT_GT(rest.size(), 2U);
  EXPECT_LT(static_cast<unsigned char>(rest[0]), 128) << "the message goes on";
  EXPECT_LT(static_cast<unsigned char>(rest[1]), 128);
  EXPECT_GE(static_cast<unsigned char>(rest[2]), 128) << "and the next one follows";
}

TEST(HubLeftTalking, EveryTalkEndsWithTheStop) {
  for (const LeftTalk& talk : kLeftTalks) {
    SCOPED_TRACE(talk.name);
    PacedDesk desk(0.016);
    LeaveTalking(desk, talk, 1);
    desk.sim.RThreshold(0);
    desk.sim.Output("S");
    desk.sim.RunEventLoop(0.5);
    (void)desk.sim.Input();
    EXPECT_EQ(Overhear(desk, 1), "");
    desk.sim.Output("C");
    EXPECT_EQ(Overhear(desk, 0.1), "\x26\x08");
  }
}

/// Leaves the hub in the talk again and again, stops it at ever another moment and asks it who it is. Gives
/// how often it was misheard.
int Misheard(const LeftTalk& talk, double latency, int runs, void (*stop)(const Link&)) {
  const bool stalls = talk.failure.starts_with("stall");
  PacedDesk desk(latency);
  int misheard = 0;
  for (int run = 0; run < runs; ++run) {
    if (run == 0) {
      LeaveTalking(desk, talk, 1);
    } else {
      desk.sim.hub.SetFailure(hubsim::ParseFailure(talk.failure).value());
      desk.sim.Output(talk.start);
    }
    // A stall is over soon; what else is said goes on and on.
    Overhear(desk, stalls ? run * 0.0004 : 0.3 + run * 0.00137);
    stop(desk.road.link());
    if (CheckDrive(desk.road) != "\x26\x08") ++misheard;
    Overhear(desk, 0.5);
  }
  return misheard;
}

TEST(HubLeftTalking, IsNeverMisheardOnceItHasSaidItsLast) {
  constexpr int kRuns = 75;
  int asked = 0;
  int misheard = 0;
  for (const LeftTalk& talk : kLeftTalks) {
    for (const double latency : kLatencies) {
      const int wrong = Misheard(talk, latency, kRuns, StopHub);
      EXPECT_EQ(wrong, 0) << talk.name << ", " << latency << " s";
      misheard += wrong;
      asked += kRuns;
    }
  }
  std::cout << "a talking hub was asked " << asked << " times who it is, and misheard " << misheard
            << " times\n";
}

TEST(HubLeftTalking, IsMisheardByWhoDoesNotWaitForItsLast) {
  for (const std::size_t talk : {0U, 1U, 2U, 3U, 7U}) {
    int misheard = 0;
    for (const double latency : kLatencies) misheard += Misheard(kLeftTalks[talk], latency, 20, SayStop);
    EXPECT_GT(misheard, 10) << kLeftTalks[talk].name << ": otherwise the test above would prove nothing";
  }
}

}  // namespace
}  // namespace tavlo::testing
