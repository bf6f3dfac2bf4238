// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "link/drive_terminal.h"

#include <gtest/gtest.h>

#include "link/receive.h"
#include "link/scripted_hub.h"

namespace tavlo::testing {
namespace {

using Strings = std::vector<std::string>;
const std::string kBack = "0HM\r";

struct VoxDesk : FakeDesk {
  VoxDesk() {
    port.OnComm = [this] { NewOnComm(desk); };
    desk.terminal = &terminal;
    source.link.DriveVersion = "1.38";
  }
  void Process(std::string_view bytes) {
    for (const char c : bytes) ProcessChar(desk, c);
  }
  [[nodiscard]] const std::string& History() const { return source.VOXterm.History; }
  FakeTerminal terminal;
};

TEST(DriveTerminal, HearsTheDrivesOnALineThatAnUploadHasLeftDeaf) {
  for (const int before : {0, 1, 3}) {
    VoxDesk d;
    d.port.threshold = before;
    ActivateTerminal(d.desk);
    EXPECT_EQ(d.port.RThreshold(), 1) << before;
    d.port.Receive("*1\r");
    EXPECT_EQ(d.History(), "*1\r\n") << before;
  }
}

/// The terminal is up and its passthrough on.
struct OpenVoxDesk : VoxDesk {
  OpenVoxDesk() {
    LoadTerminal(desk);
    ActivateTerminal(desk);
    port.sent.clear();
  }
};

TEST(TerminalKey, OpensTheTerminalOfAHubFrom119On) {
  struct Case {
    const char* version;
    bool allowed;
  };
  for (const Case& c : {Case{"1.19", true}, Case{"1.20", true}, Case{"3.55", true}, Case{"1.18", false},
                        Case{"1.00", false}, Case{"?", false}, Case{"", false}}) {
    VoxDesk d;
    d.source.link.DriveVersion = c.version;
    EXPECT_EQ(TerminalAllowed(d.source), c.allowed) << c.version;
    OpenTerminal(d.desk);
    EXPECT_EQ(d.terminal.shown, c.allowed ? 1 : 0) << c.version;
    EXPECT_TRUE(d.port.sent.empty()) << "the window sends when it comes up";
  }
}

TEST(TerminalKey, DoesNothingWhileTheHubIsBusyOrWithoutATerminal) {
  VoxDesk d;
  d.source.link.Busy = true;
  OpenTerminal(d.desk);
  EXPECT_EQ(d.terminal.shown, 0);
  d.source.link.Busy = false;
  d.desk.terminal = nullptr;
  OpenTerminal(d.desk);
  EXPECT_EQ(d.terminal.shown, 0);
}

TEST(Terminal, ComesUpEmpty) {
  VoxDesk d;
  d.source.VOXterm.History = "old";
  d.source.VOXterm.CmdBuf = "x";
  d.source.VOXterm.PowerBuf = "y";
  d.source.VOXterm.InPower = d.source.VOXterm.Logging = true;
  d.source.VOXterm.AtLineStart = false;
  LoadTerminal(d.desk);
  EXPECT_EQ(d.source.VOXterm.CmdBuf, "");
  EXPECT_EQ(d.source.VOXterm.PowerBuf, "");
  EXPECT_EQ(d.History(), "");
  EXPECT_FALSE(d.source.VOXterm.InPower);
  EXPECT_FALSE(d.source.VOXterm.Logging);
  EXPECT_TRUE(d.source.VOXterm.AtLineStart);
  EXPECT_TRUE(d.port.sent.empty());
}

TEST(Terminal, TheFocusOpensThePassthroughAndItsLossClosesIt) {
  VoxDesk d;
  LoadTerminal(d.desk);
  ActivateTerminal(d.desk);
  EXPECT_EQ(d.port.sent, Strings{"H"});
  EXPECT_TRUE(d.source.VOXterm.TermActive);
  EXPECT_FALSE(d.source.VOXterm.TermUsed);
  LeaveTerminal(d.desk);
  EXPECT_EQ(d.port.AllSent(), "H" + kBack);
  EXPECT_FALSE(d.source.VOXterm.TermActive);
  EXPECT_TRUE(d.source.VOXterm.TermUsed);
}

TEST(Terminal, AwayToAnotherProgramAndBackClosesAndOpensItAgain) {
  VoxDesk d;
  LoadTerminal(d.desk);
  ActivateTerminal(d.desk);
  d.Process("kept");
  LeaveTerminal(d.desk);
  ActivateTerminal(d.desk);
  EXPECT_TRUE(d.source.VOXterm.TermActive);
  EXPECT_EQ(d.History(), "kept");
  LeaveTerminal(d.desk);
  EXPECT_EQ(d.port.AllSent(), "H" + kBack + "H" + kBack);
}

TEST(Terminal, TheWayBackGoesOutOnceForEachPassthrough) {
  VoxDesk d;
  LoadTerminal(d.desk);
  LeaveTerminal(d.desk);
  EXPECT_TRUE(d.port.sent.empty()) << "nothing was open";
  ActivateTerminal(d.desk);
  ActivateTerminal(d.desk);
  LeaveTerminal(d.desk);
  LeaveTerminal(d.desk);
  EXPECT_EQ(d.port.AllSent(), "H" + kBack);
}

TEST(Terminal, MessagesOfTheHubAreHandledAgainOnceItIsClosed) {
  OpenVoxDesk d;
  d.port.Receive(Bytes({254, 0, 3, 0}));
  EXPECT_TRUE(d.view.scrolls.empty());
  LeaveTerminal(d.desk);
  d.port.Receive(Bytes({254, 0, 3, 0}));
  EXPECT_EQ(d.view.scrolls, std::vector<int>{3});
}

TEST(Command, GoesOutWithItsLineEndAndIsLoggedWithoutItBetweenDollarSigns) {
  OpenVoxDesk d;
  SendCommandText(d.desk, "1PR\r\n");
  EXPECT_EQ(d.port.sent, Strings{"1PR\r\n"});
  EXPECT_EQ(d.History(), "$1PR$\r\n");
  EXPECT_EQ(d.terminal.log, "$1PR$\r\n");
  EXPECT_EQ(d.source.VOXterm.CmdBuf, "");
  EXPECT_FALSE(d.source.VOXterm.Logging);
}

TEST(Command, OfSeveralLinesGoesOutWholeAndLosesOnlyTheLastLineEnd) {
  OpenVoxDesk d;
  SendCommandText(d.desk, "a\r\nb\r\n");
  EXPECT_EQ(d.port.sent, Strings{"a\r\nb\r\n"});
  EXPECT_EQ(d.History(), "$a\r\nb$\r\n");
}

TEST(Command, AnEmptyOneIsLoggedAsTwoDollarSigns) {
  OpenVoxDesk d;
  SendCommandText(d.desk, "\r\n");
  EXPECT_EQ(d.port.sent, Strings{"\r\n"});
  EXPECT_EQ(d.History(), "$$\r\n");
}

TEST(Command, ShorterThanALineEndDoesNoHarm) {
  for (const char* text : {"", "x"}) {
    OpenVoxDesk d;
    SendCommandText(d.desk, text);
    EXPECT_EQ(d.History(), "$$\r\n");
  }
}

TEST(Command, AnyByteInItGoesOutAsItStands) {
  OpenVoxDesk d;
  std::string all;
  for (int value = 0; value < 256; ++value) all += static_cast<char>(value);
  SendCommandText(d.desk, all + "\r\n");
  EXPECT_EQ(d.port.sent, Strings{all + "\r\n"});
}

TEST(ProcessChar, PrintablesAndLineEndsShowAsTheyAreAndTheOthersAsTheirCode) {
  for (int value = 0; value < 255; ++value) {
    OpenVoxDesk d;
    d.Process(Bytes({value}));
    std::string expected;
    if (value == '\r') {
      expected = "\r\n";
    } else if (value == '\n' || (value >= 32 && value <= 126)) {
      expected = std::string(1, static_cast<char>(value));
    } else {
      const std::string digits = std::to_string(value);
      expected = "[" + std::string(3 - digits.size(), '0') + digits + "]";
    }
    EXPECT_EQ(d.History(), expected) << value;
    EXPECT_EQ(d.terminal.log, expected) << value;
    EXPECT_EQ(d.source.VOXterm.AtLineStart, value == '\r') << value;
    EXPECT_TRUE(d.port.sent.empty()) << value;
    EXPECT_EQ(d.beeper.beeps, 0) << value;
  }
}

TEST(ProcessChar, TheBell) {
  OpenVoxDesk d;
  d.Process("a\x07z");
  EXPECT_EQ(d.History(), "a[007]z");
}

TEST(ProcessChar, AGreetingIsCollectedAndShownInBraces) {
  OpenVoxDesk d;
  d.Process(Bytes({255}));
  EXPECT_TRUE(d.source.VOXterm.InPower);
  d.Process(Bytes({38}));
  EXPECT_EQ(d.History(), "");
  d.Process(Bytes({8}));
  EXPECT_FALSE(d.source.VOXterm.InPower);
  EXPECT_TRUE(d.source.VOXterm.AtLineStart);
  EXPECT_EQ(d.History(), "{255-038-008}\r\n");
  EXPECT_EQ(d.port.sent, Strings{"00"});
  EXPECT_EQ(d.beeper.beeps, 1);
}

TEST(ProcessChar, OnlyModelsBelow100AreAnswered) {
  struct Case {
    int model;
    bool answered;
  };
  for (const Case& c : {Case{0, true}, Case{24, true}, Case{99, true}, Case{100, false}, Case{127, false},
                        Case{255, false}}) {
    OpenVoxDesk d;
    d.Process(Bytes({255, 0, c.model}));
    EXPECT_EQ(d.port.AllSent(), c.answered ? "00" : "") << c.model;
    EXPECT_EQ(d.beeper.beeps, 1) << c.model;
    EXPECT_FALSE(d.source.VOXterm.InPower);
  }
}

TEST(ProcessChar, AnyByteBelongsToAGreetingThatHasBegun) {
  OpenVoxDesk d;
  d.Process(Bytes({255, 255, 255}) + "a" + Bytes({255}) + "\r\n" + "b");
  EXPECT_EQ(d.History(), "{255-255-255}\r\na{255-013-010}\r\nb");
}

TEST(ProcessChar, AGreetingMayComeInPieces) {
  OpenVoxDesk d;
  for (const int value : {255, 19, 24, 0x6F, 0x6B}) d.port.Receive(Bytes({value}));
  EXPECT_EQ(d.History(), "{255-019-024}\r\nok");
  EXPECT_EQ(d.port.AllSent(), "00");
}

TEST(History, Of4000CharactersIsKeptAndOf4001FallsTo2002) {
  OpenVoxDesk d;
  for (int i = 0; i < 4000; ++i) ProcessChar(d.desk, static_cast<char>('a' + i % 26));
  EXPECT_EQ(d.History().size(), 4000u);
  EXPECT_EQ(d.terminal.cuts, 0);
  const std::string all = d.History();
  ProcessChar(d.desk, '!');
  EXPECT_EQ(d.History().size(), 2002u);
  EXPECT_TRUE(d.History() == all.substr(1999) + "!");
  EXPECT_EQ(d.terminal.cuts, 1);
}

TEST(History, IsAlsoCutByACommand) {
  OpenVoxDesk d;
  for (int i = 0; i < 3999; ++i) ProcessChar(d.desk, 'a');
  SendCommandText(d.desk, std::string(500, 'b') + "\r\n");
  EXPECT_LE(d.History().size(), 4000u);
  EXPECT_TRUE(d.History().ends_with("b$\r\n"));
}

TEST(CheckSize, Keeps2000CharactersAndCutsALongerTextByTheHundred) {
  const auto text = [](std::size_t size) {
    std::string filled;
    while (filled.size() < size) filled += static_cast<char>('a' + filled.size() % 26);
    return filled;
  };
  struct Case {
    std::size_t before;
    std::size_t after;
  };
  for (const Case& c : {Case{0, 0}, Case{2000, 2000}, Case{2001, 1902}, Case{2099, 2000}, Case{2100, 1902},
                        Case{100000, 1990}}) {
    const std::string all = text(c.before);
    const std::string kept = CheckSize(all);
    EXPECT_EQ(kept.size(), c.after) << c.before;
    EXPECT_TRUE(kept == all.substr(all.size() - kept.size())) << c.before;
  }
}

TEST(Terminal, BytesThatArriveWhileOneIsWorkedOffComeAfterIt) {
  OpenVoxDesk d;
  int deliveries = 0;
  d.loop.on_yield = [&] {
    if (++deliveries == 1) d.port.Receive("cd" + Bytes({255}));
    if (deliveries == 2) d.port.Receive(Bytes({38, 8}) + "e");
  };
  d.port.Receive("ab");
  EXPECT_EQ(d.History(), "abcd{255-038-008}\r\ne");
  EXPECT_EQ(d.terminal.log, d.History());
  EXPECT_FALSE(d.source.VOXterm.Draining);
}

TEST(Terminal, ACommandSentWhileBytesAreWorkedOffIsLoggedWhereItFell) {
  OpenVoxDesk d;
  bool sent = false;
  d.loop.on_yield = [&] {
    if (!sent) SendCommandText(d.desk, "x\r\n");
    sent = true;
  };
  d.port.Receive("ab");
  EXPECT_EQ(d.History(), "a$x$\r\nb");
}

TEST(Terminal, LeftWhileBytesAreWorkedOffTheRestStillReachesTheLog) {
  OpenVoxDesk d;
  d.loop.on_yield = [&] { LeaveTerminal(d.desk); };
  d.port.Receive("abc");
  EXPECT_EQ(d.History(), "abc");
  EXPECT_EQ(d.port.AllSent(), kBack);
  EXPECT_EQ(d.source.VOXterm.VOXbuffer, "");
}

TEST(Terminal, AnyTrafficIsTakenWhole) {
  OpenVoxDesk d;
  std::string bytes;
  for (int i = 0; i < 20000; ++i) bytes += static_cast<char>(i * 7919 >> 3);
  d.port.Receive(bytes);
  EXPECT_EQ(d.source.VOXterm.VOXbuffer, "");
  EXPECT_LE(d.History().size(), 4000u);
  EXPECT_GT(d.terminal.cuts, 0);
}

}  // namespace
}  // namespace tavlo::testing
