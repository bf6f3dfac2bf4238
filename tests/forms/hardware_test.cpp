// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <gtest/gtest.h>

#include <array>
#include <set>

#include "forms/hardware_bench.h"

namespace tavlo {
namespace {

using testing::HardwareBench;

constexpr int kModels = 51;

std::string At(std::string_view name, int axis) {
  return HardwareBench::At(name, axis);
}

TEST(Hardware, OpensWithTheSettingsOfTheProgram) {
  HardwareBench d;
  d.program.Axis.DriveModel[2] = 12;
  d.program.Axis.AxisName[2] = "Saw";
  d.program.Axis.StepsPerRev[2] = 4000;
  d.program.Axis.UnitName[2] = "inch";
  d.program.Axis.StepsPerUnit[2] = 2540;
  d.program.Axis.LimitKind[2] = 2;
  d.program.Axis.ContCurrent[2] = 3.25F;
  d.program.Axis.PeakCurrent[2] = 7.5F;
  d.program.Axis.SameLimits = false;
  d.Open();
  EXPECT_EQ(d.Caption("LblAxis(2)"), "Axis 3");
  EXPECT_EQ(d.Model(2), 12);
  EXPECT_EQ(d.Text("TxtAxisName(2)"), "Saw");
  EXPECT_EQ(d.Text("SPRtext(2)"), "4000");
  EXPECT_EQ(d.Text("TxtUUname(2)"), "inch");
  EXPECT_EQ(d.Text("TxtUUpitch(2)"), "2540");
  EXPECT_EQ(d.List("Limits(2)").index, 2);
  EXPECT_EQ(d.Pressable("lblCurrent(2)").caption, "3.25 (7.5)");
  EXPECT_EQ(d.Pressable("lblCurrent(2)").tool_tip, "Cont current (peak current), click to change");
  EXPECT_TRUE(d.Chosen("DiffLimits"));
  EXPECT_TRUE(d.Chosen("DiffUnits"));
  EXPECT_EQ(d.Text("TxtCurrent(0)"), "1.00");
  EXPECT_EQ(d.List("SPR(0)").list[d.List("SPR(0)").index], "20000");
}

TEST(Hardware, FillsItsListsAsTold) {
  HardwareBench d;
  d.Open();
  for (int axis = 0; axis < kAxes; ++axis) {
    EXPECT_EQ(d.List(At("Limits", axis)).list, (std::vector<std::string>{"Closed", "Open", "Not Used"}));
    EXPECT_EQ(d.List(At("SPR", axis)).list,
              (std::vector<std::string>{"2000", "5000", "10000", "12800", "18000", "20000", "21600", "25000",
                                        "25400", "25600", "36000", "50000", "50800"}));
    EXPECT_EQ(
        d.List(At("SPR100", axis)).list,
        (std::vector<std::string>{"200", "400", "1000", "2000", "5000", "10000", "12800", "18000", "20000",
                                  "21600", "25000", "25400", "25600", "36000", "50000", "50800"}));
    ASSERT_EQ(d.List(At("ModelList", axis)).list.size(), kModels);
    for (int code = 0; code < kModels; ++code) {
      EXPECT_EQ(d.List(At("ModelList", axis)).list[code], ModelName(code));
    }
  }
}

/// The family of a model: what its row shows, and the code of its steps per revolution.
struct Family {
  const char* name;
  std::set<int> models;
  std::vector<std::string> shown;
  /// At OK, for entry 1 of the list of steps that it shows; 16 with a box.
  int code_of_entry_1;
};
const std::array kFamilies = {
    Family{"the stepper with a list of its own", {3}, {"SPR100", "TxtCurrent"}, 1},
    Family{"older servos", {8, 9}, {"SPRtext", "TxtCurrent"}, 16},
    Family{"digital servos",
           {10, 11, 12, 13, 14, 15, 16, 17, 18, 20, 21, 22, 23, 24, 25, 48, 49, 50},
           {"SPRtext", "lblCurrent"},
           16},
    Family{"integrated drives", {44, 45, 46, 47}, {"SPR", "lblCurrent"}, 4},
    Family{"all others",
           {1, 2, 4, 5, 6, 7, 19, 26, 27, 28, 29, 30, 31, 32, 33, 34, 35, 36, 37, 38, 39, 40, 41, 42, 43},
           {"SPR", "TxtCurrent"},
           4},
};

TEST(Hardware, ModelsOfAFamilyShowTheSameControlsAndStoreTheStepsPerRevAsTold) {
  std::size_t models = 1;
  for (const Family& family : kFamilies) {
    models += family.models.size();
    for (const int code : family.models) {
      HardwareBench d;
      d.Open();
      d.ChooseModel(1, code);
      EXPECT_EQ(d.Seen({"SPR(1)", "SPR100(1)", "SPRtext(1)", "lblCurrent(1)", "TxtCurrent(1)"}),
                (std::vector<std::string>{family.shown[0] + "(1)", family.shown[1] + "(1)"}))
          << family.name << ", " << code;
      EXPECT_TRUE(d.Visible("TxtAxisName(1)"));
      if (d.Visible("SPR(1)")) d.Choose("SPR(1)", 1);
      if (d.Visible("SPR100(1)")) d.Choose("SPR100(1)", 1);
      if (d.Visible("SPRtext(1)")) d.Enter("SPRtext(1)", "4321");
      ASSERT_TRUE(d.OK());
      EXPECT_EQ(d.program.Axis.DriveModel[1], code);
      EXPECT_EQ(d.program.Axis.StepResCode[1], family.code_of_entry_1) << family.name << ", " << code;
      EXPECT_EQ(d.program.Axis.StepsPerRev[1], d.Visible("SPRtext(1)") ? 4321 : 8000);
    }
  }
  EXPECT_EQ(models, kModels);
}

TEST(Hardware, AnAxisWithoutADriveHidesItsSettings) {
  HardwareBench d;
  d.program.Axis.SameLimits = false;
  d.Open();
  const std::vector<std::string> settings = {"SPR(1)",        "SPR100(1)",     "SPRtext(1)",
                                             "TxtCurrent(1)", "lblCurrent(1)", "Limits(1)",
                                             "TxtUUname(1)",  "TxtUUpitch(1)", "TxtAxisName(1)"};
  EXPECT_EQ(d.Seen(settings).size(), 6U);
  d.ChooseModel(1, 0);
  EXPECT_EQ(d.Seen(settings), std::vector<std::string>{});
  EXPECT_TRUE(d.Visible("ModelList(1)"));
  d.ChooseModel(1, 4);
  EXPECT_EQ(d.Seen(settings).size(), 6U);
}

TEST(Hardware, Axis0CannotBeSetToNone) {
  HardwareBench d;
  d.program.Axis.DriveModel[0] = 12;
  d.Open();
  d.ChooseModel(0, 0);
  ASSERT_EQ(d.boxes.shown.size(), 1U);
  EXPECT_EQ(d.boxes.shown[0].text,
            "You can't set Axis 1 for \"none\" because the Axis 1 drive supplies power to the hub.");
  EXPECT_EQ(d.boxes.shown[0].title, "Drive Model");
  EXPECT_EQ(d.Model(0), 12) << "the model chosen before";
  d.ChooseModel(0, 7);
  d.ChooseModel(0, 0);
  EXPECT_EQ(d.Model(0), 7);
}

TEST(Hardware, AFileWithNoDriveOnAxis0IsRefusedAtOK) {
  HardwareBench d;
  d.program.Axis.DriveModel[0] = 0;
  d.Open();
  EXPECT_FALSE(d.OK());
  EXPECT_EQ(d.boxes.shown.size(), 1U);
  EXPECT_EQ(d.program.Axis.DriveModel[0], 0);
  EXPECT_TRUE(d.OK()) << "with the model that the list went to";
  EXPECT_EQ(d.program.Axis.DriveModel[0], 1);
}

TEST(Hardware, TxtCurrentOf9OnADriveOfCode7Becomes120AtOnce) {
  HardwareBench d;
  d.Open();
  d.ChooseModel(1, 7);
  d.Enter("TxtCurrent(1)", "9");
  EXPECT_EQ(d.Text("TxtCurrent(1)"), "1.20");
  d.Enter("TxtCurrent(1)", "-3");
  EXPECT_EQ(d.Text("TxtCurrent(1)"), "0.00");
}

TEST(Hardware, AModelLowersTheCurrentsToItsLimits) {
  for (int code = 1; code < kModels; ++code) {
    HardwareBench d;
    d.program.Axis.DriveModel[1] = 40;
    d.program.Axis.DriveCurrent[1] = 10;
    d.program.Axis.ContCurrent[1] = d.program.Axis.PeakCurrent[1] = 20;
    d.Open();
    d.ChooseModel(1, code);
    EXPECT_EQ(Val(d.Text("TxtCurrent(1)")), Val(Format(MaxCurrent(code), "0.00"))) << code;
    ASSERT_TRUE(d.OK());
    EXPECT_EQ(d.program.Axis.DriveCurrent[1], MaxCurrent(code)) << code;
    EXPECT_EQ(d.program.Axis.ContCurrent[1], static_cast<float>(MaxServoCurrent(code).continuous)) << code;
    EXPECT_EQ(d.program.Axis.PeakCurrent[1], static_cast<float>(MaxServoCurrent(code).peak)) << code;
  }
}

TEST(Hardware, WithSameUnitsAxis5TakesTheUnitOfAxis0OnOK) {
  HardwareBench d;
  d.Open();
  d.Click("SameUnits");
  EXPECT_TRUE(d.Visible("TxtUUname(0)"));
  for (int axis = 1; axis < kAxes; ++axis) {
    EXPECT_FALSE(d.Visible(At("TxtUUname", axis)));
    EXPECT_FALSE(d.Visible(At("TxtUUpitch", axis)));
  }
  d.Enter("TxtUUname(0)", "mm");
  d.Enter("TxtUUpitch(0)", "400");
  ASSERT_TRUE(d.OK());
  EXPECT_TRUE(d.program.Axis.SameUnits);
  for (int axis = 0; axis < kAxes; ++axis) {
    EXPECT_EQ(d.program.Axis.UnitName[axis], "mm");
    EXPECT_EQ(d.program.Axis.StepsPerUnit[axis], 400);
  }
}

TEST(Hardware, LimitsOfTheAxesAreSharedOrNot) {
  HardwareBench d;
  d.Open();
  EXPECT_EQ(d.Seen({"Limits(0)", "Limits(1)"}), std::vector<std::string>{"Limits(0)"});
  d.Choose("Limits(0)", 1);
  d.Choose("Limits(3)", 2);
  ASSERT_TRUE(d.OK());
  EXPECT_EQ(d.program.Axis.LimitKind[3], 1);
  d.Open();
  d.Click("DiffLimits");
  d.Choose("Limits(3)", 2);
  ASSERT_TRUE(d.OK());
  EXPECT_FALSE(d.program.Axis.SameLimits);
  EXPECT_EQ(d.program.Axis.LimitKind[0], 1);
  EXPECT_EQ(d.program.Axis.LimitKind[3], 2);
}

TEST(Hardware, OnHubQuadAxes4To7AreNotTouchedByOK) {
  HardwareBench d;
  d.program.HubIndex = HubQuad;
  d.program.Axis.DriveCurrent[5] = 9;
  d.program.Axis.SameUnits = true;
  const AxisConfig before = d.program.Axis;
  d.Open();
  EXPECT_EQ(d.Seen({"ModelList(3)", "ModelList(4)", "LblAxis(4)", "TxtAxisName(7)"}),
            std::vector<std::string>{"ModelList(3)"});
  d.Enter("TxtUUname(0)", "cm");
  ASSERT_TRUE(d.OK());
  for (int axis = 0; axis < kAxes; ++axis) {
    EXPECT_EQ(d.program.Axis.UnitName[axis], axis < 4 ? "cm" : "rev");
    EXPECT_EQ(d.program.Axis.DriveCurrent[axis], before.DriveCurrent[axis]);
  }
}

TEST(Hardware, AnotherHubSwitchedOnMeanwhileChangesNoAxisThatWasNotShown) {
  HardwareBench d;
  d.program.HubIndex = HubQuad;
  d.Open();
  d.program.HubIndex = HubOcto;
  d.program.Axis.AxisName[6] = "Feeder";
  ASSERT_TRUE(d.OK());
  EXPECT_EQ(d.program.Axis.AxisName[6], "Feeder");
}

TEST(Hardware, SameSpareIsCleared) {
  HardwareBench d;
  d.program.Axis.SameSpare = true;
  d.Open();
  ASSERT_TRUE(d.OK());
  EXPECT_FALSE(d.program.Axis.SameSpare);
}

TEST(Hardware, CancelKeepsNothing) {
  HardwareBench d;
  d.program.Axis.DriveModel[0] = 12;
  const Program before = d.program;
  d.Open();
  d.ChooseModel(1, 7);
  d.Enter("TxtUUpitch(0)", "3");
  d.Click("lblCurrent(0)");
  d.Move("SliderAcont", 300);
  d.Click("OKcrnt");
  d.Click("SameUnits");
  d.form.Cancel();
  EXPECT_EQ(d.program.Axis, before.Axis);
  EXPECT_EQ(d.program.Prog, before.Prog);
  d.Open();
  EXPECT_EQ(d.Model(1), 4);
  EXPECT_EQ(d.Pressable("lblCurrent(0)").caption, "1.00 (2.0)");
  EXPECT_TRUE(d.Chosen("DiffUnits"));
}

struct Typed {
  const char* box;
  const char* typed;
  const char* shown;
};

TEST(Hardware, EntriesAreForcedIntoRange) {
  constexpr std::array kTyped = {
      Typed{"SPRtext(1)", "0", "1"},
      Typed{"SPRtext(1)", "nothing", "1"},
      Typed{"SPRtext(1)", "65536", "65535"},
      Typed{"SPRtext(1)", "1000.5", "1000"},
      Typed{"SPRtext(1)", "1001.5", "1002"},
      Typed{"TxtUUpitch(1)", "0", "1"},
      Typed{"TxtUUpitch(1)", "-4", "1"},
      Typed{"TxtUUpitch(1)", "16000001", "16000000"},
      Typed{"TxtUUpitch(1)", "1e30", "16000000"},
      Typed{"TxtAxisName(1)", "123456789", "12345678"},
      Typed{"TxtAxisName(1)", "\"Saw\"", "'Saw'"},
      Typed{"TxtAxisName(1)", "in\r\nout", "in out"},
      Typed{"TxtUUname(1)", "inches", "inch"},
      Typed{"TxtUUname(1)", "5\"", "5'"},
      Typed{"TxtCurrent(1)", "1.005", "1.00"},
      Typed{"TxtCurrent(1)", "100", "3.50"},
  };
  for (const Typed& row : kTyped) {
    HardwareBench d;
    d.Open();
    d.Enter(row.box, row.typed);
    EXPECT_EQ(d.Text(row.box), row.shown) << row.typed;
  }
}

TEST(Hardware, LongerNamesOfAFileStayUntilTheyAreEdited) {
  HardwareBench d;
  d.program.Axis.AxisName[1] = "A longer name";
  d.program.Axis.UnitName[1] = "degrees";
  d.Open();
  ASSERT_TRUE(d.OK());
  EXPECT_EQ(d.program.Axis.AxisName[1], "A longer name");
  EXPECT_EQ(d.program.Axis.UnitName[1], "degrees");
}

TEST(Hardware, ACurrentThatNobodyTouchedIsNotRounded) {
  HardwareBench d;
  d.program.Axis.DriveCurrent[0] = 1.237F;
  d.Open();
  ASSERT_TRUE(d.OK());
  EXPECT_EQ(d.program.Axis.DriveCurrent[0], 1.237F);
}

TEST(Hardware, ACodeOfADamagedFileStaysUntilAModelIsChosen) {
  HardwareBench d;
  d.program.Axis.DriveModel[2] = 77;
  d.program.Axis.StepResCode[2] = -9;
  d.program.Axis.LimitKind[2] = 30000;
  d.program.Axis.SameLimits = false;
  d.Open();
  EXPECT_EQ(d.Model(2), -1);
  EXPECT_EQ(d.List("SPR(2)").index, 5);
  ASSERT_TRUE(d.OK());
  EXPECT_EQ(d.program.Axis.DriveModel[2], 77);
  EXPECT_EQ(d.program.Axis.StepResCode[2], -9);
  EXPECT_EQ(d.program.Axis.LimitKind[2], 2);
}

}  // namespace
}  // namespace tavlo
