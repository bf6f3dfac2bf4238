// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "link/receive.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "link/handled_message.h"
#include "link/scripted_hub.h"

namespace tavlo::testing {
namespace {

/// A session whose port hands its bytes to NewOnComm.
struct ListeningDesk : FakeDesk {
  ListeningDesk() {
    port.OnComm = [this] { NewOnComm(desk); };
  }
  /// Lines that the view was asked to bring into sight, which is once for each line event.
  [[nodiscard]] const std::vector<int>& Started() const { return view.scrolls; }
};

TEST(NewOnComm, AWholeMessageIsDeliveredOnce) {
  ListeningDesk d;
  d.port.Receive(Bytes({254, 1, 2, 0}));
  EXPECT_EQ(d.Started(), std::vector<int>{18});
  EXPECT_FALSE(d.source.link.InMsg);
  EXPECT_EQ(d.source.link.MsgBuf, "");
}

TEST(NewOnComm, AMessageMayArriveInAnyPieces) {
  const std::string message = Bytes({254, 1, 2, 0});
  for (std::size_t first = 0; first <= 4; ++first) {
    for (std::size_t second = first; second <= 4; ++second) {
      ListeningDesk d;
      d.port.Receive(message.substr(0, first));
      d.port.Receive(message.substr(first, second - first));
      if (second < 4) {
        EXPECT_TRUE(d.Started().empty());
      }
      d.port.Receive(message.substr(second));
      EXPECT_EQ(d.Started(), std::vector<int>{18}) << first << ", " << second;
    }
  }
}

TEST(NewOnComm, AMessageIsKeptBetweenEvents) {
  ListeningDesk d;
  d.port.Receive(Bytes({254, 1}));
  EXPECT_TRUE(d.source.link.InMsg);
  EXPECT_EQ(d.source.link.MsgBuf, Bytes({254, 1}));
}

TEST(NewOnComm, SeveralMessagesInOneReadAreDeliveredInOrder) {
  ListeningDesk d;
  d.port.Receive(LineStarted(3) + LineStarted(199) + LineStarted(0));
  EXPECT_EQ(d.Started(), (std::vector<int>{3, 199, 0}));
  EXPECT_EQ(d.port.AllSent(), "III");
}

TEST(NewOnComm, AHeaderInsideAMessageStartsANewOne) {
  ListeningDesk d;
  d.port.Receive(Bytes({254, 1, 254, 0, 7, 0}));
  EXPECT_EQ(d.Started(), std::vector<int>{7});
  EXPECT_EQ(d.port.AllSent(), "I");
}

TEST(NewOnComm, ABrokenMessageDisappearsWithoutAWord) {
  // The same bytes with headers that would light lines: only the second does, the first is never heard of.
  ListeningDesk lines;
  lines.port.Receive(Bytes({236, 4, 254, 1, 2, 3}));
  EXPECT_EQ(lines.view.scrolls, std::vector<int>{18});
  EXPECT_EQ(lines.source.shown.rows[18].state, RowState::Executing);
  EXPECT_EQ(lines.port.AllSent(), "I");

  ListeningDesk d;
  d.source.display.MMIActive = true;
  d.port.Receive(Bytes({200, 65, 201, 1, 2, 3}));
  EXPECT_TRUE(d.boxes.shown.empty());
  EXPECT_TRUE(d.port.sent.empty());
  EXPECT_EQ(d.source.display.textline[0], "") << "the payload of a broken message is no text";
  EXPECT_FALSE(d.source.link.InMsg);
  EXPECT_EQ(d.source.link.MsgBuf, "");
}

TEST(NewOnComm, TheMessageBehindABrokenOneIsDeliveredWhole) {
  ListeningDesk d;
  d.port.Receive(Bytes({200, 65, 236, 0, 9, 0}));
  EXPECT_EQ(d.source.shown.rows[9].state, RowState::WentOn);
  EXPECT_EQ(d.port.AllSent(), "I");
}

TEST(NewOnComm, HeadersAloneNeverMakeAMessage) {
  ListeningDesk d;
  d.port.Receive(std::string(500, '\xfe'));
  EXPECT_TRUE(d.Started().empty());
  EXPECT_TRUE(d.source.link.InMsg);
  EXPECT_EQ(d.source.link.MsgBuf, "\xfe");
  d.port.Receive(Bytes({0, 1, 0}));
  EXPECT_EQ(d.Started(), std::vector<int>{1});
}

TEST(NewOnComm, PayloadReachesFromZeroTo127) {
  ListeningDesk d;
  d.run.active = RunWindow::ExecStatus;
  d.port.Receive(Bytes({221, 0, 127, 127}) + Bytes({222, 127, 0, 0}));
  EXPECT_EQ(d.run.statuses, (std::vector{0, 1}));
}

TEST(NewOnComm, TextWithNoTerminatorWindowOpenVanishes) {
  ListeningDesk d;
  d.port.Receive("Hello");
  for (const std::string& line : d.source.display.textline) EXPECT_EQ(line, "");
  EXPECT_EQ(d.run.text_changes, 0);
}

TEST(NewOnComm, TextIsShownWhileTheTerminalRunsAProgram) {
  ListeningDesk d;
  d.source.display.MMIActive = true;
  d.port.Receive("Hello");
  EXPECT_EQ(d.source.display.textline[0], "Hello");
  EXPECT_GT(d.run.text_changes, 0);
}

TEST(NewOnComm, TextAndMessagesMix) {
  ListeningDesk d;
  d.source.display.MMIActive = true;
  d.port.Receive("ab" + LineStarted(4) + "cd" + LineStarted(5) + "e");
  EXPECT_EQ(d.source.display.textline[0], "abcde");
  EXPECT_EQ(d.Started(), (std::vector<int>{4, 5}));
}

TEST(NewOnComm, PayloadIsNoTextThoughItCouldBe) {
  ListeningDesk d;
  d.source.display.MMIActive = true;
  d.port.Receive(Bytes({200, 'a', 'b', 'c'}) + "d");
  EXPECT_EQ(d.source.display.textline[0], "d");
}

TEST(NewOnComm, ActsOnlyOnReceivedData) {
  for (const int event : {0, 1, 3, 7, 1004}) {
    ListeningDesk d;
    d.source.display.MMIActive = true;
    d.port.comm_event = event;
    d.port.Receive("text");
    EXPECT_EQ(d.source.display.textline[0], "") << event;
    EXPECT_EQ(d.port.InBufferCount(), 4) << "the bytes still wait";
  }
}

TEST(NewOnComm, AnEventWithoutBytesDoesNothing) {
  ListeningDesk d;
  d.source.link.InMsg = true;
  d.source.link.MsgBuf = Bytes({254, 1});
  NewOnComm(d.desk);
  EXPECT_EQ(d.source.link.MsgBuf, Bytes({254, 1}));
}

struct TerminalDesk : ListeningDesk {
  TerminalDesk() {
    desk.terminal = &terminal;
    source.VOXterm.TermActive = true;
  }
  [[nodiscard]] const std::string& Taken() const { return source.VOXterm.History; }
  FakeTerminal terminal;
};

TEST(DriveTerminal, TakesEverythingThatArrives) {
  TerminalDesk d;
  d.port.Receive("a" + LineStarted(3).substr(1) + Bytes({128, 254}));
  EXPECT_EQ(d.Taken(), "a[000][003][000][128][254]");
  EXPECT_EQ(d.source.VOXterm.VOXbuffer, "");
  EXPECT_TRUE(d.Started().empty());
}

TEST(DriveTerminal, TheEventLoopGetsATurnAfterEachCharacter) {
  TerminalDesk d;
  d.port.Receive("abc");
  EXPECT_EQ(d.loop.yields, 3);
}

TEST(DriveTerminal, LeavesAMessageThatIsBeingCollectedAsItIs) {
  TerminalDesk d;
  d.source.link.InMsg = true;
  d.source.link.MsgBuf = Bytes({254, 1});
  d.source.display.MMIActive = true;
  d.port.Receive(LineStarted(3) + "text");
  EXPECT_TRUE(d.source.link.InMsg);
  EXPECT_EQ(d.source.link.MsgBuf, Bytes({254, 1}));
  EXPECT_EQ(d.source.display.textline[0], "");
  EXPECT_TRUE(d.port.sent.empty());
}

TEST(DriveTerminal, BytesThatWaitForItComeFirst) {
  TerminalDesk d;
  d.source.VOXterm.VOXbuffer = "old ";
  d.port.Receive("new");
  EXPECT_EQ(d.Taken(), "old new");
}

TEST(DriveTerminal, BytesThatArriveDuringATurnAreTakenOnceAndInOrder) {
  TerminalDesk d;
  int more = 3;
  d.loop.on_yield = [&] {
    if (more > 0) d.port.Receive(std::to_string(more--));
  };
  d.port.Receive("abc");
  EXPECT_EQ(d.Taken().size(), 6u);
  for (const char c : std::string("abc321")) {
    EXPECT_EQ(std::ranges::count(d.Taken(), c), 1) << c;
  }
  EXPECT_LT(d.Taken().find('a'), d.Taken().find('b'));
  EXPECT_LT(d.Taken().find('b'), d.Taken().find('c'));
  EXPECT_LT(d.Taken().find('3'), d.Taken().find('2'));
  EXPECT_LT(d.Taken().find('2'), d.Taken().find('1'));
  EXPECT_EQ(d.source.VOXterm.VOXbuffer, "");
}

TEST(DriveTerminal, OneThatIsClosedByACharacterLosesTheRestWithoutHarm) {
  TerminalDesk d;
  d.terminal.on_growth = [&](std::string_view) { d.source.VOXterm.TermActive = false; };
  d.port.Receive("abc");
  EXPECT_TRUE(d.Taken().starts_with("a"));
}

TEST(DriveTerminal, AFlagWithoutAWindowDoesNoHarm) {
  TerminalDesk d;
  d.desk.terminal = nullptr;
  d.port.Receive("abc" + LineStarted(1));
  EXPECT_TRUE(d.Started().empty());
}

}  // namespace
}  // namespace tavlo::testing
