// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <gtest/gtest.h>

#include "codegen/compile.h"
#include "link/download.h"
#include "link/scripted_hub.h"
#include "support/send_program.h"

namespace tavlo::testing {
namespace {

struct WireDesk : FakeDesk {
  ScriptedHub hub{port};

  /// A prompt whose text takes this many bytes of the pool, the end mark included.
  void PoolEntry(int line, int bytes) {
    Line(line).Type = MMI;
    Line(line).SubType = DisplayOnly;
    Line(line).Text = std::string(static_cast<std::size_t>(bytes) - 1, 'p');
  }
};

TEST(DownloadProg, AnEmptyProgramSendsTwoHundredLinesOfOneByteTheSystemAndOneByteOfPool) {
  WireDesk d;
  EXPECT_EQ(SendProgram(d.desk, 1.18F), DownloadResult::Done);
  EXPECT_EQ(d.hub.lines, std::vector<std::string>(200, "\x0b"));
  EXPECT_EQ(d.hub.system.size(), 256u);
  EXPECT_EQ(d.hub.pool_blocks, std::vector<std::string>{std::string(1, '\0')});
  EXPECT_EQ(d.hub.commands, (std::vector<std::string>{"F", "K"}));
  EXPECT_EQ(d.port.sent.size(), 1u + 200 + 256 + 1 + 1);
  EXPECT_TRUE(d.boxes.shown.empty());
}

TEST(DownloadProg, EachLineGoesOutWholeAndInOrder) {
  WireDesk d;
  d.Line(0).Type = FL;
  d.Line(1).Type = GT;
  d.Line(1).LineNum = 199;
  d.Line(199).Type = SP;
  d.Line(199).Dist = 0x010203;
  d.Line(199).Drive = 2;
  EXPECT_EQ(SendProgram(d.desk, 1.18F), DownloadResult::Done);
  EXPECT_EQ(Hex(d.hub.lines[0]), "0000007800640064004e2000");
  EXPECT_EQ(Hex(d.hub.lines[1]), "06c7");
  EXPECT_EQ(Hex(d.hub.lines[199]), "110001020302");
}

TEST(DownloadProg, TheSystemGoesOutByteByByte) {
  WireDesk d;
  EXPECT_EQ(SendProgram(d.desk, 1.18F), DownloadResult::Done);
  EXPECT_EQ(d.hub.system_outputs, std::vector<std::size_t>(256, 1));
  Program program = d.source.program;
  EXPECT_EQ(d.hub.system, SysString(program));
}

TEST(DownloadProg, WhatIsSentIsWhatCompilingGives) {
  WireDesk d;
  d.Line(0).Type = FL;
  d.PoolEntry(1, 20);
  d.PoolEntry(2, 50);
  d.Line(3).Type = RP;
  d.Line(4).Type = ER;
  Program program = d.source.program;
  const CompiledProgram compiled = CompileProgram(program);
  EXPECT_EQ(SendProgram(d.desk, 1.18F), DownloadResult::Done);
  EXPECT_EQ(d.hub.lines, std::vector<std::string>(compiled.lines.begin(), compiled.lines.end()));
  EXPECT_EQ(d.hub.system, compiled.system);
  EXPECT_EQ(d.hub.Pool(), compiled.pool);
}

TEST(DownloadProg, ThePoolIsCutIntoBlocksOfThirtyTwo) {
  struct Case {
    int texts;
    std::vector<std::size_t> blocks;
  };
  const std::vector<Case> cases = {{1, {2}},       {30, {31}},     {31, {32}},       {32, {32, 1}},
                                   {62, {32, 31}}, {63, {32, 32}}, {64, {32, 32, 1}}};
  for (const Case& c : cases) {
    WireDesk d;
    d.PoolEntry(0, c.texts);
    EXPECT_EQ(SendProgram(d.desk, 1.18F), DownloadResult::Done);
    std::vector<std::size_t> blocks;
    for (const std::string& block : d.hub.pool_blocks) blocks.push_back(block.size());
    EXPECT_EQ(blocks, c.blocks) << c.texts;
    EXPECT_EQ(d.hub.Pool(), std::string(static_cast<std::size_t>(c.texts) - 1, 'p') + '\xff' + '\0');
  }
}

TEST(DownloadProg, ThePoolOfOneDownloadIsNotCarriedIntoTheNext) {
  WireDesk d;
  d.PoolEntry(0, 40);
  EXPECT_EQ(SendProgram(d.desk, 1.18F), DownloadResult::Done);
  const std::string first = d.hub.lines[0];
  EXPECT_EQ(SendProgram(d.desk, 1.18F), DownloadResult::Done);
  EXPECT_EQ(d.hub.lines[0], first);
  EXPECT_EQ(d.hub.Pool().size(), 41u);
}

TEST(DownloadProg, ADownloadAfterABrokenOneStartsAfresh) {
  WireDesk d;
  d.PoolEntry(0, 100);
  d.hub.instead["pool 2"] = "";
  EXPECT_EQ(SendProgram(d.desk, 1.18F), DownloadResult::StoppedInPool);
  ScriptedHub again(d.port);
  EXPECT_EQ(SendProgram(d.desk, 1.18F), DownloadResult::Done);
  EXPECT_EQ(again.Pool().size(), 101u);
}

TEST(DownloadProg, TheSumIsComparedInSixteenBits) {
  WireDesk d;
  for (int line = 0; line < 200; ++line) {
    d.Line(line).Type = CM;
    d.Line(line).Text = std::string(27, 'z');
  }
  EXPECT_EQ(SendProgram(d.desk, 1.18F), DownloadResult::Done);
  EXPECT_GT(d.hub.Sum(), 65536);
}

TEST(DownloadProg, ASumThatIsOffByAnythingIsWrong) {
  for (const int off : {1, 256, 65535, 0x8000}) {
    WireDesk d;
    d.PoolEntry(5, 40);
    Program program = d.source.program;
    const int wrong = (CompileProgram(program).checksum + off) & 0xffff;
    d.hub.instead["K"] = Bytes({wrong >> 8, wrong & 255});
    EXPECT_EQ(SendProgram(d.desk, 1.18F), DownloadResult::WrongSum) << off;
  }
}

TEST(DownloadProg, TheSumComesHighByteFirst) {
  WireDesk d;
  Program program = d.source.program;
  const int sum = CompileProgram(program).checksum & 0xffff;
  ASSERT_NE(sum >> 8, sum & 255);
  d.hub.instead["K"] = Bytes({sum & 255, sum >> 8});
  EXPECT_EQ(SendProgram(d.desk, 1.18F), DownloadResult::WrongSum);
}

TEST(DownloadProg, LoopsAreNumberedFirst) {
  WireDesk d;
  d.Line(0).Type = RP;
  d.Line(1).Type = RP;
  d.Line(2).Type = ER;
  d.Line(3).Type = ER;
  EXPECT_EQ(SendProgram(d.desk, 1.18F), DownloadResult::Done);
  EXPECT_EQ(d.hub.lines[2][1], 1) << "the inner End Repeat goes back to the inner Repeat";
  EXPECT_EQ(d.hub.lines[3][1], 0);
  EXPECT_NE(d.hub.lines[0][4], d.hub.lines[1][4]);
}

TEST(DownloadProg, TheGaugeGoesFromTenToTwoHundredOverTheLinesAndThenTwiceFromZero) {
  WireDesk d;
  d.PoolEntry(0, 70);
  EXPECT_EQ(SendProgram(d.desk, 1.18F), DownloadResult::Done);
  std::vector<double> expected = {10};
  for (int line = 0; line < 200; ++line) expected.push_back(10 + line * 190 / 199.0);
  expected.push_back(200);
  expected.push_back(0);
  for (int i = 1; i <= 256; ++i) expected.push_back(i * 200 / 256.0);
  expected.push_back(0);
  for (int block = 1; block <= 3; ++block) expected.push_back(block * 200 / 3.0);
  EXPECT_EQ(d.downbox.first_seen, 10);
  ASSERT_EQ(d.downbox.gauges.size(), expected.size());
  for (std::size_t i = 0; i < expected.size(); ++i) {
    EXPECT_NEAR(d.downbox.gauges[i], expected[i], 1e-9) << i;
  }
}

TEST(DownloadProg, TheProgressFormStandsDuringTheTransferOnly) {
  WireDesk d;
  std::vector<std::string> hidden;
  d.hub.on_place = [&](const std::string& place) {
    if (!d.downbox.visible) hidden.push_back(place);
  };
  EXPECT_EQ(SendProgram(d.desk, 1.18F), DownloadResult::Done);
  EXPECT_TRUE(hidden.empty());
  EXPECT_FALSE(d.downbox.visible);
}

TEST(DownloadProg, TheProgressIsToldInBytesOfTheWhole) {
  WireDesk d;
  EXPECT_EQ(SendProgram(d.desk, 1.18F), DownloadResult::Done);
  EXPECT_FALSE(d.downbox.phases.empty());
  EXPECT_EQ(d.downbox.bytes_done, d.downbox.bytes_total);
  EXPECT_GE(d.downbox.bytes_total, 200 + 256 + 1);
}

TEST(DownloadProg, YieldsOnceForEachLineEachByteAndEachBlock) {
  WireDesk d;
  d.PoolEntry(0, 70);
  EXPECT_EQ(SendProgram(d.desk, 1.18F), DownloadResult::Done);
  EXPECT_EQ(d.loop.yields, 200 + 256 + 3);
}

TEST(DownloadProg, EventsStayOffUntilTheEndAndAreOnAfterwards) {
  for (const int before : {0, 1, 3}) {
    WireDesk d;
    d.port.threshold = before;
    int on = 0;
    d.port.OnComm = [&] { ADD_FAILURE() << "an event during the transfer"; };
    d.hub.on_place = [&](const std::string&) { on += d.port.RThreshold(); };
    d.loop.on_yield = [&] { on += d.port.RThreshold(); };
    EXPECT_EQ(SendProgram(d.desk, 1.38F), DownloadResult::Done);
    EXPECT_EQ(on, 0);
    EXPECT_EQ(d.port.RThreshold(), 1);
  }
}

TEST(DownloadProg, WhatWaitedBeforeIsThrownAway) {
  WireDesk d;
  d.port.Reply("YYY\xfe");
  EXPECT_EQ(SendProgram(d.desk, 1.18F), DownloadResult::Done);
}

TEST(DownloadProg, EachAnswerMayTakeAlmostASecond) {
  WireDesk d;
  for (const char* place : {"F", "line 1", "line 200", "system 1", "system 8", "pool 1", "K"}) {
    d.hub.delays[place] = 0.95;
  }
  EXPECT_EQ(SendProgram(d.desk, 1.18F), DownloadResult::Done);
}

TEST(DownloadProg, AnAnswerOfTwoBytesMayComeInTwoPieces) {
  WireDesk d;
  Program program = d.source.program;
  const int sum = CompileProgram(program).checksum & 0xffff;
  d.hub.instead["K"] = "";
  d.hub.on_place = [&](const std::string& place) {
    if (place != "K") return;
    d.port.Reply(Bytes({sum >> 8}), 0.1);
    d.port.Reply(Bytes({sum & 255}), 0.9);
  };
  EXPECT_EQ(SendProgram(d.desk, 1.18F), DownloadResult::Done);
}

TEST(DownloadProg, ANoiseThatIsReadByItselfDoesNoHarm) {
  WireDesk d;
  d.hub.on_place = [&](const std::string& place) {
    if (place == "line 7") d.port.Reply("noise", 0.2);
  };
  d.hub.delays["line 7"] = 0.5;
  EXPECT_EQ(SendProgram(d.desk, 1.18F), DownloadResult::Done);
}

TEST(DownloadProg, AWaitAcrossMidnightLastsUntilTheYComes) {
  for (const char* place : {"F", "line 1", "line 120", "system 4", "pool 1", "K"}) {
    WireDesk d;
    d.clock.now = 86399.5;
    d.hub.delays[place] = 3600;
    EXPECT_EQ(SendProgram(d.desk, 1.18F), DownloadResult::Done) << place;
  }
}

TEST(DownloadProg, FromFirmware119OnTheDrivesAreSetUp) {
  struct Case {
    float rev;
    bool set_up;
  };
  for (const Case& c : {Case{1.0F, false}, {1.18F, false}, {1.19F, true}, {1.38F, true}, {3.55F, true}}) {
    WireDesk d;
    d.source.program.Axis.DriveModel[0] = 10;
    EXPECT_EQ(SendProgram(d.desk, c.rev), DownloadResult::Done);
    EXPECT_EQ(d.hub.commands.size(), c.set_up ? 2u + 10 : 2u) << c.rev;
    if (c.set_up) {
      EXPECT_EQ(d.hub.commands[2], "H");
      EXPECT_EQ(d.hub.commands.back(), "0HM\r");
    }
    EXPECT_EQ(d.port.RThreshold(), 1);
    EXPECT_FALSE(d.downbox.visible);
  }
}

TEST(DownloadProg, TheDrivesAreNotSetUpAfterAWrongSum) {
  WireDesk d;
  d.hub.instead["K"] = Bytes({1, 2});
  EXPECT_EQ(SendProgram(d.desk, 1.38F), DownloadResult::WrongSum);
  EXPECT_EQ(d.hub.commands.back(), "K");
}

}  // namespace
}  // namespace tavlo::testing
