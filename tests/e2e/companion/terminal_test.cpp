// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "road.h"
#include "terminal_process.h"

namespace tavlo::testing {
namespace {

const std::string kOpen = "tavlo: the drive terminal is open; the end of input or Ctrl-C closes it\n";

class TerminalRoad : public CompanionRoad {
 protected:
  QString Commands(const QByteArray& lines) {
    const QString path = folder_.filePath("commands");
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(lines);
    return path;
  }
};

TEST_F(TerminalRoad, ADriveAnswersTheCommandsOfAFile) {
  StartHub({"--drives", "15,0,0,0,0,0,0,0", "--drive-revs", "1.89"});
  TavloProcess tavlo({"terminal", "--port", hub->Link()}, Commands("1RV\n1PRx\n2RV\n"));
  EXPECT_EQ(tavlo.Wait(), (Ended{0, "$1RV$\n1.89\n$1PRx$\n[007]\n$2RV$\n", kOpen}));
  EXPECT_TRUE(HubGotLast("SCH1RV\r\n1PRx\r\n2RV\r\n0HM\r"));
  EXPECT_EQ(Tavlo({"identify", "--port", hub->Link()}).code, 0) << "the hub is itself again";
}

TEST_F(TerminalRoad, AnOperatorTypesReadsAndEndsWithCtrlD) {
  StartHub({"--drives", "15,0,0,0,0,0,0,0", "--drive-revs", "1.89"});
  TerminalProcess tavlo({TAVLO_CLI, "terminal", "--port", hub->Link().toStdString()});
  ASSERT_TRUE(tavlo.Shows("the drive terminal is open"));
  tavlo.Type("1RV\n");
  EXPECT_TRUE(tavlo.Shows("$1RV$\r\n1.89\r\n")) << tavlo.Shown();
  tavlo.Type("\x04");
  EXPECT_EQ(tavlo.Wait(), 0);
  EXPECT_TRUE(HubGotLast("SCH1RV\r\n0HM\r"));
}

TEST_F(TerminalRoad, CtrlCLeavesThePassthrough) {
  StartHub();
  TerminalProcess tavlo({TAVLO_CLI, "terminal", "--port", hub->Link().toStdString()});
  ASSERT_TRUE(tavlo.Shows("the drive terminal is open"));
  tavlo.Type("\x03");
  EXPECT_EQ(tavlo.Wait(), 0);
  EXPECT_TRUE(HubGotLast("SCH0HM\r"));
  EXPECT_LT(tavlo.ProcessorSeconds(), 2) << "waiting burns nothing";
}

TEST_F(TerminalRoad, APortThatGoesEndsItWithFive) {
  StartHub();
  TerminalProcess tavlo({TAVLO_CLI, "terminal", "--port", hub->Link().toStdString()});
  ASSERT_TRUE(tavlo.Shows("the drive terminal is open"));
  hub->Command("unplug");
  EXPECT_EQ(tavlo.Wait(), 5);
  EXPECT_NE(tavlo.Shown().find("tavlo: the port has gone; check the cable"), std::string::npos);
}

TEST_F(TerminalRoad, AHubThatIsTooOldIsRefused) {
  StartHub({"--firmware", "1.18"});
  EXPECT_EQ(
      Tavlo({"terminal", "--port", hub->Link()}),
      (Ended{3, "", "tavlo: the drive terminal needs a hub of firmware 1.19 or later; this one has 1.18\n"}));
  EXPECT_TRUE(HubGotLast("SC"));
}

}  // namespace
}  // namespace tavlo::testing
