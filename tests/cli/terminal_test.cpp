// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <deque>

#include "cli/companion.h"

namespace tavlo::testing {
namespace {

using hubsim::Failure;

const std::string kOpen = "tavlo: the drive terminal is open; the end of input or Ctrl-C closes it\n";

/// Standard input whose pieces come when the test says so.
class FakeFeed : public cli::Feed {
 public:
  [[nodiscard]] bool IsTerminal() const override { return terminal; }
  [[nodiscard]] int Descriptor() const override { return -1; }
  [[nodiscard]] std::optional<std::string> Read() override {
    if (pieces.empty()) return ended ? std::nullopt : std::optional<std::string>("");
    std::string piece = pieces.front();
    pieces.pop_front();
    return piece;
  }

  std::deque<std::string> pieces;
  bool ended = true;
  bool terminal = false;
};

// No drive has the address 9: what answers is what the test says.
class Terminal : public Companion {
 protected:
  Terminal() { feed = &input; }
  Outcome Talk(std::vector<std::string> more = {}) {
    std::vector<std::string> arguments = {"terminal", "--port", "1"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return Tavlo(arguments);
  }
  void SayIn(double seconds, const std::string& bytes) {
    hub.In(seconds, [this, bytes] { hub.port.hub.Say(bytes); });
  }

  FakeFeed input;
};

TEST_F(Terminal, LinesGoToTheDrivesAndAnswersComeBackBelowThem) {
  input.pieces = {"9PR1\n9S", "A\r\n"};
  SayIn(0.1, "ready\r");
  SayIn(0.7, "one\rtwo\r");
  EXPECT_EQ(Talk(), (Outcome{0, "$9PR1$\nready\n$9SA$\none\ntwo\n", kOpen}));
  EXPECT_EQ(hub.port.sent, "SCH9PR1\r\n9SA\r\n0HM\r");
  EXPECT_EQ(hub.port.hub.State(), hubsim::HubState::Idle);
}

TEST_F(Terminal, ALastLineWithoutItsEndGoesOutToo) {
  input.pieces = {"9PR1"};
  EXPECT_EQ(Talk(), (Outcome{0, "$9PR1$\n", kOpen}));
  EXPECT_EQ(hub.port.sent, "SCH9PR1\r\n0HM\r");
}

TEST_F(Terminal, WithoutInputItOpensAndCloses) {
  EXPECT_EQ(Talk(), (Outcome{0, "", kOpen}));
  EXPECT_EQ(hub.port.sent, "SCH0HM\r");
}

TEST_F(Terminal, UnprintableBytesShowAsTheirCode) {
  input.pieces = {"9\n"};
  SayIn(0.1, std::string("\a\x1b[2J\x80 ok\0\r", 11));
  EXPECT_EQ(Talk().out, "$9$\n[007][027][2J[128] ok[000]\n");
}

TEST_F(Terminal, ControlCharactersOfACommandGoOutAsTheyAreAndShowAsTheirCode) {
  input.pieces = {"9\x1b[2J\x7f\n"};
  EXPECT_EQ(Talk().out, "$9[027][2J[127]$\n");
  EXPECT_EQ(hub.port.sent, "SCH9\x1b[2J\x7f\r\n0HM\r");
}

TEST_F(Terminal, ACommandFromAPipeHasItsTimeForAnAnswer) {
  const auto seconds_of = [this](const std::vector<std::string>& more) {
    input.pieces = {"9A\n9B\n"};
    const double start = hub.clock.now;
    EXPECT_EQ(Talk(more).out, "$9A$\n$9B$\n");
    return hub.clock.now - start;
  };
  // The line is listened to for 25 ms, and the hub stopped in as many.
  EXPECT_NEAR(seconds_of({}), 1.05, 0.01);
  EXPECT_NEAR(seconds_of({"--wait", "2"}), 4.05, 0.01);
  EXPECT_NEAR(seconds_of({"--wait", "0"}), 0.05, 0.01);
}

TEST_F(Terminal, AnOperatorsLinesGoOutAsTheyAreTyped) {
  input.terminal = true;
  input.ended = false;
  double sent_at = 0;
  hub.In(5, [this] { input.pieces = {"9A\n9B\n"}; });
  hub.In(5.001, [&] { sent_at = hub.port.sent.ends_with("9B\r\n") ? hub.clock.now : 0; });
  SayIn(6, "late\r");
  hub.In(7, [this] { input.ended = true; });
  const double start = hub.clock.now;
  EXPECT_EQ(Talk(), (Outcome{0, "$9A$\n$9B$\nlate\n", kOpen}));
  EXPECT_GT(sent_at, 0);
  EXPECT_NEAR(hub.clock.now - start, 7, 0.1);
}

TEST_F(Terminal, AnInterruptionClosesIt) {
  input.ended = false;
  hub.InterruptIn(3);
  EXPECT_EQ(Talk(), (Outcome{0, "", kOpen}));
  EXPECT_EQ(hub.port.sent, "SCH0HM\r");
  EXPECT_EQ(hub.port.hub.State(), hubsim::HubState::Idle);
}

TEST_F(Terminal, AnInterruptionAmongTheAnswersClosesItToo) {
  input.ended = false;
  hub.In(1, [this] {
    hub.interrupted = true;
    hub.port.hub.Say("half of an answer");
  });
  EXPECT_EQ(Talk().code, 0);
  EXPECT_EQ(hub.port.sent, "SCH0HM\r");
}

TEST_F(Terminal, AHubThatIsTooOldIsRefused) {
  hubsim::HubOptions options;
  options.firmware = 18;
  SimHub old(options);
  std::ostringstream out;
  std::ostringstream err;
  cli::Environment environment{out,   err, false, nullptr, [&](const cli::PortName&) { return old.Line(); },
                               &input};
  EXPECT_EQ(cli::RunTavlo({"terminal", "--port", "1"}, environment), cli::ExitCode::Refused);
  EXPECT_EQ(err.str(),
            "tavlo: the drive terminal needs a hub of firmware 1.19 or later; this one has 1.18\n");
  EXPECT_EQ(old.port.sent, "SC");
}

TEST_F(Terminal, TheFirstFirmwareThatPassesThroughIsTaken) {
  hubsim::HubOptions options;
  options.firmware = 19;
  SimHub hub_119(options);
  std::ostringstream out;
  std::ostringstream err;
  cli::Environment environment{
      out, err, false, nullptr, [&](const cli::PortName&) { return hub_119.Line(); }, &input};
  EXPECT_EQ(cli::RunTavlo({"terminal", "--port", "1"}, environment), cli::ExitCode::Done);
  EXPECT_EQ(hub_119.port.sent, "SCH0HM\r");
}

TEST_F(Terminal, AHubThatDoesNotAnswerEndsWithSix) {
  for (const Failure mode : {Failure::SilentC, Failure::UnknownModel}) {
    hub.port.hub.SetFailure({mode, 1});
    EXPECT_EQ(Talk().code, 6);
    EXPECT_FALSE(hub.port.sent.ends_with("0HM\r")) << "it was never open";
    EXPECT_EQ(hub.port.hub.State(), hubsim::HubState::Idle);
  }
}

TEST_F(Terminal, ALostPortIsTold) {
  input.ended = false;
  hub.In(1, [this] { hub.port.hub.Unplug(); });
  EXPECT_EQ(Talk(), (Outcome{5, "", kOpen + "tavlo: the port has gone; check the cable\n"}));
}

TEST_F(Terminal, ResultsThatNobodyTakesCloseIt) {
  input.pieces = {"9A\n9B\n"};
  std::ostream out(nullptr);
  std::ostringstream err;
  cli::Environment environment{out,   err, false, nullptr, [&](const cli::PortName&) { return hub.Line(); },
                               &input};
  EXPECT_EQ(cli::RunTavlo({"terminal", "--port", "1"}, environment), cli::ExitCode::Other);
  EXPECT_TRUE(hub.port.sent.ends_with("0HM\r")) << hub.port.sent;
  EXPECT_EQ(hub.port.sent.find("9B"), std::string::npos);
}

TEST_F(Terminal, AGreetingOfTheHubIsSetOff) {
  input.pieces = {"9A\n"};
  SayIn(0.1, "\xFF\x26\x08");
  SayIn(0.2, "on\r");
  EXPECT_EQ(Talk().out, "$9A$\n{255-038-008}\non\n");
  EXPECT_EQ(hub.port.sent, "SCH9A\r\n000HM\r");
}

TEST_F(Terminal, ACommandThatIsTooLongIsToldAndNotSent) {
  input.pieces = {std::string(1500, 'x'), std::string(501, 'x') + "\n" + std::string(2000, 'y') + "\n"};
  const Outcome outcome = Talk();
  EXPECT_EQ(outcome.code, 0);
  EXPECT_EQ(outcome.err, kOpen + "tavlo: a command of more than 2000 characters was not sent\n");
  EXPECT_TRUE(hub.port.sent == "SCH" + std::string(2000, 'y') + "\r\n0HM\r");
}

TEST_F(Terminal, JsonGivesOneObjectACommandAndALineOfAnswer) {
  input.pieces = {"9A\n"};
  SayIn(0.1, "one\r\ntwo \a");
  EXPECT_EQ(Talk({"--json"}).out,
            "{\"event\":\"sent\",\"seconds\":0.0,\"text\":\"9A\"}\n"
            "{\"event\":\"received\",\"seconds\":0.05,\"text\":\"one\"}\n"
            "{\"event\":\"received\",\"seconds\":0.5,\"text\":\"two [007]\"}\n"
            "{\"event\":\"ended\",\"seconds\":0.5,\"reason\":\"endOfInput\"}\n");
}

TEST_F(Terminal, AnyBytesBothWaysDoNoHarm) {
  std::string all;
  for (int i = 0; i < 256; ++i) all += static_cast<char>(i);
  input.pieces = {all + "\n" + all};
  for (int i = 1; i < 20; ++i) SayIn(0.04 * i, all);
  EXPECT_EQ(Talk().code, 0);
  EXPECT_TRUE(hub.port.sent.ends_with("0HM\r"));
}

}  // namespace
}  // namespace tavlo::testing
