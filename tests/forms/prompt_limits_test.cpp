// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/form_bench.h"
#include "forms/mmi_prompt.h"

namespace tavlo::testing {
namespace {

struct LimitsBench : FormBench<MMIprompt> {
  explicit LimitsBench(int sub_type) {
    InInches(program, 0, 3000);
    Line() = {.Type = MMI,
              .SubType = static_cast<std::int16_t>(sub_type),
              .UpperInt = 5,
              .LowerInt = 1,
              .JogLRSpeed = 1,
              .JogUDSpeed = 1,
              .JogLRAccel = 100,
              .JogUDAccel = 100};
    Open();
  }
};

struct Refusal {
  int sub_type;
  const char* lower;
  const char* upper;
  const char* box;
  const char* title;
  const char* text;
};

// 20000 steps a revolution and 3000 steps an inch: 6.6666 inches a revolution.
const Refusal kRefusals[] = {
    {GetDistance, "5333.34", "5", "lowerlimit", "Too large",
     "The lower limit for distance must not be greater than 5333.3333 inch."},
    {GetDistance, "-0.0001", "5", "lowerlimit", "Too small",
     "The lower limit for distance must not be less than 0 inch."},
    {GetDistance, "1", "5333.34", "upperlimit", "Too large",
     "The upper limit for distance must not be greater than 5333.3333 inch."},
    {GetDistance, "0", "0.0002", "upperlimit", "Too small",
     "The upper limit for distance must not be less than 0.0003 inch."},
    {GetDistance, "1", "1E999", "upperlimit", "Too large",
     "The upper limit for distance must not be greater than 5333.3333 inch."},
    {GetSpeed, "333.34", "333", "lowerlimit", "Too large",
     "The lower limit for speed must not be greater than 333.3333 inch/sec."},
    {GetSpeed, "0.1665", "333", "lowerlimit", "Too small",
     "The lower limit for speed must not be less than 0.1666 inch/sec."},
    {GetSpeed, "1", "333.34", "upperlimit", "Too large",
     "The upper limit for speed must not be greater than 333.3333 inch/sec."},
    {GetSpeed, "1", "", "upperlimit", "Too small",
     "The upper limit for speed must not be less than 0.1666 inch/sec."},
    {GetCount, "65536", "5", "lowerlimit", "Too large",
     "The lower limit for repeat counts must not be greater than 65535."},
    {GetCount, "1", "65536", "upperlimit", "Too large",
     "The upper limit for repeat counts must not be greater than 65535."},
    {GetCount, "1", "65535.1", "upperlimit", "Too large",
     "The upper limit for repeat counts must not be greater than 65535."},
    {GetDistance, "5", "4.9999", "upperlimit", "Too small",
     "The upper limit must not be less than the lower limit."},
    {GetCount, "5", "4", "upperlimit", "Too small", "The upper limit must not be less than the lower limit."},
};

TEST(PromptLimits, OutOfRangeKeepTheDialogOpenWithAMessage) {
  for (const Refusal& row : kRefusals) {
    LimitsBench d(row.sub_type);
    const Instruction before = d.Line();
    d.Enter("lowerlimit", row.lower);
    d.Enter("upperlimit", row.upper);
    EXPECT_FALSE(d.OK()) << row.text;
    EXPECT_EQ(d.boxes.shown, (std::vector<ShownBox>{{.text = row.text, .title = row.title}}));
    ASSERT_NE(d.form.Caret(), nullptr);
    EXPECT_EQ(d.form.Caret()->name, row.box) << row.text;
    EXPECT_EQ(d.Text("lowerlimit"), row.lower) << "is not forced";
    EXPECT_EQ(d.Line(), before) << row.text;
  }
}

TEST(PromptLimits, ARepeatCountBelowOneIsRefusedWithoutAWord) {
  for (const char* box : {"lowerlimit", "upperlimit"}) {
    for (const char* typed : {"0", "0.9999", "-3", "", "often"}) {
      LimitsBench d(GetCount);
      d.Enter(box, typed);
      EXPECT_FALSE(d.OK()) << typed;
      EXPECT_TRUE(d.boxes.shown.empty());
      ASSERT_NE(d.form.Caret(), nullptr);
      EXPECT_EQ(d.form.Caret()->name, box);
      d.Enter(box, "4");
      EXPECT_TRUE(d.OK()) << "it was put right";
      EXPECT_EQ(d.form.Caret(), nullptr);
    }
  }
}

TEST(PromptLimits, TheUpperOneIsTestedFirst) {
  LimitsBench d(GetDistance);
  d.Enter("lowerlimit", "-1");
  d.Enter("upperlimit", "-1");
  EXPECT_FALSE(d.OK());
  EXPECT_EQ(d.boxes.shown.size(), 1U);
  EXPECT_EQ(d.boxes.shown[0].text, "The upper limit for distance must not be less than 0.0003 inch.");
}

TEST(PromptLimits, AreStoredAsWholesAndTenThousandths) {
  const struct {
    int sub_type;
    const char* lower;
    const char* upper;
    std::array<std::int32_t, 4> stored;
  } rows[] = {{GetDistance, "0", "5333.3333", {0, 0, 5333, 3333}},
              {GetDistance, "0.5", "1.25", {0, 5000, 1, 2500}},
              {GetDistance, "none", "2,5", {0, 0, 2, 0}},
              {GetDistance, "1.00004", "1.99999", {1, 0, 1, 10000}},
              {GetDistance, "-0", "1E3", {0, 0, 1000, 0}},
              {GetSpeed, "0.1666", "333.3333", {0, 1666, 333, 3333}},
              {GetCount, "1", "65535", {1, 0, 32767, 0}},
              {GetCount, "1.5", "2.5", {2, 0, 2, 0}},
              {GetCount, "32768", "40000", {32767, 0, 32767, 0}},
              // Of the other functions they are no limits of anything.
              {DisplayOnly, "-1.25", "1E300", {-2, 7500, 2147483647, 0}},
              {Menu, "-1E300", "0.5", {-2147483647 - 1, 0, 0, 5000}}};
  for (const auto& row : rows) {
    LimitsBench d(row.sub_type);
    d.Line().MenuKey[1] = true;
    d.Open();
    d.Enter("lowerlimit", row.lower);
    d.Enter("upperlimit", row.upper);
    EXPECT_TRUE(d.OK()) << row.upper;
    const Instruction& line = d.Line();
    EXPECT_EQ((std::array{line.LowerInt, line.LowerFrac, line.UpperInt, line.UpperFrac}), row.stored)
        << row.lower << " to " << row.upper;
  }
}

TEST(PromptLimits, OfARepeatCountAreShownAsTheyAreStoredBeforeTheDialogGoes) {
  LimitsBench d(GetCount);
  d.Enter("upperlimit", "40000");
  EXPECT_EQ(d.Text("upperlimit"), "40000");
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Text("upperlimit"), "32767");
}

TEST(PromptLimits, ThatNobodyTouchedStayAsTheyAre) {
  LimitsBench d(GetDistance);
  d.Line().UpperInt = 4;
  d.Line().UpperFrac = 10000;
  d.Line().LowerFrac = 2345;
  const Instruction before = d.Line();
  d.Open();
  EXPECT_EQ(d.Text("upperlimit"), "5");
  EXPECT_EQ(d.Text("lowerlimit"), "1.2345");
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line(), before);
}

