// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/companion.h"

namespace tavlo::testing {
namespace {

class Stop : public Companion {
 protected:
  Stop() {
    Line(1).Type = FL;
    Line(1).Dist = 2000000;
  }
  Outcome StopIt() { return Tavlo({"stop", "--port", "1"}); }
  const Outcome stopped_{0, "Sent the stop to the hub\n", ""};
};

TEST_F(Stop, StopsAMachineAndAsksNothing) {
  PutIntoHub();
  hub.port.Output("X");
  hub.port.Output("I");
  hub.clock.now += 1;
  hub.port.hub.Advance(hub.clock.now);
  ASSERT_TRUE(hub.port.hub.Axis(0).moving);
  hub.port.sent.clear();
  EXPECT_EQ(StopIt(), stopped_);
  EXPECT_EQ(hub.port.sent, "S");
  EXPECT_EQ(hub.port.hub.State(), hubsim::HubState::Idle);
}

TEST_F(Stop, NeedsNoAnswer) {
  hub.port.hub.SetFailure({hubsim::Failure::SilentC, 1});
  EXPECT_EQ(StopIt(), stopped_);
}

TEST_F(Stop, AHubThatTalksIsStoppedAndOneThatTalksOnIsToldTwice) {
  for (int i = 0; i < 20; ++i) {
    hub.In(0.01 * i, [this] { hub.port.hub.Say("talk"); });
  }
  EXPECT_EQ(StopIt(), stopped_);
  for (int i = 0; i < 200; ++i) {
    hub.In(0.1 * i, [this] { hub.port.hub.Say("talk"); });
  }
  hub.port.sent.clear();
  EXPECT_EQ(StopIt().err, "tavlo: the hub goes on sending; if the machine moves, use its own stop\n");
  EXPECT_EQ(hub.port.sent, "SS");
}

TEST_F(Stop, APortThatCannotBeOpenedSaysThatNothingWasSent) {
  hub.open_error = "it is in use";
  EXPECT_EQ(StopIt(), (Outcome{5, "",
                               "tavlo: cannot open Comm 1: it is in use\n"
                               "tavlo: nothing was sent; if the machine moves, use its own stop\n"}));
}

TEST_F(Stop, JsonTellsWhatWasDone) {
  EXPECT_EQ(Tavlo({"stop", "--port", "1", "--json"}).out, "{\"sent\":\"S\",\"silent\":true}\n");
}

}  // namespace
}  // namespace tavlo::testing
