// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/tuning.h"

#include <gtest/gtest.h>

#include <limits>

#include "forms/form_bench.h"

namespace tavlo::testing {
namespace {

struct GainNames {
  const char* check_box;
  const char* text;
  const char* slider;
  std::int32_t Instruction::*gain;
  int least;
};
constexpr GainNames kGains[] = {{"chkKP", "KP", "barKP", &Instruction::KP, 1},
                                {"chkKI", "KI", "barKI", &Instruction::KI, 0},
                                {"chkKD", "KD", "barKD", &Instruction::KD, 1},
                                {"chkKV", "KV", "barKV", &Instruction::KV, 0},
                                {"chkKVFF", "KVFF", "barKVFF", &Instruction::KVFF, 0},
                                {"chkKAFF", "KAFF", "barKAFF", &Instruction::KAFF, 1}};

/// A line in which each value is another one and all are changed.
Instruction TuningLine() {
  return {.Type = NO,
          .MotorOn = true,
          .Drive = 2,
          .KP = 100,
          .KI = 200,
          .KD = 300,
          .KAFF = 400,
          .KV = 500,
          .KVFF = 600,
          .Acont = 1.25F,
          .Apeak = 2.5F,
          .ChangesKP = true,
          .ChangesKI = true,
          .ChangesKD = true,
          .ChangesKAFF = true,
          .ChangesKV = true,
          .ChangesKVFF = true,
          .ChangesAcont = true,
          .ChangesApeak = true};
}

TEST(Tuning, IsTheDialogOfNoKindOfLine) {
  for (int type = std::numeric_limits<std::int16_t>::min(); type <= std::numeric_limits<std::int16_t>::max();
       ++type) {
    const FormRow* row = FormOf(type);
    EXPECT_TRUE(row == nullptr || row->name != TuningRow().name) << type;
  }
  EXPECT_EQ(TuningRow().name, "Tuning");
  EXPECT_EQ(TuningRow().title, "Change Control Loop Tuning");
}

TEST(Tuning, ShowsWhatTheLineHolds) {
  FormBench<Tuning> d;
  d.Line() = TuningLine();
  d.Open();
  EXPECT_EQ(d.List("Drive").index, 2);
  EXPECT_EQ(d.List("Drive").list.size(), 8U);
  EXPECT_EQ(d.List("Drive").list[2], "Axis 3");
  EXPECT_TRUE(d.Chosen("optServoOn"));
  for (const GainNames& gain : kGains) {
    EXPECT_EQ(d.Text(gain.text), std::to_string(TuningLine().*gain.gain));
    EXPECT_EQ(d.Ends(gain.slider), std::pair(0, 1000));
    EXPECT_TRUE(d.Checked(gain.check_box));
  }
  // The cube root of 31250 times 100, 200, 300.
  EXPECT_EQ(d.Position("barKP"), 146);
  EXPECT_EQ(d.Position("barKI"), 184);
  EXPECT_EQ(d.Position("barKD"), 211);
  EXPECT_EQ(d.Text("Acont"), "1.25");
  EXPECT_EQ(d.Position("SliderAcont"), 125);
  EXPECT_EQ(d.Text("Apeak"), "2.50");
  EXPECT_EQ(d.Position("SliderApeak"), 250);
  EXPECT_TRUE(d.Checked("chkCC") && d.Checked("chkPC"));
  EXPECT_EQ(
      d.Caption("lblWarning"),
      "Warning: do not enter values into this instruction without first testing them with Servo Trim to "
      "verify that the motor and load behave as intended.");
}

TEST(Tuning, AHubQuadOffersItsFourAxes) {
  FormBench<Tuning> d;
  d.program.HubIndex = HubQuad;
  d.Line() = TuningLine();
  d.Line().Drive = 6;
  d.Open();
  EXPECT_EQ(d.List("Drive").list.size(), 4U);
  EXPECT_EQ(d.List("Drive").index, 0);
}

/// The nearest whole number to a fraction, ties to even, without a rounding on the way.
std::int64_t Nearest(std::int64_t dividend, std::int64_t divisor) {
  const std::int64_t quotient = dividend / divisor;
  const std::int64_t twice = dividend % divisor * 2;
  return quotient + (twice > divisor || (twice == divisor && quotient % 2 == 1) ? 1 : 0);
}

TEST(Tuning, TheScaleOfAGainIsCubicBothWaysAtEveryPositionOfItsSlider) {
  constexpr std::int64_t kCubesOfAGain = 31250;  // 1000 cubed, divided by 32000
  for (const GainNames& row : kGains) {
    FormBench<Tuning> d;
    d.Line() = TuningLine();
    d.Open();
    for (std::int64_t position = 0; position <= 1000; ++position) {
      d.Move(row.slider, static_cast<int>(position));
      const std::int64_t gain =
          std::max<std::int64_t>(Nearest(position * position * position, kCubesOfAGain), row.least);
      ASSERT_EQ(d.Text(row.text), std::to_string(gain)) << row.text << " at " << position;
      EXPECT_EQ(d.Position(row.slider), position) << "stays where it was put";
      d.Enter(row.text, std::to_string(gain));
      const std::int64_t back = d.Position(row.slider);
      // The nearest to the cube root: half a step to either side has its cube on either side.
      const std::int64_t cube = 8 * kCubesOfAGain * gain;
      EXPECT_LE((2 * back - 1) * (2 * back - 1) * (2 * back - 1), cube);
      EXPECT_GE((2 * back + 1) * (2 * back + 1) * (2 * back + 1), cube);
      EXPECT_EQ(d.Text(row.text), std::to_string(gain));
    }
    EXPECT_EQ(d.Text(row.text), "32000") << "at the end of the slider";
  }
}

TEST(Tuning, AGainThatLiesBetweenTwoGoesToTheEvenOne) {
  FormBench<Tuning> d;
  d.Line() = TuningLine();
  d.Open();
  d.Move("barKI", 25);
  EXPECT_EQ(d.Text("KI"), "0");
  d.Move("barKI", 75);
  EXPECT_EQ(d.Text("KI"), "14");
  d.Move("barKP", 25);
  EXPECT_EQ(d.Text("KP"), "1") << "its floor";
}

TEST(Tuning, AnEntryOfAGainIsForcedIntoItsRange) {
  const struct {
    const char* typed;
    int gain;
  } rows[] = {{"0", 0},         {"-7", 0},          {"1", 1},         {"2.5", 2},
              {"3.5", 4},       {"31999.4", 31999}, {"32000", 32000}, {"32001", 32000},
              {"1E300", 32000}, {"-1E300", 0},      {"much", 0},      {"", 0},
              {" 12 A", 12},    {"1,5", 1},         {"0.5", 0},       {"99999999999", 32000}};
  for (const GainNames& gain : kGains) {
    for (const auto& row : rows) {
      FormBench<Tuning> d;
      d.Line() = TuningLine();
      d.Open();
      d.Enter(gain.text, row.typed);
      const int expected = std::max(row.gain, gain.least);
      EXPECT_EQ(d.Text(gain.text), std::to_string(expected)) << gain.text << ": " << row.typed;
      EXPECT_TRUE(d.OK());
      EXPECT_EQ(d.Line().*gain.gain, expected);
    }
  }
}

struct Most {
  int continuous;
  int peak;
};
/// Hundredths of an ampere.
Most MostOf(int model) {
  if (model >= 16 && model <= 18) return {500, 1500};
  return {model >= 12 && model <= 14 ? 900 : 450, 1350};
}

TEST(Tuning, TheCurrentsOfEachModelEndAtItsMaxima) {
  for (int model = 0; model <= 50; ++model) {
    SCOPED_TRACE(model);
    FormBench<Tuning> d;
    d.program.Axis.DriveModel[2] = static_cast<std::int16_t>(model);
    d.Line() = TuningLine();
    d.Open();
    const Most most = MostOf(model);
    const struct {
      const char* text;
      const char* slider;
      int most;
    } rows[] = {{"Acont", "SliderAcont", most.continuous}, {"Apeak", "SliderApeak", most.peak}};
    for (const auto& row : rows) {
      EXPECT_EQ(d.Ends(row.slider), std::pair(0, row.most));
      for (const int position : {0, 1, 333, row.most - 1, row.most, row.most + 1, 5000}) {
        const int held = std::min(position, row.most);
        d.Move(row.slider, position);
        EXPECT_EQ(d.Text(row.text), Format(held / 100.0, "0.00"));
        EXPECT_EQ(d.Position(row.slider), held);
        d.Enter(row.text, Format(position / 100.0, "0.00"));
        EXPECT_EQ(d.Text(row.text), Format(held / 100.0, "0.00"));
        EXPECT_EQ(d.Position(row.slider), held);
      }
    }
    EXPECT_TRUE(d.OK());
    EXPECT_EQ(d.Line().Acont, static_cast<float>(most.continuous / 100.0));
    EXPECT_EQ(d.Line().Apeak, static_cast<float>(most.peak / 100.0));
  }
}

TEST(Tuning, AnEntryOfACurrentIsForcedIntoItsRangeToTheDigitsThatAreShown) {
  const struct {
    const char* typed;
    const char* shown;
    int position;
  } rows[] = {{"-1", "0.00", 0},       {"0", "0.00", 0},    {"1.239", "1.24", 124}, {"0.125", "0.12", 12},
              {"0.375", "0.38", 38},   {"much", "0.00", 0}, {"", "0.00", 0},        {"1E300", "4.50", 450},
              {"4.5001", "4.50", 450}, {"-0", "0.00", 0},   {"4,4", "4.00", 400}};
  for (const auto& row : rows) {
    FormBench<Tuning> d;
    d.program.Axis.DriveModel[2] = 10;
    d.Line() = TuningLine();
    d.Open();
    d.Enter("Acont", row.typed);
    EXPECT_EQ(d.Text("Acont"), row.shown) << row.typed;
    EXPECT_EQ(d.Position("SliderAcont"), row.position) << row.typed;
    EXPECT_TRUE(d.OK());
    EXPECT_EQ(d.Line().Acont, static_cast<float>(row.position / 100.0));
  }
}

TEST(Tuning, OnAnAxisWithAWeakerDriveTheCurrentsArePulledBack) {
  FormBench<Tuning> d;
  d.program.Axis.DriveModel[2] = 16;
  d.program.Axis.DriveModel[3] = 14;
  d.program.Axis.DriveModel[4] = 10;
  d.Line() = TuningLine();
  d.Line().Apeak = 15;
  d.Open();
  d.Move("SliderAcont", 480);
  d.Choose("Drive", 3);
  EXPECT_EQ(d.Text("Acont"), "4.80");
  EXPECT_EQ(d.Ends("SliderAcont").second, 900);
  EXPECT_EQ(d.Text("Apeak"), "13.50");
  d.Type("Acont", "8.5");
  d.Choose("Drive", 4);
  EXPECT_EQ(d.Text("Acont"), "4.50");
  EXPECT_EQ(d.Position("SliderAcont"), 450);
  d.Choose("Drive", 2);
  EXPECT_EQ(d.Text("Acont"), "4.50") << "what was pulled back stays";
}

TEST(Tuning, EachCheckBoxDimsItsOwnNumberAndSlider) {
  const struct {
    const char* check_box;
    const char* text;
    const char* slider;
  } rows[] = {{"chkKP", "KP", "barKP"},          {"chkKI", "KI", "barKI"},
              {"chkKD", "KD", "barKD"},          {"chkKV", "KV", "barKV"},
              {"chkKVFF", "KVFF", "barKVFF"},    {"chkKAFF", "KAFF", "barKAFF"},
              {"chkCC", "Acont", "SliderAcont"}, {"chkPC", "Apeak", "SliderApeak"}};
  FormBench<Tuning> d;
  d.Line() = TuningLine();
  d.Open();
  for (const auto& dimmed : rows) {
    d.Click(dimmed.check_box);
    for (const auto& row : rows) {
      const bool enabled = row.check_box != dimmed.check_box;
      EXPECT_EQ(d.Enabled(row.text), enabled) << dimmed.check_box << ", " << row.text;
      EXPECT_EQ(d.Enabled(row.slider), enabled) << dimmed.check_box << ", " << row.slider;
      EXPECT_TRUE(d.Enabled(row.check_box));
    }
    d.Click(dimmed.check_box);
  }
  d.Line() = {};
  d.Open();
  for (const auto& row : rows) EXPECT_FALSE(d.Enabled(row.text) || d.Enabled(row.slider));
}

TEST(Tuning, OKWritesEverythingAndCancelNothing) {
  const auto change_all = [](FormBench<Tuning>& d) {
    d.Open();
    d.Choose("Drive", 5);
    d.Click("optServoOff");
    int typed = 10;
    for (const GainNames& gain : kGains) {
      d.Type(gain.text, std::to_string(typed++));
      d.Click(gain.check_box);
    }
    d.Enter("Acont", "1.5");
    d.Move("SliderApeak", 310);
    for (const char* box : {"chkCC", "chkPC"}) d.Click(box);
  };
  FormBench<Tuning> d;
  d.Line() = TuningLine();
  change_all(d);
  d.form.Cancel();
  EXPECT_EQ(d.Line(), TuningLine());
  change_all(d);
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line(), (Instruction{.Type = NO,
                                   .MotorOn = false,
                                   .Drive = 5,
                                   .KP = 10,
                                   .KI = 11,
                                   .KD = 12,
                                   .KAFF = 15,
                                   .KV = 13,
                                   .KVFF = 14,
                                   .Acont = 1.5F,
                                   .Apeak = 3.1F}));
  EXPECT_TRUE(d.boxes.shown.empty());
}

TEST(Tuning, OpeningAndConfirmingChangesNothingThatIsInRange) {
  FormBench<Tuning> d;
  d.Line() = TuningLine();
  d.Line().Acont = 1.2345F;
  d.Line().KI = 0;
  const Instruction before = d.Line();
  d.Open();
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line(), before);
}

TEST(Tuning, WhatIsOutOfRangeInTheLineIsShownAndForcedAtOK) {
  FormBench<Tuning> d;
  d.Line() = {.Type = NO,
              .Drive = -3,
              .KP = -5,
              .KI = 32001,
              .KD = std::numeric_limits<std::int32_t>::max(),
              .KAFF = std::numeric_limits<std::int32_t>::min(),
              .KV = -1,
              .Acont = std::numeric_limits<float>::infinity(),
              .Apeak = std::numeric_limits<float>::quiet_NaN()};
  d.Open();
  EXPECT_EQ(d.Text("KP"), "-5");
  EXPECT_EQ(d.Position("barKD"), 1000);
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line(), (Instruction{.Type = NO,
                                   .Drive = 0,
                                   .KP = 1,
                                   .KI = 32000,
                                   .KD = 32000,
                                   .KAFF = 1,
                                   .KV = 0,
                                   .KVFF = 0,
                                   .Acont = 4.5F,
                                   .Apeak = 0}));
}

}  // namespace
}  // namespace tavlo::testing
