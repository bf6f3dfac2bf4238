// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/companion.h"

namespace tavlo::testing {
namespace {

using Check = Companion;

TEST_F(Check, AProgramThatPassesSaysSo) {
  EXPECT_EQ(Tavlo({"check", File()}), (Outcome{0, "The program passes every check\n", ""}));
  EXPECT_EQ(Tavlo({"check", File(), "--json"}), (Outcome{0, "{\"boxes\":[],\"passed\":true}\n", ""}));
}

TEST_F(Check, WhatStopsTheChainIsToldInItsWordsAndExitsWith3) {
  Line(1).Type = CL;
  const std::string text =
      "You have subroutine Calls in your program, but no Return instructions.  That is not allowed.";
  EXPECT_EQ(Tavlo({"check", File()}), (Outcome{3, "", "Call without Return: " + text + "\n"}));
  EXPECT_EQ(Tavlo({"check", File(), "--json"}).out,
            "{\"boxes\":[{\"text\":\"" + text +
                "\",\"title\":\"Call without "
                "Return\",\"buttons\":\"OK\",\"icon\":\"none\"}],\"passed\":false,\"error\":{\"code\":3,"
                "\"message\":\"Call without Return: " +
                text + "\"}}\n");
}

TEST_F(Check, TheFirmwareIsGivenOr138) {
  Line(1).Type = IM;
  EXPECT_EQ(Tavlo({"check", File()}).code, 0);
  EXPECT_EQ(Tavlo({"check", File(), "--firmware", "1.05"}).code, 0);
  EXPECT_EQ(Tavlo({"check", File(), "--firmware", "1.04"}).code, 3);
}

TEST_F(Check, YesGoesOnBehindTheWarningAndNoStopsThere) {
  Line(1).Type = FL;
  Line(1).DistIsMMI = true;
  Line(2).Type = MMI;
  Line(2).SubType = GetSpeed;
  Line(2).DistVar = 0;
  EXPECT_EQ(Tavlo({"check", File(), "--yes"}).code, 0);
  EXPECT_EQ(Tavlo({"check", File(), "--no"}).code, 3);
  const std::string json = Tavlo({"check", File(), "--no", "--json"}).out;
  EXPECT_NE(json.find("\"buttons\":\"OKCancel\",\"icon\":\"question\""), std::string::npos) << json;
}

TEST_F(Check, ADownloadRunsTheSameChainAndSendsNothingWhenItStops) {
  Line(1).Type = RP;
  EXPECT_EQ(Tavlo({"download", File(), "--port", "1"}),
            (Outcome{3, "", "Can't download.  You have more Repeats than End Repeats.\n"}));
  EXPECT_EQ(hub.port.sent, "SC");
}

TEST_F(Check, AFileThatCannotBeReadExitsWith4) {
  EXPECT_EQ(Tavlo({"check", folder.Path("missing.TVH")}).code, 4);
}

}  // namespace
}  // namespace tavlo::testing
