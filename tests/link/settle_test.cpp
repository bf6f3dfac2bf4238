// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <gtest/gtest.h>

#include "link/download.h"
#include "link/drive_check.h"
#include "link/execution.h"
#include "link/polled.h"
#include "link/receive.h"
#include "link/scripted_hub.h"
#include "link/upload.h"
#include "support/send_program.h"

namespace tavlo::testing {
namespace {

/// How long it took to stop a hub whose bytes come so many seconds after the "S".
double SecondsToStop(FakeDesk& d, const std::vector<double>& arrivals) {
  d.port.on_output = [&](const std::string&) {
    for (const double when : arrivals) d.port.Reply("x", when);
  };
  const double start = d.clock.now;
  StopHub(d.desk.link());
  return d.clock.now - start;
}

TEST(StopHub, WaitsAsLongAsTheLineTalks) {
  struct Case {
    const char* name;
    std::vector<double> arrivals;
    double seconds;
  };
  std::vector<double> endless;
  for (int i = 1; i < 200; ++i) endless.push_back(i * 0.01);
  for (const Case& c : {
           Case{"a silent line", {}, 0.025},
           Case{"what comes too late to be waited for", {0.026}, 0.025},
           Case{"a byte at once", {0}, 0.050},
           Case{"a byte in the first silence", {0.020}, 0.070},
           Case{"a pause shorter than the second silence", {0.020, 0.065}, 0.115},
           Case{"a pause longer than it", {0.020, 0.075}, 0.070},
           Case{"a line that never rests", endless, 0.5},
       }) {
    FakeDesk d;
    EXPECT_NEAR(SecondsToStop(d, c.arrivals), c.seconds, 0.002) << c.name;
    EXPECT_EQ(d.port.AllSent(), "S") << c.name;
    EXPECT_EQ(d.port.InBufferCount(), 0) << c.name;
  }
}

TEST(StopHub, HandsNothingToTheReceiveEventAndLeavesItAsItWas) {
  for (const int before : {0, 1, 3}) {
    FakeDesk d;
    d.port.threshold = before;
    d.port.on_output = [&](const std::string&) { EXPECT_EQ(d.port.RThreshold(), 0); };
    StopHub(d.desk.link());
    EXPECT_EQ(d.port.RThreshold(), before);
    EXPECT_EQ(d.loop.yields, 0);
  }
}

TEST(StopHub, EndsWhateverTheClockRoundsAway) {
  for (int i = 0; i < 2000; ++i) {
    FakeDesk d;
    // Far from midnight of the first day: the clock and its seconds of the day round differently.
    d.clock.now = 86400.0 * (1 + i % 40) + i * 17.159;
    EXPECT_NEAR(SecondsToStop(d, {i * 1e-5}), 0.05 + i * 1e-5, 0.003) << i;
  }
}

TEST(StopHub, EndsAtMidnightAndWhenThePortGoes) {
  FakeDesk midnight;
  midnight.clock.now = 86399.99;
  EXPECT_LT(SecondsToStop(midnight, {0.005, 0.02}), 0.6);
  FakeDesk gone;
  gone.port.on_output = [&](const std::string&) { gone.port.is_open = false; };
  const double start = gone.clock.now;
  StopHub(gone.desk.link());
  EXPECT_EQ(gone.clock.now, start);
}

TEST(StopHub, OpensEveryOperationBeforeTheHubIsAskedWhoItIs) {
  const std::vector<std::function<void(Desk&)>> operations = {
      [](Desk& desk) { static_cast<void>(Download(desk)); },
      [](Desk& desk) { static_cast<void>(Upload(desk)); },
      [](Desk& desk) { static_cast<void>(Execute(desk)); },
  };
  for (const auto& operation : operations) {
    FakeDesk d;
    ScriptedHub hub(d.port);
    const auto answer = d.port.on_output;
    std::vector<double> asked;
    d.port.on_output = [&](const std::string& bytes) {
      // Its last words look like the identity of another hub.
      if (bytes == "S") d.port.Reply("\x0f\x18", 0.02);
      if (bytes == "C") asked.push_back(d.clock.now);
      answer(bytes);
    };
    const double start = d.clock.now;
    operation(d.desk);
    ASSERT_FALSE(asked.empty());
    EXPECT_NEAR(asked[0] - start, 0.07, 0.002);
    EXPECT_EQ(d.source.link.DriveVersion, "1.38");
    EXPECT_EQ(d.source.program.HubIndex, HubOcto);
    EXPECT_TRUE(d.port.AllSent().starts_with("SC"));
  }
}

TEST(DropInput, ForgetsHalfAMessageWheneverTheBufferIsFlushed) {
  const std::vector<std::function<void(Desk&)>> flushes = {
      [](Desk& desk) { StopHub(desk.link()); },
      [](Desk& desk) { static_cast<void>(SendCommand(desk.link(), "C")); },
      [](Desk& desk) { static_cast<void>(SendProgram(desk, 1.38F)); },
      [](Desk& desk) { static_cast<void>(ReadImage(desk.link(), desk.uploading())); },
      [](Desk& desk) { ConfigDSPdrives(desk.program(), desk.link()); },
      [](Desk& desk) { StartRun(desk, RunWindow::ExecStatus); },
      [](Desk& desk) { StartRun(desk, RunWindow::fakeMMI); },
  };
  for (std::size_t i = 0; i < flushes.size(); ++i) {
    FakeDesk d;
    d.port.OnComm = [&d] { NewOnComm(d.desk); };
    d.port.Receive(Bytes({254, 0}));
    ASSERT_TRUE(d.source.link.InMsg);
    flushes[i](d.desk);
    d.port.threshold = 1;
    d.source.link.Stopped = false;
    d.view.scrolls.clear();
    // Taken for the end of the old message, these would light line 6.
    d.port.Receive(Bytes({5, 0}) + Bytes({254, 1, 2, 0}));
    EXPECT_EQ(d.view.scrolls, std::vector<int>{18}) << i;
  }
}

TEST(UnknownHub, BeginsNeitherDownloadNorUploadNorRunAndLeavesTheChanges) {
  const std::vector<std::function<bool(Desk&)>> refused = {
      [](Desk& desk) { return Download(desk) == std::nullopt; },
      [](Desk& desk) { return Upload(desk) == std::nullopt; },
      [](Desk& desk) { return Execute(desk) == ExecuteResult::UnknownHub; },
  };
  for (const auto& is_refused : refused) {
    FakeDesk d;
    ScriptedHub hub(d.port);
    hub.model = 16;
    d.source.Changed = true;
    d.source.program.HubIndex = HubQuad;
    // The questions before a changed program is run or replaced are answered with the first button.
    EXPECT_TRUE(is_refused(d.desk));
    ASSERT_FALSE(d.boxes.shown.empty());
    EXPECT_EQ(d.boxes.shown.back(),
              (ShownBox{"Unknown device detected on comm port.", "Unknown device", Buttons::OK, Icon::None}));
    EXPECT_EQ(d.port.AllSent().find_first_not_of("SC"), std::string::npos) << d.port.AllSent();
    EXPECT_TRUE(d.source.Changed);
    EXPECT_FALSE(d.source.link.Busy);
    EXPECT_EQ(d.source.program.HubIndex, HubQuad);
  }
}

}  // namespace
}  // namespace tavlo::testing