TEST(PromptLimits, AreTestedEvenIfNobodyTouchedThem) {
  LimitsBench d(GetCount);
  d.Line().UpperInt = 70000;
  d.Open();
  EXPECT_FALSE(d.OK());
  EXPECT_EQ(d.boxes.shown.size(), 1U);
}

TEST(PromptLimits, TellTheUnitOfWhatIsAskedFor) {
  const struct {
    int sub_type;
    const char* own_unit;
    const char* without;
  } rows[] = {{GetDistance, "inch", "steps"}, {GetSpeed, "inch/sec", "rev/sec"}, {GetCount, "", ""}};
  for (const auto& row : rows) {
    LimitsBench d(row.sub_type);
    for (const char* label : {"lblLL", "lblUL"}) EXPECT_EQ(d.Caption(label), row.own_unit);
    d.program.Axis.UseUnits[3] = false;
    d.Choose("Drive", 3);
    for (const char* label : {"lblLL", "lblUL"}) EXPECT_EQ(d.Caption(label), row.without);
  }
}

TEST(PromptLimits, AMessageEndsWithOneDotWhateverTheUnit) {
  const struct {
    const char* unit;
    const char* end;
  } rows[] = {{"in.", " 5333.3333 in."}, {"mm", " 5333.3333 mm."}, {"", " 5333.3333."}};
  for (const auto& row : rows) {
    LimitsBench d(GetDistance);
    d.program.Axis.UnitName[0] = row.unit;
    d.Enter("upperlimit", "99999");
    EXPECT_FALSE(d.OK());
    EXPECT_EQ(d.boxes.shown.at(0).text,
              std::string("The upper limit for distance must not be greater than") + row.end);
  }
}

TEST(PromptLimits, OfADamagedAxisCrashNothing) {
  for (const int steps : {0, -5}) {
    for (const int sub_type : {int{GetDistance}, int{GetSpeed}}) {
      LimitsBench d(sub_type);
      d.program.Axis.StepsPerUnit[0] = steps;
      d.program.Axis.StepResCode[0] = 99;
      d.Enter("upperlimit", "4");
      const bool written = d.OK();
      EXPECT_EQ(written, d.boxes.shown.empty()) << steps << ", " << sub_type;
    }
  }
}

}  // namespace
}  // namespace tavlo::testing
