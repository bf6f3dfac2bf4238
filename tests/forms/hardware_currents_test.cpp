// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <gtest/gtest.h>

#include "forms/hardware_bench.h"

namespace tavlo {
namespace {

using testing::HardwareBench;

struct WithModel : HardwareBench {
  explicit WithModel(std::int16_t code) {
    program.Axis.DriveModel[1] = code;
    Open();
  }
};

TEST(HardwareCurrents, APanelShowsTheCurrentsOfItsAxis) {
  WithModel d(12);
  EXPECT_FALSE(d.Visible("CurrentPanel"));
  d.Click("lblCurrent(1)");
  EXPECT_EQ(d.Seen({"CurrentPanel", "STMCurrentPanel"}), std::vector<std::string>{"CurrentPanel"});
  EXPECT_TRUE(d.Pressable("lblCurrent(1)").lit);
  EXPECT_EQ(d.Position("SliderAcont"), 100);
  EXPECT_EQ(d.Position("SliderApeak"), 200);
  EXPECT_EQ(d.Text("Acont"), "1.00");
  EXPECT_EQ(d.Text("Apeak"), "2.00");
  EXPECT_EQ(d.form.Caret()->name, "Acont");
}

TEST(HardwareCurrents, IntegratedDrivesHaveAPanelOfTheirOwn) {
  for (const std::int16_t code : {44, 45, 46, 47}) {
    WithModel d(code);
    EXPECT_EQ(d.Pressable("lblCurrent(1)").caption, "3.00 (5.0)");
    EXPECT_EQ(d.Pressable("lblCurrent(1)").tool_tip, "Run current (accel current), click to change");
    d.Click("lblCurrent(1)");
    EXPECT_EQ(d.Seen({"CurrentPanel", "STMCurrentPanel"}), std::vector<std::string>{"STMCurrentPanel"});
    EXPECT_EQ(d.Ends("SliderRun"), std::pair(0, 200)) << "the highest of the model";
    EXPECT_EQ(d.Text("TxtRun"), "3.00") << "as stored, with the slider at its end";
    EXPECT_EQ(d.Position("SliderIdle"), 100);
    d.Move("SliderRun", 150);
    d.Enter("TxtAccel", "1.75");
    d.Enter("TxtIdle", "9");
    EXPECT_EQ(d.Text("TxtIdle"), "2.00");
    d.Click("OKSTM");
    EXPECT_EQ(d.Pressable("lblCurrent(1)").caption, "1.50 (1.8)");
    EXPECT_FALSE(d.Visible("STMCurrentPanel"));
    ASSERT_TRUE(d.OK());
    EXPECT_EQ(d.program.Axis.RunCurrent[1], 1.5F);
    EXPECT_EQ(d.program.Axis.AccelCurrent[1], 1.75F);
    EXPECT_EQ(d.program.Axis.IdleCurrent[1], 2.0F);
  }
}

TEST(HardwareCurrents, TheLabelOfModels20To25IsFilledAtActivationAndOpensTheSamePanel) {
  for (const std::int16_t code : {20, 21, 22, 23, 24, 25}) {
    WithModel d(code);
    EXPECT_EQ(d.Pressable("lblCurrent(1)").caption, "1.00 (2.0)");
    d.Click("lblCurrent(1)");
    ASSERT_TRUE(d.Visible("CurrentPanel"));
    d.Move("SliderAcont", 250);
    d.Click("OKcrnt");
    EXPECT_EQ(d.Pressable("lblCurrent(1)").caption, "1.00 (2.0)") << "it keeps the text that it had";
    ASSERT_TRUE(d.OK());
    EXPECT_EQ(d.program.Axis.ContCurrent[1], 2.5F);
    d.Open();
    EXPECT_EQ(d.Pressable("lblCurrent(1)").caption, "2.50 (2.0)");
  }
}

struct Limit {
  std::vector<std::int16_t> models;
  double continuous;
  double peak;
};

TEST(HardwareCurrents, CurrentsEndAtTheLimitsOfTheModelThatIsChosen) {
  const std::array kLimits = {
      Limit{{10, 11, 15}, 4.5, 13.5}, Limit{{20, 21}, 4.5, 18},   Limit{{16, 17, 18}, 5, 15},
      Limit{{24, 25}, 5, 18},         Limit{{48, 49, 50}, 7, 14}, Limit{{12, 13, 14, 22, 23}, 9, 18},
  };
  for (const Limit& limit : kLimits) {
    for (const std::int16_t code : limit.models) {
      WithModel d(1);
      d.ChooseModel(1, code);
      d.Click("lblCurrent(1)");
      d.Move("SliderAcont", 100000);
      d.Move("SliderApeak", 100000);
      EXPECT_EQ(d.Position("SliderAcont"), limit.continuous * 100) << code;
      EXPECT_EQ(d.Position("SliderApeak"), limit.peak * 100) << code;
      d.Enter("Acont", "1");
      EXPECT_EQ(d.Position("SliderAcont"), 100);
      d.Enter("Acont", "99");
      EXPECT_EQ(d.Position("SliderAcont"), limit.continuous * 100) << code;
      EXPECT_EQ(Val(d.Text("Acont")), limit.continuous) << code;
    }
  }
}

TEST(HardwareCurrents, OKcrntTakesThemAndCancelCrntDoesNot) {
  WithModel d(12);
  d.Click("lblCurrent(1)");
  d.Move("SliderAcont", 456);
  d.Click("CancelCrnt");
  EXPECT_FALSE(d.Visible("CurrentPanel"));
  EXPECT_FALSE(d.Pressable("lblCurrent(1)").lit);
  EXPECT_EQ(d.Pressable("lblCurrent(1)").caption, "1.00 (2.0)");
  EXPECT_EQ(d.form.Caret()->name, "lblCurrent(1)");
  d.Click("lblCurrent(1)");
  d.Move("SliderAcont", 456);
  d.Type("Apeak", "10.25");
  d.Click("OKcrnt");
  EXPECT_EQ(d.Pressable("lblCurrent(1)").caption, "4.56 (10.3)");
  ASSERT_TRUE(d.OK());
  EXPECT_EQ(d.program.Axis.ContCurrent[1], 4.56F);
  EXPECT_EQ(d.program.Axis.PeakCurrent[1], 10.25F);
}

TEST(HardwareCurrents, AClickWithAPanelOpenDoesNothing) {
  WithModel d(12);
  d.ChooseModel(2, 44);
  d.Click("lblCurrent(1)");
  d.Move("SliderAcont", 456);
  d.Click("lblCurrent(2)");
  d.Click("lblCurrent(1)");
  EXPECT_EQ(d.Seen({"CurrentPanel", "STMCurrentPanel"}), std::vector<std::string>{"CurrentPanel"});
  EXPECT_FALSE(d.Pressable("lblCurrent(2)").lit);
  EXPECT_EQ(d.Position("SliderAcont"), 456);
}

TEST(HardwareCurrents, AnotherModelClosesThePanelOfItsAxis) {
  WithModel d(12);
  d.Click("lblCurrent(1)");
  d.Move("SliderAcont", 900);
  d.ChooseModel(2, 10);
  EXPECT_TRUE(d.Visible("CurrentPanel")) << "that was another axis";
  d.ChooseModel(1, 10);
  EXPECT_FALSE(d.Visible("CurrentPanel"));
  EXPECT_EQ(d.Pressable("lblCurrent(1)").caption, "1.00 (2.0)");
}

TEST(HardwareCurrents, APanelThatWasLeftOpenIsClosedAtTheNextActivation) {
  WithModel d(12);
  d.Click("lblCurrent(1)");
  d.form.Cancel();
  d.Open();
  EXPECT_FALSE(d.Visible("CurrentPanel"));
  EXPECT_FALSE(d.Pressable("lblCurrent(1)").lit);
}

}  // namespace
}  // namespace tavlo
