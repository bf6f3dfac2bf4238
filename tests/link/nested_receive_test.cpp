// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <gtest/gtest.h>

#include "link/handled_message.h"
#include "link/receive.h"
#include "link/scripted_hub.h"

namespace tavlo::testing {
namespace {

// A box that a message brings up runs the event loop, and so the hub's newer bytes are handled while the
// first message is still being handled.

/// Shows a box and touches nothing else.
const std::string kOldFirmware = Bytes({250, 0, 38, 0});

struct NestingDesk : FakeDesk {
  NestingDesk() {
    port.OnComm = [this] { NewOnComm(desk); };
  }
  /// Arrives, in these pieces, while the first box is up.
  void DuringBox(std::vector<std::string> pieces) {
    boxes.on_box = [this, pieces](const ShownBox&) {
      if (boxes.shown.size() > 1) return;
      for (const std::string& piece : pieces) port.Receive(piece);
      started_when_box_closed = view.scrolls;
    };
  }
  std::vector<int> started_when_box_closed;
};

TEST(ReceiveInsideABox, NewerMessagesAreHandledWhileTheBoxIsUp) {
  NestingDesk d;
  d.DuringBox({LineStarted(5), LineStarted(6)});
  d.port.Receive(kOldFirmware);
  EXPECT_EQ(d.started_when_box_closed, (std::vector<int>{5, 6}));
  EXPECT_EQ(d.view.scrolls, (std::vector<int>{5, 6}));
  EXPECT_EQ(d.port.AllSent(), "II");
}

TEST(ReceiveInsideABox, TheRestOfTheReadThatBroughtTheBoxComesBeforeWhatIsNewer) {
  NestingDesk d;
  d.DuringBox({LineStarted(5)});
  d.port.Receive(LineStarted(1) + kOldFirmware + LineStarted(2) + LineStarted(3));
  EXPECT_EQ(d.started_when_box_closed, (std::vector<int>{1, 2, 3, 5}));
  EXPECT_EQ(d.view.scrolls, (std::vector<int>{1, 2, 3, 5}));
  EXPECT_EQ(d.port.AllSent(), "IIII");
}

TEST(ReceiveInsideABox, TheRestWaitsForTheBoxIfNothingNewComes) {
  NestingDesk d;
  d.DuringBox({});
  d.port.Receive(kOldFirmware + LineStarted(2) + LineStarted(3));
  EXPECT_EQ(d.started_when_box_closed, std::vector<int>{});
  EXPECT_EQ(d.view.scrolls, (std::vector<int>{2, 3}));
}

TEST(ReceiveInsideABox, AMessageWhoseBeginningCameBeforeTheBoxIsWhole) {
  for (std::size_t cut = 1; cut < 4; ++cut) {
    NestingDesk d;
    const std::string message = LineStarted(77);
    d.DuringBox({message.substr(cut) + LineStarted(78)});
    d.port.Receive(kOldFirmware + message.substr(0, cut));
    EXPECT_EQ(d.view.scrolls, (std::vector<int>{77, 78})) << cut;
  }
}

TEST(ReceiveInsideABox, TextBehindTheMessageStandsInFrontOfNewerText) {
  NestingDesk d;
  d.source.display.MMIActive = true;
  d.DuringBox({"ef"});
  d.port.Receive("ab" + kOldFirmware + "cd");
  EXPECT_EQ(d.source.display.textline[0], "abcdef");
}

TEST(ReceiveInsideABox, AMessageThatEndsAfterTheBoxWasClosedIsDelivered) {
  for (std::size_t cut = 1; cut < 4; ++cut) {
    NestingDesk d;
    const std::string message = LineStarted(77);
    d.DuringBox({message.substr(0, cut)});
    d.port.Receive(kOldFirmware);
    d.port.Receive(message.substr(cut));
    EXPECT_EQ(d.view.scrolls, std::vector<int>{77}) << cut;
  }
}

TEST(ReceiveInsideABox, AMessageThatComesInPiecesInsideTheBoxIsDelivered) {
  NestingDesk d;
  const std::string message = LineStarted(77);
  d.DuringBox({message.substr(0, 1), message.substr(1, 2), message.substr(3)});
  d.port.Receive(kOldFirmware);
  EXPECT_EQ(d.started_when_box_closed, std::vector<int>{77});
}

TEST(ReceiveInsideABox, TextInsideABoxIsShownInOrder) {
  NestingDesk d;
  d.source.display.MMIActive = true;
  d.DuringBox({"cd", "ef"});
  d.port.Receive("ab" + kOldFirmware);
  EXPECT_EQ(d.source.display.textline[0], "abcdef");
}

TEST(ReceiveInsideABox, BoxesMayStandInsideBoxes) {
  NestingDesk d;
  int depth = 0;
  d.boxes.on_box = [&](const ShownBox&) {
    // Each with a revision of its own: equal boxes stand only once.
    if (++depth < 20) d.port.Receive(LineStarted(depth) + Bytes({250, 0, 38 + depth, 0}));
  };
  d.port.Receive(kOldFirmware + LineStarted(100));
  EXPECT_EQ(d.boxes.shown.size(), 20u);
  ASSERT_EQ(d.view.scrolls.size(), 20u);
  for (int i = 1; i < 20; ++i) EXPECT_EQ(d.source.shown.rows[i].state, RowState::Executing) << i;
  EXPECT_EQ(d.source.shown.rows[100].state, RowState::Executing);
}

TEST(ReceiveInsideABox, AFaultDuringAHaltsQuestionIsTold) {
  NestingDesk d;
  d.boxes.setNextAnswer(Answer::No);
  d.DuringBox({Bytes({211, 2, 0, 8})});
  d.port.Receive(Bytes({252, 1, 0, 0}));
  ASSERT_EQ(d.run.faults.size(), 1u);
  EXPECT_EQ(d.run.faults[0].code, 8);
  EXPECT_EQ(d.boxes.shown.size(), 1u);
}

TEST(ReceiveInsideABox, AGreetingDuringAHaltsQuestionIsTaken) {
  NestingDesk d;
  d.boxes.setNextAnswer(Answer::No);
  d.DuringBox({Bytes({255, 52, 24, 0})});
  d.port.Receive(Bytes({251, 0, 0, 0}));
  EXPECT_EQ(d.source.link.DriveVersion, "1.52");
  EXPECT_EQ(d.source.program.HubIndex, HubQuad);
  EXPECT_EQ(d.port.AllSent(), "*0");
}

}  // namespace
}  // namespace tavlo::testing
