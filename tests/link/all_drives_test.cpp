// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <gtest/gtest.h>

#include "link/drive_check.h"
#include "link/scripted_hub.h"

namespace tavlo::testing {
namespace {

struct DrivesDesk : FakeDesk {
  ScriptedHub hub{port};

  /// What the hub says of an axis: the model expected there and the identity found.
  void Found(int axis, int expected, int identity) {
    hub.drives[2 * axis] = static_cast<char>(expected);
    hub.drives[2 * axis + 1] = static_cast<char>(identity);
  }
  void Revision(int axis, const std::string& digits) { hub.drive_revisions.replace(3 * axis, 3, digits); }
  void ChangeSpeedOn(int axis, int line = 0) {
    Line(line).Type = SS;
    Line(line).SubType = ChangeSpeed;
    Line(line).Drive = static_cast<std::int16_t>(axis);
  }
};

ShownBox MissingBox(int port) {
  const std::string number = std::to_string(port);
  return {"The drive connected to port " + number +
              " is not responding.  If you don't plan to use a drive on port " + number +
              " then change the model of drive " + number + " to \"none\", and download.",
          "Missing drive", Buttons::OK, Icon::None};
}

const ShownBox kMissingOnPortOne = {
    "The drive connected to port 1 is not responding.  You must have a drive on port 1.", "Missing drive",
    Buttons::OK, Icon::None};

ShownBox WrongBox(int port, const std::string& actual, const std::string& expected) {
  const std::string number = std::to_string(port);
  return {"The drive connected to port " + number + " is a " + actual + ".  Your program expects drive " +
              number + " to be a " + expected + ".  Do you want to run anyway?",
          "Wrong drive", Buttons::YesNo, Icon::None};
}

ShownBox FirmwareBox(const std::string& axis, const std::string& needed, const std::string& version) {
  return {"Your program uses a Start/Stop Change Speed instruction on " + axis +
              ". This instruction requires drive firmware version " + needed +
              " or later. Your drive has version " + version + ".",
          "Old Firmware", Buttons::OK, Icon::None};
}

TEST(AllDrivesOK, AsksForDrivesAndThenForTheirRevisions) {
  DrivesDesk d;
  EXPECT_TRUE(AllDrivesOK(d.desk.program(), d.desk.link()));
  EXPECT_EQ(d.port.sent, (std::vector<std::string>{"D", "R"}));
  EXPECT_TRUE(d.boxes.shown.empty());
  EXPECT_EQ(d.source.link.DriveRev[0], 1.89F);
  EXPECT_EQ(d.source.link.DriveRev[7], 1.89F);
}

TEST(AllDrivesOK, OnAHubQuadTheRepliesAreEightAndTwelveBytes) {
  DrivesDesk d;
  d.source.program.HubIndex = HubQuad;
  d.hub.drives = Bytes({1, 5, 4, 3, 3, 2, 2, 7});
  d.hub.drive_revisions = "189189189153";
  EXPECT_TRUE(AllDrivesOK(d.desk.program(), d.desk.link()));
  EXPECT_TRUE(d.boxes.shown.empty());
  EXPECT_EQ(d.source.link.DriveRev[3], 1.53F);
}

TEST(AllDrivesOK, NoAnswerOrAShortOneIsToldAndStaysInTheBuffer) {
  for (const std::size_t bytes : {0u, 8u, 15u}) {
    DrivesDesk d;
    d.hub.instead["D"] = std::string(bytes, 'x');
    EXPECT_FALSE(AllDrivesOK(d.desk.program(), d.desk.link()));
    const std::vector<ShownBox> expected = {
        {"The Tavlo Hub is not responding to the D command.  Is it connected to the right port and turned "
         "on?",
         std::string(kApplicationTitle), Buttons::OK, Icon::Question}};
    EXPECT_EQ(d.boxes.shown, expected);
    EXPECT_EQ(d.port.AllSent(), "D");
    EXPECT_EQ(d.port.InBufferCount(), static_cast<int>(bytes));
  }
}

TEST(AllDrivesOK, TheThresholdIsOneByEveryWayOut) {
  struct Case {
    const char* name;
    std::function<void(DrivesDesk&)> set_up;
    bool ok;
  };
  const std::vector<Case> cases = {
      {"good", [](DrivesDesk&) {}, true},
      {"no D", [](DrivesDesk& d) { d.hub.instead["D"] = ""; }, false},
      {"no R", [](DrivesDesk& d) { d.hub.instead["R"] = ""; }, true},
      {"old firmware",
       [](DrivesDesk& d) {
         d.ChangeSpeedOn(0);
         d.Revision(0, "100");
       },
       false},
      {"missing", [](DrivesDesk& d) { d.Found(2, 3, 0); }, false},
      {"wrong, No",
       [](DrivesDesk& d) {
         d.Found(2, 3, 5);
         d.boxes.setNextAnswer(Answer::No);
       },
       false},
      {"wrong, Yes", [](DrivesDesk& d) { d.Found(2, 3, 5); }, true},
  };
  for (const Case& c : cases) {
    for (const int before : {0, 1, 3}) {
      DrivesDesk d;
      d.port.threshold = before;
      c.set_up(d);
      std::vector<int> during;
      d.hub.on_place = [&](const std::string&) { during.push_back(d.port.RThreshold()); };
      EXPECT_EQ(AllDrivesOK(d.desk.program(), d.desk.link()), c.ok) << c.name;
      for (const int threshold : during) EXPECT_EQ(threshold, 0) << c.name;
      EXPECT_EQ(d.port.RThreshold(), 1) << c.name;
    }
  }
}

TEST(AllDrivesOK, ASilentRevisionQueryIsToldAndTheDrivesAreStillCompared) {
  DrivesDesk d;
  d.hub.instead["R"] = "";
  d.Found(3, 2, 0);
  EXPECT_FALSE(AllDrivesOK(d.desk.program(), d.desk.link()));
  ASSERT_EQ(d.boxes.shown.size(), 2u);
  EXPECT_EQ(d.boxes.shown[0].text,
            "The Tavlo Hub is not responding (R).  Is it connected to the right port and turned on?");
  EXPECT_EQ(d.boxes.shown[1], MissingBox(4));
}

TEST(AllDrivesOK, AMissingDriveOnPortOneHasAWordOfItsOwn) {
  DrivesDesk d;
  d.Found(0, 1, 0);
  EXPECT_FALSE(AllDrivesOK(d.desk.program(), d.desk.link()));
  EXPECT_EQ(d.boxes.shown, std::vector<ShownBox>{kMissingOnPortOne});
}

TEST(AllDrivesOK, AMissingDriveOnAnotherPortIsNamedByItsPort) {
  for (int axis = 1; axis < 8; ++axis) {
    DrivesDesk d;
    d.Found(axis, 1, 0);
    EXPECT_FALSE(AllDrivesOK(d.desk.program(), d.desk.link()));
    EXPECT_EQ(d.boxes.shown, std::vector<ShownBox>{MissingBox(axis + 1)});
  }
}

TEST(AllDrivesOK, OnlyTheFirstMissingDriveIsTold) {
  DrivesDesk d;
  d.Found(5, 7, 0);
  d.Found(2, 3, 0);
  EXPECT_FALSE(AllDrivesOK(d.desk.program(), d.desk.link()));
  EXPECT_EQ(d.boxes.shown, std::vector<ShownBox>{MissingBox(3)});
}

TEST(AllDrivesOK, AnythingMayBeWhereNoDriveIsExpected) {
  for (const int identity : {0, 5, 9, 200}) {
    DrivesDesk d;
    d.Found(1, 0, identity);
    EXPECT_TRUE(AllDrivesOK(d.desk.program(), d.desk.link())) << identity;
    EXPECT_TRUE(d.boxes.shown.empty()) << identity;
  }
}

TEST(AllDrivesOK, AWrongDriveIsNamedAndTheOperatorDecides) {
  for (const Answer answer : {Answer::Yes, Answer::No}) {
    DrivesDesk d;
    d.Found(2, 3, 5);
    d.boxes.setNextAnswer(answer);
    EXPECT_EQ(AllDrivesOK(d.desk.program(), d.desk.link()), answer == Answer::Yes);
    EXPECT_EQ(d.boxes.shown, std::vector<ShownBox>{WrongBox(3, "Oskel-A", "Oskel-B")});
  }
}

TEST(AllDrivesOK, AYesGoesOnToTheNextWrongDrive) {
  DrivesDesk d;
  d.Found(1, 4, 5);
  d.Found(3, 2, 5);
  d.Found(5, 7, 5);
  d.boxes.setNextAnswer(Answer::Yes);
  d.boxes.setNextAnswer(Answer::No);
  EXPECT_FALSE(AllDrivesOK(d.desk.program(), d.desk.link()));
  EXPECT_EQ(d.boxes.shown,
            (std::vector<ShownBox>{WrongBox(2, "Oskel-A", "Oskel-C"), WrongBox(4, "Oskel-A", "Tarn-A")}));
}

TEST(AllDrivesOK, AnUnknownIdentityIsAnUnknownType) {
  DrivesDesk d;
  d.Found(1, 4, 200);
  EXPECT_TRUE(AllDrivesOK(d.desk.program(), d.desk.link()));
  EXPECT_EQ(d.boxes.shown, std::vector<ShownBox>{WrongBox(2, "unknown type", "Oskel-C")});
}

TEST(AllDrivesOK, AnExpectedModelThatNobodyKnowsIsNamedSoToo) {
  DrivesDesk d;
  d.Found(1, 255, 5);
  EXPECT_TRUE(AllDrivesOK(d.desk.program(), d.desk.link()));
  EXPECT_EQ(d.boxes.shown, std::vector<ShownBox>{WrongBox(2, "Oskel-A", "unknown type")});
}

TEST(AllDrivesOK, AMirelDrivePassesWithAnyExpectedModel) {
  for (const int identity : {49, 50, 149, 150}) {
    DrivesDesk d;
    d.Found(1, 4, identity);
    EXPECT_TRUE(AllDrivesOK(d.desk.program(), d.desk.link())) << identity;
    EXPECT_TRUE(d.boxes.shown.empty()) << identity;
  }
}

TEST(AllDrivesOK, AnExpectedMirelDoesNotExcuseAnotherDrive) {
  DrivesDesk d;
  d.Found(1, 44, 5);
  EXPECT_TRUE(AllDrivesOK(d.desk.program(), d.desk.link()));
  EXPECT_EQ(d.boxes.shown, std::vector<ShownBox>{WrongBox(2, "Oskel-A", "Mirel-p1")});
}

TEST(AllDrivesOK, EveryKnownIdentityMatchesItsModel) {
  struct Pair {
    int identity;
    int code;
  };
  constexpr std::array<Pair, 45> kPairs = {
      {{1, 6},   {2, 3},   {3, 4},   {4, 5},   {5, 1},   {6, 7},   {7, 2},   {9, 8},    {10, 19},
       {11, 48}, {12, 49}, {13, 50}, {18, 9},  {20, 36}, {21, 40}, {22, 38}, {23, 39},  {24, 42},
       {25, 43}, {26, 37}, {27, 41}, {31, 10}, {32, 11}, {34, 12}, {35, 13}, {36, 16},  {37, 18},
       {38, 17}, {39, 15}, {40, 14}, {41, 26}, {42, 28}, {43, 30}, {49, 46}, {50, 44},  {63, 20},
       {66, 22}, {68, 24}, {69, 25}, {71, 21}, {72, 23}, {73, 27}, {74, 29}, {149, 47}, {150, 45}}};
  for (const Pair& pair : kPairs) {
    DrivesDesk d;
    d.Found(1, pair.code, pair.identity);
    EXPECT_TRUE(AllDrivesOK(d.desk.program(), d.desk.link())) << pair.identity;
    EXPECT_TRUE(d.boxes.shown.empty()) << pair.identity;
  }
}

TEST(AllDrivesOK, AnOldDriveIsRefusedForAChangeOfSpeed) {
  DrivesDesk d;
  d.ChangeSpeedOn(1);
  d.Revision(1, "188");
  EXPECT_FALSE(AllDrivesOK(d.desk.program(), d.desk.link()));
  EXPECT_EQ(d.boxes.shown, std::vector<ShownBox>{FirmwareBox("Axis 2", "1.89", "1.88")});
}

TEST(AllDrivesOK, ADriveAtExactlyTheNeededRevisionIsTaken) {
  DrivesDesk d;
  d.ChangeSpeedOn(1);
  d.Revision(1, "189");
  EXPECT_TRUE(AllDrivesOK(d.desk.program(), d.desk.link()));
}

TEST(AllDrivesOK, AProgramWithoutAChangeOfSpeedRunsOnAnOldDrive) {
  DrivesDesk d;
  d.hub.drive_revisions = std::string(24, '0');
  EXPECT_TRUE(AllDrivesOK(d.desk.program(), d.desk.link()));
  EXPECT_TRUE(d.boxes.shown.empty());
}

TEST(AllDrivesOK, OtherStartStopLinesAskNothingOfTheDrive) {
  for (const SSSub sub : {StopAll, StopAxis, StartAxis}) {
    DrivesDesk d;
    d.ChangeSpeedOn(1);
    d.Line(0).SubType = sub;
    d.Revision(1, "100");
    EXPECT_TRUE(AllDrivesOK(d.desk.program(), d.desk.link())) << sub;
  }
}

TEST(AllDrivesOK, ADigitalDriveNeedsRevisionOneOnly) {
  for (const std::int16_t model : {10, 26, 36, 44}) {
    for (const char* revision : {"100", "099"}) {
      DrivesDesk d;
      d.source.program.Axis.DriveModel[1] = model;
      d.ChangeSpeedOn(1);
      d.Revision(1, revision);
      const bool ok = std::string_view(revision) == "100";
      EXPECT_EQ(AllDrivesOK(d.desk.program(), d.desk.link()), ok) << model;
      if (!ok) {
        EXPECT_EQ(d.boxes.shown, std::vector<ShownBox>{FirmwareBox("Axis 2", "1.00", "0.99")}) << model;
      }
    }
  }
}

TEST(AllDrivesOK, TheDrivesVersionReadsAsANumberAndTheAxisByItsName) {
  DrivesDesk d;
  d.ChangeSpeedOn(2, 199);
  d.source.program.Axis.AxisName[2] = "Cutter";
  d.Revision(2, "150");
  EXPECT_FALSE(AllDrivesOK(d.desk.program(), d.desk.link()));
  EXPECT_EQ(d.boxes.shown, std::vector<ShownBox>{FirmwareBox("Cutter", "1.89", "1.5")});
}

TEST(AllDrivesOK, FirmwareComesBeforeMissingDrivesAndThoseBeforeWrongOnes) {
  DrivesDesk d;
  d.ChangeSpeedOn(6);
  d.Revision(6, "100");
  d.Found(3, 2, 0);
  d.Found(1, 4, 5);
  EXPECT_FALSE(AllDrivesOK(d.desk.program(), d.desk.link()));
  EXPECT_EQ(d.boxes.shown, std::vector<ShownBox>{FirmwareBox("Axis 7", "1.89", "1")});

  d.boxes.shown.clear();
  d.Revision(6, "189");
  EXPECT_FALSE(AllDrivesOK(d.desk.program(), d.desk.link()));
  EXPECT_EQ(d.boxes.shown, std::vector<ShownBox>{MissingBox(4)});

  d.boxes.shown.clear();
  d.Found(3, 2, 7);
  EXPECT_TRUE(AllDrivesOK(d.desk.program(), d.desk.link()));
  EXPECT_EQ(d.boxes.shown, std::vector<ShownBox>{WrongBox(2, "Oskel-A", "Oskel-C")});
}

TEST(AllDrivesOK, AChangeOfSpeedOnAnAxisThatTheHubDoesNotHaveIsNotLookedAt) {
  DrivesDesk d;
  d.source.program.HubIndex = HubQuad;
  d.hub.drives = Bytes({1, 5, 4, 3, 3, 2, 2, 7});
  d.hub.drive_revisions = "189189189189";
  d.ChangeSpeedOn(6);
  EXPECT_TRUE(AllDrivesOK(d.desk.program(), d.desk.link()));
}

TEST(CSrevision, OnlyTheOlderDriveLineHasARequirement) {
  FakeDesk d;
  for (std::int16_t model = 0; model <= 50; ++model) {
    d.source.program.Axis.DriveModel[3] = model;
    const bool digital =
        (model >= 10 && model <= 18) || (model >= 20 && model <= 23) || (model >= 26 && model <= 50);
    EXPECT_EQ(CSrevision(d.source.program, 3), digital ? 1.0F : 1.89F) << model;
  }
}

}  // namespace
}  // namespace tavlo::testing
