// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <gtest/gtest.h>

#include "codegen/compile.h"
#include "link/com_port.h"
#include "link/download.h"
#include "link/drive_check.h"
#include "link/execution.h"
#include "link/hub_messages.h"
#include "link/polled.h"
#include "link/scripted_hub.h"
#include "support/send_program.h"

namespace tavlo::testing {
namespace {

// Every letter, number and length that the hub's firmware knows, told once more in figures. A change of
// one of these is a change of the wire, which no hub follows.

TEST(Wire, LineParameters) {
  EXPECT_EQ(kLineSettings, "19200,N,8,1");
}

TEST(Wire, PortsAreOneToEight) {
  EXPECT_EQ(kPorts, 8);
}

TEST(Wire, TheHubHasASecondToAnswer) {
  EXPECT_EQ(kReplyLimit, 1.0);
}

TEST(Wire, HeadersOfMessages) {
  EXPECT_EQ(static_cast<int>(HubHeader::Greeting), 255);
  EXPECT_EQ(static_cast<int>(HubHeader::LineStarted), 254);
  EXPECT_EQ(static_cast<int>(HubHeader::StepDone), 253);
  EXPECT_EQ(static_cast<int>(HubHeader::LimitHit), 252);
  EXPECT_EQ(static_cast<int>(HubHeader::StopButton), 251);
  EXPECT_EQ(static_cast<int>(HubHeader::OldFirmware), 250);
  EXPECT_EQ(static_cast<int>(HubHeader::WrongDrive), 249);
  EXPECT_EQ(static_cast<int>(HubHeader::DriveStatus), 241);
  EXPECT_EQ(static_cast<int>(HubHeader::DriveLost), 240);
  EXPECT_EQ(static_cast<int>(HubHeader::StackOverflow), 239);
  EXPECT_EQ(static_cast<int>(HubHeader::StackUnderflow), 238);
  EXPECT_EQ(static_cast<int>(HubHeader::LineFinished), 237);
  EXPECT_EQ(static_cast<int>(HubHeader::LineConcurrent), 236);
  EXPECT_EQ(static_cast<int>(HubHeader::ProgramCounter), 235);
  EXPECT_EQ(static_cast<int>(HubHeader::ExtendedOutputs), 221);
  EXPECT_EQ(static_cast<int>(HubHeader::ExtendedInputs), 213);
  EXPECT_EQ(static_cast<int>(HubHeader::DriveDisabled), 212);
  EXPECT_EQ(static_cast<int>(HubHeader::DriveFault), 211);
}

TEST(Wire, CodesOfTheHubModels) {
  EXPECT_EQ(kHubModels[HubOcto].code, 8);
  EXPECT_EQ(kHubModels[HubQuad].code, 24);
}

TEST(Wire, SizesOfTheHubsMemory) {
  EXPECT_EQ(kLines, 200);
  EXPECT_EQ(kSlotBytes, 32);
  EXPECT_EQ(kSystemBytes, 256);
  EXPECT_EQ(kPoolBytes, 1536);
  EXPECT_EQ(kImageBytes, 8192);
}

TEST(Wire, QuestionWhoIsC) {
  FakeDesk d;
  EXPECT_EQ(CheckDrive(d.desk), "");
  EXPECT_EQ(d.port.AllSent(), "C");
  d.port.sent.clear();
  EXPECT_EQ(SilentCheckDrive(d.desk.link()), "");
  EXPECT_EQ(d.port.AllSent(), "C");
}

TEST(Wire, QuestionWhichDrivesIsD) {
  FakeDesk d;
  EXPECT_FALSE(AllDrivesOK(d.desk.program(), d.desk.link()));
  EXPECT_EQ(d.port.AllSent(), "D");
}

TEST(Wire, QuestionWhichRevisionsIsR) {
  FakeDesk d;
  std::array<float, kAxisSlots> revisions{};
  ScanDrivesRV(d.desk.link(), HubAxes(d.desk.program()), revisions);
  EXPECT_EQ(d.port.AllSent(), "R");
}

/// Does the answer of so many bytes end the question?
bool DrivesAnsweredBy(HubModel model, std::size_t bytes) {
  FakeDesk d;
  d.source.program.HubIndex = model;
  d.port.on_output = [&](const std::string& sent) {
    if (sent == "D") d.port.Reply(std::string(bytes, '\0'));
  };
  (void)AllDrivesOK(d.desk.program(), d.desk.link());
  return d.port.AllSent() == "DR";
}

bool RevisionsAnsweredBy(HubModel model, std::size_t bytes) {
  FakeDesk d;
  d.source.program.HubIndex = model;
  d.port.on_output = [&](const std::string&) { d.port.Reply(std::string(bytes, '1')); };
  std::array<float, kAxisSlots> revisions{};
  ScanDrivesRV(d.desk.link(), HubAxes(d.desk.program()), revisions);
  return d.boxes.shown.empty();
}

bool IdentityAnsweredBy(std::size_t bytes) {
  FakeDesk d;
  d.port.on_output = [&](const std::string&) { d.port.Reply(std::string(bytes, '\x08')); };
  return !CheckDrive(d.desk).empty();
}

TEST(Wire, LengthsOfReplies) {
  EXPECT_FALSE(IdentityAnsweredBy(1));
  EXPECT_TRUE(IdentityAnsweredBy(2));
  EXPECT_FALSE(DrivesAnsweredBy(HubOcto, 15));
  EXPECT_TRUE(DrivesAnsweredBy(HubOcto, 16));
  EXPECT_FALSE(DrivesAnsweredBy(HubQuad, 7));
  EXPECT_TRUE(DrivesAnsweredBy(HubQuad, 8));
  EXPECT_FALSE(RevisionsAnsweredBy(HubOcto, 23));
  EXPECT_TRUE(RevisionsAnsweredBy(HubOcto, 24));
  EXPECT_FALSE(RevisionsAnsweredBy(HubQuad, 11));
  EXPECT_TRUE(RevisionsAnsweredBy(HubQuad, 12));
}

TEST(Wire, ADownloadIsFThenLinesSystemAndPoolThenK) {
  FakeDesk d;
  ScriptedHub hub(d.port);
  EXPECT_EQ(SendProgram(d.desk, 1.0F), DownloadResult::Done);
  ASSERT_EQ(d.port.AllSent().size(), 1u + 200 + 256 + 1 + 1);
  EXPECT_EQ(d.port.sent.front(), "F");
  EXPECT_EQ(d.port.sent.back(), "K");
  EXPECT_EQ(d.port.sent[d.port.sent.size() - 2], std::string(1, '\0')) << "the pool ends with 0";
}

TEST(Wire, TheHubAcknowledgesADownloadTwoHundredAndTenTimes) {
  FakeDesk d;
  ScriptedHub hub(d.port);
  int places = 0;
  hub.on_place = [&](const std::string&) { ++places; };
  EXPECT_EQ(SendProgram(d.desk, 1.0F), DownloadResult::Done);
  // "F", the lines, each 32nd byte of the system, the pool's one block; and the sum.
  EXPECT_EQ(places, 1 + 200 + 8 + 1 + 1);
}

TEST(Wire, CommandsOfARun) {
  FakeDesk d;
  ScriptedHub hub(d.port);
  EXPECT_EQ(Execute(d.desk), ExecuteResult::Ran);
  EXPECT_EQ(d.port.AllSent(), "SCDRE");
  d.port.sent.clear();
  StartRun(d.desk, RunWindow::ExecStatus);
  EXPECT_EQ(d.port.AllSent(), "X");
  d.port.sent.clear();
  StartRun(d.desk, RunWindow::fakeMMI);
  EXPECT_EQ(d.port.AllSent(), "M");
  d.port.sent.clear();
  StopRun(d.desk, RunWindow::ExecStatus);
  EXPECT_EQ(d.port.AllSent(), "S");
}

TEST(Wire, AnswersToMessages) {
  for (int header = 128; header <= 255; ++header) {
    FakeDesk d;
    d.boxes.answers.assign(4, Answer::No);
    HandleMsg(d.desk, Bytes({header, 1, 8, 0}));
    const std::string expected = header == 254 || header == 236 ? "I" : header == 255 ? "*0" : "";
    EXPECT_EQ(d.port.AllSent(), expected) << header;
  }
}

TEST(Wire, AResetIsTenR) {
  FakeDesk d;
  d.port.on_output = [&](const std::string&) { d.port.Reply("Y"); };
  ResetDrive(d.desk.link(), d.desk.loop);
  EXPECT_EQ(d.port.AllSent(), "RRRRRRRRRR");
}

TEST(Wire, PassthroughToTheDrives) {
  FakeDesk d;
  d.source.program.Axis.DriveModel.fill(0);
  d.source.program.Axis.DriveModel[1] = 26;
  ConfigDSPdrives(d.desk.program(), d.desk.link());
  EXPECT_EQ(d.port.AllSent(), "H2PR1\r2TD0\r2AO3\r2BO3\r2MO3\r2AI3\r2SI3\r2SA\r0HM\r");
}

}  // namespace
}  // namespace tavlo::testing
