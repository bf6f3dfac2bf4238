// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "model/axis_config.h"

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <limits>
#include <map>
#include <set>
#include <string_view>

#include "model/program.h"

namespace tavlo {
namespace {

constexpr int kNoId = -1;

struct ModelRow {
  int code;
  std::string_view name;
  int id;
  float max_current;
};
constexpr ModelRow kModels[] = {{0, "none", 0, 2.0F},
                                {1, "Oskel-A", 5, 5.5F},
                                {2, "Tarn-A", 7, 7.0F},
                                {3, "Oskel-B", 2, 5.5F},
                                {4, "Oskel-C", 3, 3.5F},
                                {5, "Tarn-B", 4, 3.5F},
                                {6, "Oskel-D", 1, 4.5F},
                                {7, "Tarn-C", 6, 1.2F},
                                {8, "Zenu-D", 9, 7.0F},
                                {9, "Zenu-E", 18, 7.0F},
                                {10, "Zenu-A-a", 31, 4.5F},
                                {11, "Zenu-A-x", 32, 4.5F},
                                {12, "Zenu-B-a", 34, 9.0F},
                                {13, "Zenu-B-x", 35, 9.0F},
                                {14, "Zenu-B-p", 40, 9.0F},
                                {15, "Zenu-A-p", 39, 4.5F},
                                {16, "Zenu-C-a", 36, 5.0F},
                                {17, "Zenu-C-x", 38, 5.0F},
                                {18, "Zenu-C-p", 37, 5.0F},
                                {19, "Oskel-E", 10, 5.5F},
                                {20, "Zenu-A-ae", 63, 4.5F},
                                {21, "Zenu-A-pe", 71, 4.5F},
                                {22, "Zenu-B-ae", 66, 9.0F},
                                {23, "Zenu-B-pe", 72, 9.0F},
                                {24, "Zenu-C-ae", 68, 5.0F},
                                {25, "Zenu-C-pe", 69, 5.0F},
                                {26, "Pelmar-L-a", 41, 6.0F},
                                {27, "Pelmar-L-ae", 73, 6.0F},
                                {28, "Pelmar-L-p", 42, 6.0F},
                                {29, "Pelmar-L-pe", 74, 6.0F},
                                {30, "Pelmar-L-x", 43, 6.0F},
                                {31, "Pelmar-H-a", kNoId, 3.2F},
                                {32, "Pelmar-H-ae", kNoId, 3.2F},
                                {33, "Pelmar-H-p", kNoId, 3.2F},
                                {34, "Pelmar-H-pe", kNoId, 3.2F},
                                {35, "Pelmar-H-x", kNoId, 3.2F},
                                {36, "Dresk-L-a", 20, 5.0F},
                                {37, "Dresk-L-m", 26, 5.0F},
                                {38, "Dresk-L-p", 22, 5.0F},
                                {39, "Dresk-L-x", 23, 5.0F},
                                {40, "Dresk-H-a", 21, 10.0F},
                                {41, "Dresk-H-m", 27, 10.0F},
                                {42, "Dresk-H-p", 24, 10.0F},
                                {43, "Dresk-H-x", 25, 10.0F},
                                {44, "Mirel-p1", 50, 2.0F},
                                {45, "Mirel-p2", 150, 2.0F},
                                {46, "Mirel-a1", 49, 2.0F},
                                {47, "Mirel-a2", 149, 2.0F},
                                {48, "Vorn-a", 11, 7.0F},
                                {49, "Vorn-p", 12, 7.0F},
                                {50, "Vorn-x", 13, 7.0F}};

TEST(DriveModel, EveryCodeHasItsNameAndCurrent) {
  int code = 0;
  for (const ModelRow& row : kModels) {
    EXPECT_EQ(row.code, code++);
    EXPECT_EQ(ModelName(row.code), row.name);
    EXPECT_EQ(MaxCurrent(row.code), row.max_current) << row.name;
  }
  EXPECT_EQ(code, 51);
}

TEST(DriveModel, AnyOtherCodeIsAnUnknownTypeOfTwoAmperes) {
  for (const int code : {-1, 51, 100, 32767, -32768}) {
    EXPECT_EQ(ModelName(code), "unknown type");
    EXPECT_EQ(MaxCurrent(code), 2.0F);
  }
}

TEST(DriveModel, AReportedIdentityLeadsToItsCodeAndAnyOtherTo100) {
  std::map<int, int> codes;
  for (const ModelRow& row : kModels) {
    if (row.id != kNoId) codes[row.id] = row.code;
  }
  for (int id = -3; id <= 300; ++id) {
    EXPECT_EQ(DriveIdToModel(id), codes.count(id) ? codes[id] : 100) << id;
  }
}

TEST(DriveModel, IdentitiesWithoutAModel) {
  std::set<int> holes = {8, 14, 15, 16, 17, 19, 28, 29, 30, 33, 64, 65, 67, 70};
  for (int id = 44; id <= 48; ++id) holes.insert(id);
  for (int id = 51; id <= 62; ++id) holes.insert(id);
  for (int id = 75; id <= 148; ++id) holes.insert(id);
  for (const int id : holes) EXPECT_EQ(DriveIdToModel(id), 100) << id;
  EXPECT_EQ(DriveIdToModel(0), 0);
  EXPECT_EQ(DriveIdToModel(149), 47);
  EXPECT_EQ(DriveIdToModel(150), 45);
}

struct FamilyRow {
  std::string_view name;
  bool (*test)(int);
  std::set<int> codes;
};

std::set<int> Range(int first, int last) {
  std::set<int> codes;
  for (int code = first; code <= last; ++code) codes.insert(code);
  return codes;
}
std::set<int> Join(std::initializer_list<std::set<int>> sets) {
  std::set<int> all;
  for (const auto& set : sets) all.insert(set.begin(), set.end());
  return all;
}

TEST(DriveFamily, EachTestHoldsForItsCodesAlone) {
  const FamilyRow rows[] = {
      {"ServoModel", ServoModel, Join({Range(8, 18), Range(48, 50)})},
      {"ZenuRmsModel", ZenuRmsModel, Join({Range(10, 18), Range(20, 23), Range(48, 50)})},
      {"ZenuModel", ZenuModel, Join({Range(10, 18), Range(20, 23)})},
      {"ZenuACModel", ZenuACModel, {16, 17, 18, 24, 25}},
      {"ZenuDCOxModel", ZenuDCOxModel, {11, 13}},
      {"PelmarModel", PelmarModel, Range(26, 35)},
      {"DreskModel", DreskModel, Range(36, 43)},
      {"MirelModel", MirelModel, Range(44, 47)},
      {"VornModel", VornModel, {48, 49, 50}},
      {"OxModel", OxModel, {11, 13, 17, 30}},
      {"PlainModel", PlainModel, {10, 12, 16, 26}},
      {"ProgModel", ProgModel, {14, 15, 18, 28}},
      {"ProgNetModel", ProgNetModel, {21, 23, 25, 29}},
      {"PlainNetModel", PlainNetModel, {20, 22, 24, 27}},
      {"FourInputModel", FourInputModel, {36, 37, 40, 41, 44, 45, 46, 47}},
      {"ShowsTxtCurrent", ShowsTxtCurrent, Join({Range(1, 9), {19}, Range(26, 43)})},
      {"ZenuServo", ZenuServo, {8, 9}},
      {"ZENU_a", ZENU_a, {10, 12, 14, 15, 16, 18, 26, 28}},
      {"ZENU_Ox of the editors", ZENU_Ox, {11, 13, 17, 30}},
      {"ZENU_Ox of the main window", MainZENU_Ox, {11, 13, 17}},
      {"ZENUC_Ox", ZENUC_Ox, {17, 30}},
      {"ZENU_pe", ZENU_pe, {21, 23, 25, 29}},
      {"ZENU_ae", ZENU_ae, {20, 22, 24, 27}},
      {"ExtIO", ExtIO, {21, 23, 25, 29, 20, 22, 24, 27, 11, 13, 17, 30}},
  };
  for (const FamilyRow& row : rows) {
    for (int code = -3; code <= 110; ++code) {
      EXPECT_EQ(row.test(code), row.codes.count(code) == 1) << row.name << " of " << code;
    }
  }
}

TEST(DriveFamily, ZENU_OxOfTheMainWindowIsFalseForModel30AndTrueInEveryEditor) {
  EXPECT_FALSE(MainZENU_Ox(30));
  EXPECT_TRUE(ZENU_Ox(30));
}

TEST(ServoCurrent, TheTwoLimitsHaveTheirOwnListsOfCodes) {
  for (int code = 0; code <= 60; ++code) {
    double continuous = 9.0;
    double peak = 18.0;
    if (code == 10 || code == 11 || code == 15) {
      continuous = 4.5;
      peak = 13.5;
    } else if (code == 20 || code == 21) {
      continuous = 4.5;
    } else if (code >= 16 && code <= 18) {
      continuous = 5.0;
      peak = 15.0;
    } else if (code == 24 || code == 25) {
      continuous = 5.0;
    } else if (code >= 48 && code <= 50) {
      continuous = 7.0;
      peak = 14.0;
    }
    EXPECT_EQ(MaxServoCurrent(code).continuous, continuous) << code;
    EXPECT_EQ(MaxServoCurrent(code).peak, peak) << code;
  }
}

TEST(HubModelTable, TwoModels) {
  EXPECT_EQ(kHubModels[0].name, "Tavlo Hub-Octo");
  EXPECT_EQ(kHubModels[0].code, 8);
  EXPECT_EQ(kHubModels[0].axes, 8);
  EXPECT_EQ(kHubModels[1].name, "Hub Quad");
  EXPECT_EQ(kHubModels[1].code, 24);
  EXPECT_EQ(kHubModels[1].axes, 4);
}

TEST(InitHardware, GivesEveryAxisItsDefaults) {
  AxisConfig axes;
  InitHardware(axes);
  constexpr std::array<int, 8> kDefaultModels = {1, 4, 3, 2, 5, 7, 8, 0};
  for (int i = 0; i < 8; ++i) {
    SCOPED_TRACE(i);
    EXPECT_EQ(axes.DriveModel[i], kDefaultModels[i]);
    EXPECT_EQ(axes.DriveCurrent[i], 1.0F);
    EXPECT_EQ(axes.IdleCode[i], 2);
    EXPECT_EQ(axes.StepResCode[i], 8);
    EXPECT_EQ(axes.StepsPerRev[i], 8000);
    EXPECT_EQ(axes.StepsPerUnit[i], i == 6 ? 8000 : 20000);
    EXPECT_EQ(axes.UnitName[i], "rev");
    EXPECT_TRUE(axes.UseUnits[i]);
    EXPECT_EQ(axes.LimitKind[i], 0);
    EXPECT_EQ(axes.AxisName[i], "Axis " + std::to_string(i + 1));
    EXPECT_EQ(axes.ContCurrent[i], 1.0F);
    EXPECT_EQ(axes.PeakCurrent[i], 2.0F);
    EXPECT_EQ(axes.RunCurrent[i], 3.0F);
    EXPECT_EQ(axes.AccelCurrent[i], 5.0F);
    EXPECT_EQ(axes.IdleCurrent[i], 1.0F);
  }
  EXPECT_FALSE(axes.SameUnits);
  EXPECT_TRUE(axes.SameLimits);
  EXPECT_FALSE(axes.SameSpare);
}

TEST(InitHardware, ReplacesWhatStoodThere) {
  AxisConfig axes;
  InitHardware(axes);
  const AxisConfig fresh = axes;
  for (int i = 0; i < 8; ++i) {
    axes.DriveModel[i] = 40;
    axes.DriveCurrent[i] = 9;
    axes.UnitName[i] = "mm";
    axes.AxisName[i] = "X";
    axes.UseUnits[i] = false;
    axes.AccelCurrent[i] = 0;
  }
  axes.SameUnits = true;
  axes.SameLimits = false;
  InitHardware(axes);
  EXPECT_EQ(axes, fresh);
}

TEST(DriveFamily, FourOutputAxisOnTheOctoGoesByTheModel) {
  const std::set<int> codes = {11, 13, 17, 19, 20, 21, 22, 23, 24, 25,
                               27, 29, 30, 38, 39, 42, 43, 48, 49, 50};
  Program program;
  for (int code = 0; code <= 51; ++code) {
    for (int axis = 0; axis < 8; ++axis) {
      program.Axis.DriveModel[axis] = static_cast<std::int16_t>(code);
      EXPECT_EQ(FourOutputAxis(program, axis), codes.count(code) == 1) << code;
    }
  }
}

TEST(DriveFamily, FourOutputAxisOnTheQuadIsTrueForAxis4AndFalseAbove) {
  Program program;
  program.HubIndex = HubQuad;
  program.Axis.DriveModel.fill(19);
  EXPECT_TRUE(FourOutputAxis(program, 0));
  EXPECT_TRUE(FourOutputAxis(program, 4));
  EXPECT_FALSE(FourOutputAxis(program, 5));
  EXPECT_FALSE(FourOutputAxis(program, 7));
  program.Axis.DriveModel.fill(0);
  EXPECT_FALSE(FourOutputAxis(program, 0));
  EXPECT_TRUE(FourOutputAxis(program, 4));
}

TEST(DriveFamily, FourOutputsOfTheOutputEditors) {
  Program program;
  const std::set<int> codes = Join({Range(36, 43), Range(48, 50), {19}});
  for (int code = 0; code <= 51; ++code) {
    program.Axis.DriveModel[4] = static_cast<std::int16_t>(code);
    program.HubIndex = HubOcto;
    EXPECT_EQ(FourOutputs(program, 4), codes.count(code) == 1) << code;
    program.HubIndex = HubQuad;
    EXPECT_TRUE(FourOutputs(program, 4));
  }
}

TEST(DriveFamily, AnyDspAxisLooksAtTheAxesOfTheHubOnly) {
  Program program;
  InitHardware(program.Axis);
  EXPECT_FALSE(AnyDspAxis(program));
  for (const int code : {10, 18, 20, 23, 26, 35}) {
    program.Axis.DriveModel[7] = static_cast<std::int16_t>(code);
    program.HubIndex = HubOcto;
    EXPECT_TRUE(AnyDspAxis(program)) << code;
    program.HubIndex = HubQuad;
    EXPECT_FALSE(AnyDspAxis(program)) << code;
  }
  program.HubIndex = HubOcto;
  for (const int code : {8, 9, 19, 24, 25, 36, 44, 48}) {
    program.Axis.DriveModel[7] = static_cast<std::int16_t>(code);
    EXPECT_FALSE(AnyDspAxis(program)) << code;
  }
}

TEST(HubModelTable, AHubQuadWithAxis4SetToNoneKeepsItsOwnInputsAndOutputs) {
  Program program;
  program.HubIndex = HubQuad;
  program.Axis.DriveModel[4] = 0;
  EXPECT_EQ(HubAxes(program), 4);
  EXPECT_TRUE(IsHubIO(program, 4));
  EXPECT_FALSE(IsHubIO(program, 3));
  EXPECT_FALSE(IsHubIO(program, 5));
  program.HubIndex = HubOcto;
  EXPECT_EQ(HubAxes(program), 8);
  EXPECT_FALSE(IsHubIO(program, 4));
}

TEST(AxisIndex, AnyAxisNumberIsReadSafely) {
  Program program;
  InitHardware(program.Axis);
  for (const int axis : {-1, -32768, 9, 255, 32767, std::numeric_limits<int>::max()}) {
    EXPECT_EQ(DriveModelOf(program, axis), 0) << axis;
    EXPECT_EQ(AxisNameOf(program, axis), "") << axis;
    (void)FourOutputAxis(program, axis);
    (void)FourOutputs(program, axis);
    EXPECT_FALSE(IsHubIO(program, axis));
  }
  EXPECT_EQ(DriveModelOf(program, 0), 1);
  EXPECT_EQ(AxisNameOf(program, 7), "Axis 8");
}

}  // namespace
}  // namespace tavlo
