// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "codegen/compile.h"
#include "link/drive_check.h"
#include "road.h"

namespace tavlo::testing {
namespace {

class DownloadRoad : public CompanionRoad {
 protected:
  DownloadRoad() {
    Line(1).Type = FL;
    Line(200).Type = MMI;
    Line(200).SubType = DisplayOnly;
    Line(200).Text = "Ready";
  }
  CompiledProgram Compiled() {
    Program copy = program;
    copy.HubVersion = RevisionOf(38);
    copy.MMIused = true;
    return CompileProgram(copy);
  }
};

TEST_F(DownloadRoad, TheHubConfirmsTheSumOfWhatWasSent) {
  StartHub();
  const CompiledProgram compiled = Compiled();
  std::string sent = "SCF";
  for (const std::string& line : compiled.lines) sent += line;
  sent += compiled.system + compiled.pool + "K";
  const std::string bytes = std::to_string(sent.size() - 4);
  EXPECT_EQ(Download(), (Ended{0,
                               "Downloaded " + bytes +
                                   " bytes to the Tavlo Hub-Octo, firmware 1.38; it confirms the sum " +
                                   std::to_string(compiled.checksum) + "\n",
                               ""}));
  EXPECT_TRUE(HubGotFirst(QByteArray::fromStdString(sent)));
}

TEST_F(DownloadRoad, AtThePaceOfTheWireItArrivesTheSame) {
  StartHub({"--pace", "--model", "quad", "--firmware", "1.18"});
  program.HubIndex = HubQuad;
  const Ended ended = Download();
  EXPECT_EQ(ended.code, 0) << ended.err;
  EXPECT_NE(ended.out.find(" bytes to the Hub Quad, firmware 1.18; it confirms the sum "), std::string::npos);
  EXPECT_TRUE(HubGotLast("K")) << "no drive is configured by this firmware";
}

TEST_F(DownloadRoad, TheDriveSettingsBehindTheProofArriveThoughNoAnswerIsAwaited) {
  StartHub({"--pace"});
  for (int axis = 0; axis < 8; ++axis) program.Axis.DriveModel[axis] = 40;
  ASSERT_EQ(Download().code, 0);
  EXPECT_TRUE(HubGotLast("8SA\r0HM\r"));
  EXPECT_TRUE(Received().contains("KH1PR1\r1TD0\r1AO3\r1BO3\r1MO3\r1AI3\r1SI3\r1SA\r2PR1\r"));
  EXPECT_EQ(Tavlo({"identify", "--port", hub->Link()}).code, 0) << "the hub is itself again";
}

TEST_F(DownloadRoad, AnInterruptedTransferEndsWith130AndTheHubTakesTheNextOne) {
  StartHub({"--fail", "silent-line:100"});
  TavloProcess tavlo({"download", File(), "--port", hub->Link(), "--trace"});
  ASSERT_TRUE(tavlo.Says("-> 46 "));
  tavlo.Signal(SIGINT);
  const Ended ended = tavlo.Wait();
  EXPECT_EQ(ended.code, 130);
  EXPECT_EQ(ended.out, "");
  EXPECT_TRUE(
      ended.err.ends_with("tavlo: the program in the hub is not whole; download it again before you run "
                          "it\ntavlo: interrupted\n"))
      << ended.err;
  hub->Command("fail none");
  QThread::msleep(1000);
  EXPECT_EQ(Download().code, 0);
}

TEST_F(DownloadRoad, APortThatTwoWantGoesToTheFirst) {
  StartHub({"--fail", "silent-c"});
  TavloProcess first({"identify", "--port", hub->Link(), "--trace"});
  ASSERT_TRUE(first.Says("-> 43 "));
  const Ended second = Download();
  EXPECT_EQ(second.code, 5);
  EXPECT_EQ(second.out, "");
  EXPECT_NE(second.err.find(hub->Link().toStdString() + " is in use by tavlo (process "), std::string::npos)
      << second.err;
  EXPECT_EQ(first.Wait().code, 6);
}

TEST_F(DownloadRoad, ADeviceThatIsNotThereIsToldWithWhatToDo) {
  const QString device = folder_.filePath("no-hub");
  EXPECT_EQ(Tavlo({"download", File(), "--port", device}),
            (Ended{5, "",
                   "tavlo: cannot open " + device.toStdString() + ": there is no device " +
                       device.toStdString() + "; connect the hub or choose another port\n"}));
}

TEST_F(DownloadRoad, WhatIsNoSerialPortIsToldInWordsOfItsOwn) {
  const QString program_file = File();
  for (const QString& device : {QStringLiteral("/dev/null"), program_file, folder_.path()}) {
    const std::string name = device.toStdString();
    EXPECT_EQ(
        Tavlo({"download", program_file, "--port", device}),
        (Ended{5, "",
               "tavlo: cannot open " + name + ": " + name + " is no serial port; choose another port\n"}));
  }
}

class DownloadFailure : public DownloadRoad, public ::testing::WithParamInterface<FailureCase> {};

TEST_P(DownloadFailure, IsToldInItsWordsAndByItsExitCode) {
  StartHub({"--fail", GetParam().mode});
  EXPECT_EQ(Download(), (Ended{GetParam().code, "", GetParam().message + "\n"}));
}

const std::string kNoDownload =
    "The Tavlo Hub is not responding to the Download command.  Is it connected to the right port and turned "
    "on?";
const std::string kNoSum =
    "The Tavlo Hub did not provide a checksum.  There may be a problem with the download.";
const std::string kNoSystem = "The Tavlo Hub has stopped responding during system info transfer.";
const std::string kNoPool = "The Tavlo Hub has stopped responding during string pool transfer.";
const std::string kGone = "tavlo: the port has gone; check the cable";

std::string StoppedAt(int line) {
  return "The Tavlo Hub has stopped responding during transfer of program line " + std::to_string(line) +
         ". Is it connected and turned on?";
}

INSTANTIATE_TEST_SUITE_P(
    EveryMode, DownloadFailure,
    ::testing::Values(
        FailureCase{"silent-c", 6, kGivesTime + kNotCommunicating},
        FailureCase{"one-byte-c", 6, kGivesTime + kNotCommunicating},
        FailureCase{"late-c", 6, kGivesTime + kNotCommunicating}, FailureCase{"silent-f", 6, kNoDownload},
        FailureCase{"late-f", 6, kNoDownload}, FailureCase{"silent-line:1", 6, StoppedAt(1)},
        FailureCase{"silent-line:200", 6, StoppedAt(200)}, FailureCase{"late-line:7", 6, StoppedAt(7)},
        FailureCase{"wrong-line:7", 6, StoppedAt(7)}, FailureCase{"noise-line:7", 6, StoppedAt(7)},
        FailureCase{"silent-system:1", 6, kNoSystem}, FailureCase{"silent-system:8", 6, kNoSystem},
        FailureCase{"noise-system:3", 6, kNoSystem}, FailureCase{"silent-pool:1", 6, kNoPool},
        FailureCase{"noise-pool:1", 6, kNoPool}, FailureCase{"no-sum", 6, kNoSum},
        FailureCase{"short-sum", 6, kNoSum}, FailureCase{"late-sum", 6, kNoSum},
        FailureCase{
            "wrong-sum", 7,
            "Your program did not download correctly.  Make sure the cable connections are secure, less "
            "than 50 feet long, and that you are not working around electrical noise, such as a welder, a "
            "high powered motor or big relays."},
        FailureCase{"drop:300", 6, kNoSystem}, FailureCase{"unplug:1", 5, kGone},
        FailureCase{"unplug:2", 5, kGone}, FailureCase{"unplug:100", 5, kGone},
        FailureCase{"unplug:300", 5, kGone}),
    NameOfMode);

}  // namespace
}  // namespace tavlo::testing
