// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "link/com_port.h"

#include <gtest/gtest.h>

#include "link/scripted_hub.h"

namespace tavlo::testing {
namespace {

const std::string kPortKey = FakeSettings::Path("Tavlo Hub Composer", "Startup", "ComPort");

/// A session as it is before any port has been opened.
struct StartingDesk : FakeDesk {
  StartingDesk() {
    source.link.ComNum = 0;
    source.link.OptCom.reset();
    port.is_open = false;
    port.threshold = 0;
    port.number = 0;
  }
  void FailPorts(std::initializer_list<int> numbers) {
    for (const int number : numbers) port.open_errors[number] = "Reason " + std::to_string(number);
  }
  /// Numbers of the ports that were tried, repeats in a row told once.
  [[nodiscard]] std::vector<int> Tried() const {
    std::vector<int> tried;
    for (const std::string& entry : port.log) {
      if (!entry.starts_with("open ")) continue;
      const int number = std::stoi(entry.substr(5));
      if (tried.empty() || tried.back() != number) tried.push_back(number);
    }
    return tried;
  }
};

ShownBox LastPortBox(int port) {
  const std::string number = std::to_string(port);
  return {"Error opening the last comm port that was used by the Hub Composer (Comm " + number +
              "):  Reason " + number + ".  Will try Comm 1.",
          "Communication Error", Buttons::OKWithoutPort, Icon::Exclamation};
}

ShownBox NextPortBox(int port) {
  const std::string number = std::to_string(port);
  return {
      "Error on Comm" + number + ":  Reason " + number + ".  Will try Comm" + std::to_string(port + 1) + ".",
      "Communication Error", Buttons::OKWithoutPort, Icon::Exclamation};
}

const ShownBox kNoPortBox = {
    "Could not find an open comm port.  You can still edit and save programs, but drive communication is not "
    "possible at this time.",
    "No open port", Buttons::OK, Icon::None};

TEST(StartComm, AFirstStartOpensPortOne) {
  StartingDesk d;
  StartComm(d.desk);
  EXPECT_EQ(d.Tried(), std::vector<int>{1});
  EXPECT_TRUE(d.port.PortOpen());
  EXPECT_EQ(d.source.link.ComNum, 1);
  EXPECT_EQ(d.source.link.OptCom, 0);
  EXPECT_TRUE(d.boxes.shown.empty());
}

TEST(StartComm, TheStoredPortIsOpened) {
  for (int port = 1; port <= 8; ++port) {
    StartingDesk d;
    d.settings.values[kPortKey] = std::to_string(port);
    StartComm(d.desk);
    EXPECT_EQ(d.Tried(), std::vector<int>{port});
    EXPECT_EQ(d.port.CommPort(), port);
    EXPECT_EQ(d.source.link.ComNum, port);
    EXPECT_EQ(d.source.link.OptCom, port - 1);
  }
}

TEST(StartComm, AStoredTextThatIsNoPortOpensPortOneWithoutAMessage) {
  for (const char* stored : {"0", "9", "abc", "", "-1", "1e300", "nan", "99999999999999999999"}) {
    StartingDesk d;
    d.settings.values[kPortKey] = stored;
    StartComm(d.desk);
    EXPECT_EQ(d.Tried(), std::vector<int>{1}) << stored;
    EXPECT_EQ(d.source.link.ComNum, 1) << stored;
    EXPECT_TRUE(d.boxes.shown.empty()) << stored;
  }
}

TEST(StartComm, TheLineIsSetUp) {
  StartingDesk d;
  d.source.display.MMIActive = true;
  d.port.parity_replace = "?";
  StartComm(d.desk);
  EXPECT_EQ(d.port.settings, "19200,N,8,1");
  EXPECT_EQ(d.port.RThreshold(), 3);
  EXPECT_EQ(d.port.parity_replace, "");
  EXPECT_FALSE(d.source.display.MMIActive);
}

TEST(StartComm, TheHubIsNotAskedAnything) {
  StartingDesk d;
  StartComm(d.desk);
  EXPECT_TRUE(d.port.sent.empty());
}

TEST(StartComm, AStoredPortFiveThatFailsGivesFiveAndThenOneToEight) {
  StartingDesk d;
  d.settings.values[kPortKey] = "5";
  d.FailPorts({1, 2, 3, 4, 5, 6, 7, 8});
  StartComm(d.desk);
  EXPECT_EQ(d.Tried(), (std::vector<int>{5, 1, 2, 3, 4, 5, 6, 7, 8}));
  const std::vector<ShownBox> expected = {LastPortBox(5), NextPortBox(1), NextPortBox(2),
                                          NextPortBox(3), NextPortBox(4), NextPortBox(5),
                                          NextPortBox(6), NextPortBox(7), kNoPortBox};
  EXPECT_EQ(d.boxes.shown, expected);
  EXPECT_EQ(d.source.link.OptCom, std::nullopt);
  EXPECT_EQ(d.source.link.ComNum, 0);
  EXPECT_FALSE(d.port.PortOpen());
}

TEST(StartComm, WithoutAPortGoesStraightToTheLastTextFromEachBox) {
  for (std::size_t box = 1; box <= 8; ++box) {
    StartingDesk d;
    d.settings.values[kPortKey] = "5";
    d.FailPorts({1, 2, 3, 4, 5, 6, 7, 8});
    for (std::size_t i = 1; i < box; ++i) d.boxes.setNextAnswer(Answer::OK);
    d.boxes.setNextAnswer(Answer::WithoutPort);
    StartComm(d.desk);
    ASSERT_EQ(d.boxes.shown.size(), box + 1);
    EXPECT_EQ(d.boxes.shown.back(), kNoPortBox);
    EXPECT_EQ(d.Tried().size(), box) << "no port is opened behind the operator's back";
    EXPECT_EQ(d.source.link.OptCom, std::nullopt);
    EXPECT_EQ(d.source.link.ComNum, 0);
    EXPECT_FALSE(d.port.PortOpen());
  }
}

TEST(StartComm, AStoredPortOneThatFailsGoesStraightToTheSecondTextAndOnToPortTwo) {
  StartingDesk d;
  d.FailPorts({1});
  StartComm(d.desk);
  EXPECT_EQ(d.Tried(), (std::vector<int>{1, 2}));
  EXPECT_EQ(d.boxes.shown, std::vector<ShownBox>{NextPortBox(1)});
  EXPECT_EQ(d.source.link.ComNum, 2);
  EXPECT_EQ(d.source.link.OptCom, 1);
}

TEST(StartComm, TheStoredPortEightFailsTwiceBeforeItIsGivenUp) {
  StartingDesk d;
  d.settings.values[kPortKey] = "8";
  d.FailPorts({1, 2, 3, 4, 5, 6, 7, 8});
  StartComm(d.desk);
  ASSERT_EQ(d.boxes.shown.size(), 9u);
  EXPECT_EQ(d.boxes.shown.front(), LastPortBox(8));
  EXPECT_EQ(d.boxes.shown.back(), kNoPortBox);
}

TEST(StartComm, APortFoundOnTheWayIsSetUpAsTheFirstWouldBe) {
  StartingDesk d;
  d.settings.values[kPortKey] = "3";
  d.FailPorts({3, 1});
  StartComm(d.desk);
  EXPECT_EQ(d.boxes.shown, (std::vector<ShownBox>{LastPortBox(3), NextPortBox(1)}));
  EXPECT_EQ(d.source.link.ComNum, 2);
  EXPECT_EQ(d.port.CommPort(), 2);
  EXPECT_TRUE(d.port.PortOpen());
  EXPECT_EQ(d.port.settings, "19200,N,8,1");
  EXPECT_EQ(d.port.RThreshold(), 3);
  EXPECT_EQ(d.port.parity_replace, "");
}

TEST(StartComm, TheReasonStandsInTheMessageAsThePortGaveIt) {
  StartingDesk d;
  d.port.open_errors[1] = "Port in use by \"other\"";
  StartComm(d.desk);
  ASSERT_EQ(d.boxes.shown.size(), 1u);
  EXPECT_EQ(d.boxes.shown[0].text, "Error on Comm1:  Port in use by \"other\".  Will try Comm2.");
}

TEST(ClickOptCom, ThePortInUseIsNotClosed) {
  FakeDesk d;
  ClickOptCom(d.desk, 0);
  EXPECT_TRUE(d.port.log.empty());
  EXPECT_TRUE(d.port.PortOpen());
  EXPECT_TRUE(d.boxes.shown.empty());
}

TEST(ClickOptCom, ThePortInUseIsOpenedAgainWhenItIsClosed) {
  FakeDesk d;
  d.port.is_open = false;
  ClickOptCom(d.desk, 0);
  EXPECT_EQ(d.port.log, std::vector<std::string>{"open 1"});
  EXPECT_TRUE(d.port.PortOpen());
  EXPECT_EQ(d.source.link.ComNum, 1);
  EXPECT_EQ(d.source.link.OptCom, 0);
  EXPECT_TRUE(d.boxes.shown.empty());
}

TEST(ClickOptCom, ThePortInUseIsOpenedAgainWhenItsNumberLeadsToAnotherDevice) {
  FakeDesk d;
  d.port.leads_elsewhere = true;
  ClickOptCom(d.desk, 0);
  EXPECT_EQ(d.port.log, (std::vector<std::string>{"close 1", "open 1"}));
  EXPECT_EQ(d.source.link.ComNum, 1);
  EXPECT_TRUE(d.boxes.shown.empty());
}

TEST(ClickOptCom, ThePortInUseThatDoesNotOpenAgainIsTriedOnceAndToldOnceAndCanBeClickedAgain) {
  FakeDesk d;
  d.port.is_open = false;
  d.port.open_errors[1] = "Reason";
  ClickOptCom(d.desk, 0);
  const std::vector<ShownBox> expected = {
      {"COM port 1 is not available.", "COM Error", Buttons::OK, Icon::Exclamation}};
  EXPECT_EQ(d.boxes.shown, expected);
  EXPECT_EQ(d.port.log, std::vector<std::string>{"open 1"});
  EXPECT_EQ(d.source.link.OptCom, 0);
  d.port.open_errors.clear();
  ClickOptCom(d.desk, 0);
  EXPECT_TRUE(d.port.PortOpen());
  EXPECT_EQ(d.source.link.ComNum, 1);
}

TEST(ClickOptCom, AnotherPortIsOpenedAfterTheOldOneWasClosed) {
  FakeDesk d;
  ClickOptCom(d.desk, 3);
  EXPECT_EQ(d.port.log, (std::vector<std::string>{"close 1", "open 4"}));
  EXPECT_EQ(d.source.link.ComNum, 4);
  EXPECT_EQ(d.source.link.OptCom, 3);
  EXPECT_EQ(d.port.CommPort(), 4);
  EXPECT_EQ(d.port.settings, "19200,N,8,1");
  EXPECT_TRUE(d.boxes.shown.empty());
}

TEST(ClickOptCom, WhatTheOldLineHasBegunToSayDoesNotGoOnOnTheNewOne) {
  FakeDesk d;
  d.source.link.received = {'o', 'l', 'd'};
  d.source.link.InMsg = true;
  d.source.link.MsgBuf = "\xFE\x01";
  ClickOptCom(d.desk, 3);
  EXPECT_FALSE(d.source.link.InMsg);
  EXPECT_EQ(d.source.link.MsgBuf, "");
  EXPECT_TRUE(d.source.link.received.empty());
}

TEST(ClickOptCom, TheThresholdOfALineThatHearsAndTheParityReplacementAreNotSetAgain) {
  for (const int threshold : {1, 3}) {
    FakeDesk d;
    d.port.threshold = threshold;
    ClickOptCom(d.desk, 1);
    EXPECT_TRUE(d.port.thresholds.empty()) << threshold;
    EXPECT_EQ(d.port.parity_replace, std::nullopt);
  }
}

TEST(ClickOptCom, ALineThatWasDeafHearsFromThePortThatOpens) {
  struct Row {
    const char* what;
    int clicked;
    bool open_before;
    std::vector<int> refused;
    int heard;
  };
  const std::vector<Row> rows = {
      {"another port", 3, true, {}, 1},
      {"the same port, closed meanwhile", 0, false, {}, 1},
      {"the old port, after another was refused", 4, true, {5}, 1},
      {"no port at all", 4, true, {1, 5}, 0},
  };
  for (const Row& row : rows) {
    FakeDesk d;
    d.port.threshold = 0;
    d.port.is_open = row.open_before;
    for (const int number : row.refused) d.port.open_errors[number] = "Reason";
    ClickOptCom(d.desk, row.clicked);
    EXPECT_EQ(d.port.RThreshold(), row.heard) << row.what;
  }
}

TEST(ClickOptCom, AfterNoOpenPortTheFirstPortThatOpensHearsAGreeting) {
  StartingDesk d;
  d.FailPorts({1, 2, 3, 4, 5, 6, 7, 8});
  StartComm(d.desk);
  ASSERT_EQ(d.boxes.shown.back(), kNoPortBox);
  d.port.open_errors.clear();
  ClickOptCom(d.desk, 2);
  EXPECT_EQ(d.port.RThreshold(), 1);
  int heard = 0;
  d.port.OnComm = [&heard] { ++heard; };
  d.port.Receive("x");
  EXPECT_EQ(heard, 1);
}

TEST(ClickOptCom, ARefusedChoiceSelectsTheOldPortAgainWithOneMessage) {
  FakeDesk d;
  d.port.open_errors[5] = "Reason";
  ClickOptCom(d.desk, 4);
  const std::vector<ShownBox> expected = {
      {"COM port 5 is not available.", "COM Error", Buttons::OK, Icon::Exclamation}};
  EXPECT_EQ(d.boxes.shown, expected);
  EXPECT_EQ(d.source.link.ComNum, 1);
  EXPECT_EQ(d.source.link.OptCom, 0);
  EXPECT_EQ(d.port.CommPort(), 1);
  EXPECT_TRUE(d.port.PortOpen());
  EXPECT_EQ(d.port.log, (std::vector<std::string>{"close 1", "open 5", "open 1"}));
}

TEST(ClickOptCom, AnOldPortThatDoesNotComeBackEitherIsNotToldASecondTimeAndCanBeTriedAgain) {
  FakeDesk d;
  d.port.open_errors = {{5, "Reason"}, {1, "Gone"}};
  ClickOptCom(d.desk, 4);
  EXPECT_EQ(d.boxes.shown.size(), 1u);
  EXPECT_EQ(d.source.link.OptCom, 0);
  d.port.open_errors.clear();
  ClickOptCom(d.desk, 0);
  EXPECT_TRUE(d.port.PortOpen());
  EXPECT_EQ(d.source.link.ComNum, 1);
}

TEST(ClickOptCom, ARefusedFirstChoiceLeavesNoPortSelected) {
  StartingDesk d;
  d.port.open_errors[2] = "Reason";
  ClickOptCom(d.desk, 1);
  EXPECT_EQ(d.boxes.shown.size(), 1u);
  EXPECT_EQ(d.source.link.ComNum, 0);
  EXPECT_EQ(d.source.link.OptCom, std::nullopt);
  EXPECT_EQ(d.Tried(), std::vector<int>{2});
}

TEST(ClickOptCom, AfterNoPortCouldBeOpenedAnyPortCanBeChosen) {
  StartingDesk d;
  ClickOptCom(d.desk, 0);
  EXPECT_EQ(d.port.log, std::vector<std::string>{"open 1"});
  EXPECT_EQ(d.source.link.ComNum, 1);
  EXPECT_EQ(d.source.link.OptCom, 0);
}

TEST(RememberPort, ThePortsNumberIsWrittenAsDecimalText) {
  FakeDesk d;
  d.port.number = 7;
  RememberPort(d.desk);
  EXPECT_EQ(d.settings.values, (std::map<std::string, std::string>{{kPortKey, "7"}}));
}

TEST(RememberPort, TheNextStartOpensWhatWasRemembered) {
  StartingDesk d;
  ClickOptCom(d.desk, 5);
  RememberPort(d.desk);
  StartingDesk next;
  next.settings.values = d.settings.values;
  StartComm(next.desk);
  EXPECT_EQ(next.source.link.ComNum, 6);
}

TEST(TellPortLost, GivesOnePlainMessageAndKeepsTheProgram) {
  FakeDesk d;
  d.Line(3).Type = GT;
  d.port.is_open = false;
  const Program before = d.source.program;
  TellPortLost(d.desk);
  ASSERT_EQ(d.boxes.shown.size(), 1u);
  EXPECT_FALSE(d.boxes.shown[0].text.empty());
  EXPECT_EQ(d.boxes.shown[0].buttons, Buttons::OK);
  EXPECT_EQ(d.source.program.Prog, before.Prog);
  EXPECT_EQ(d.source.program.Axis, before.Axis);
}

TEST(TellPortLost, TheSamePortCanBeChosenAgain) {
  FakeDesk d;
  d.port.is_open = false;
  TellPortLost(d.desk);
  ClickOptCom(d.desk, 0);
  EXPECT_TRUE(d.port.PortOpen());
  EXPECT_EQ(d.source.link.ComNum, 1);
  EXPECT_EQ(d.source.link.OptCom, 0);
}

TEST(TellPortLost, AnotherPortCanBeChosen) {
  FakeDesk d;
  d.port.is_open = false;
  TellPortLost(d.desk);
  ClickOptCom(d.desk, 6);
  EXPECT_TRUE(d.port.PortOpen());
  EXPECT_EQ(d.source.link.ComNum, 7);
}

}  // namespace
}  // namespace tavlo::testing
