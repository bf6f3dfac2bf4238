// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <sys/stat.h>

#include <vector>

#include "road.h"
#include "terminal_process.h"

namespace tavlo::testing {
namespace {

using Process = CompanionRoad;

TEST_F(Process, TellsItsVersion) {
  EXPECT_EQ(Tavlo({"--version"}), (Ended{0, "tavlo 1.29.1\n", ""}));
}

TEST_F(Process, ShowsAndCompilesAFile) {
  Line(1).Type = GT;
  Line(1).LineNum = 4;
  EXPECT_EQ(Tavlo({"show", File()}), (Ended{0, "1\tGo to line 5\n", ""}));
  EXPECT_EQ(Tavlo({"compile", File(), "-o", folder_.filePath("image")}), (Ended{0, "", ""}));
  EXPECT_EQ(QFile(folder_.filePath("image")).size(), 8192);
}

TEST_F(Process, EndsWithTwoForACommandLineThatItDoesNotUnderstand) {
  EXPECT_EQ(Tavlo({"show"}), (Ended{2, "", "FILE is required\nRun with --help for more information.\n"}));
}

TEST_F(Process, ResultsThatCannotBeWrittenAreTold) {
  QProcess process;
  process.setStandardOutputFile("/dev/full");
  process.start(QStringLiteral(TAVLO_CLI), {"--version"});
  ASSERT_TRUE(process.waitForFinished(10000));
  EXPECT_EQ(process.exitCode(), 1);
  EXPECT_EQ(process.readAllStandardError(), "tavlo: the result could not be written\n");
}

TEST_F(Process, IdentifiesTheHub) {
  StartHub(
      {"--model", "quad", "--firmware", "1.53", "--drives", "15,0,30,0", "--drive-revs", "1.89,2.00,3.07"});
  EXPECT_EQ(Tavlo({"identify", "--port", hub->Link()}),
            (Ended{0,
                   "Hub Quad, firmware 1.53\n"
                   "Axis  Expected        Plugged in      Firmware\n"
                   "1     none            Zenu-A-p        1.89\n"
                   "2     none            none            -\n"
                   "3     none            Pelmar-L-x      3.07\n"
                   "4     none            none            -\n",
                   ""}));
}

TEST_F(Process, ALimitOfTimeEndsTheWaitForAHubThatIsSilent) {
  StartHub({"--fail", "silent-c"});
  EXPECT_EQ(Tavlo({"identify", "--port", hub->Link(), "--timeout", "0.3"}),
            (Ended{6, "", "tavlo: gave up: --timeout is over\n"}));
  EXPECT_EQ(Tavlo({"identify", "--port", hub->Link(), "--timeout", "0"}),
            (Ended{6, "", "tavlo: gave up: --timeout is over\n"}));
}

TEST_F(Process, ALimitOfTimeIsForTheStartOfARun) {
  LongMove();
  StartHub();
  ASSERT_EQ(Download().code, 0);
  EXPECT_EQ(Tavlo({"run", "--port", hub->Link(), "--timeout", "0.5", "--for", "1"}).code, 0);
}

TEST_F(Process, QuietTellsResultsAndFailuresAlone) {
  LongMove();
  StartHub();
  ASSERT_EQ(Download().code, 0);
  EXPECT_EQ(Tavlo({"run", "-q", "--port", hub->Link(), "--for", "0.2"}), (Ended{0, "1\tstarted\n", ""}));
}

TEST_F(Process, AHubOfAnUnknownModelIsTold) {
  StartHub({"--fail", "unknown-model"});
  EXPECT_EQ(Tavlo({"identify", "--port", hub->Link()}),
            (Ended{6, "", "tavlo: the device answers as model 16, which is no known hub\n"}));
  const QString copy = folder_.filePath("copy.TVH");
  const std::vector<QStringList> commands = {
      {"download", File()}, {"upload", copy}, {"verify", File()}, {"run"}, {"run", File()}, {"terminal"}};
  for (const QStringList& command : commands) {
    const Ended ended = Tavlo(command + QStringList{"--port", hub->Link()});
    EXPECT_EQ(ended.code, 6) << command[0].toStdString() << ended.err;
    EXPECT_NE(ended.err, "") << command[0].toStdString();
  }
  EXPECT_FALSE(QFile::exists(copy));
}

TEST_F(Process, ATerminalSeesTheBarAndAtTheEndOnlyTheResult) {
  StartHub({"--pace"});
  TerminalProcess tavlo({TAVLO_CLI, "download", File().toStdString(), "--port", hub->Link().toStdString()});
  EXPECT_EQ(tavlo.Wait(), 0);
  EXPECT_NE(tavlo.Shown().find("] program lines, 1 s left"), std::string::npos) << tavlo.Shown();
  const std::size_t erased = tavlo.Shown().rfind("\r\x1b[K");
  ASSERT_NE(erased, std::string::npos);
  EXPECT_EQ(tavlo.Shown().substr(erased + 4, 11), "Downloaded ");
}

}  // namespace
}  // namespace tavlo::testing
