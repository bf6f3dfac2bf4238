// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/wait_time.h"

#include "forms/form_bench.h"

namespace tavlo::testing {
namespace {

using WaitBench = FormBench<WaitTime>;

TEST(WaitTime, AnEntryOf0Shows001AndStores1) {
  WaitBench d;
  d.Open();
  d.Enter("delaytime", "0");
  EXPECT_EQ(d.Text("delaytime"), "0.01");
  EXPECT_EQ(d.Position("timebar"), 1);
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().Time, 1);
  EXPECT_EQ(d.Line().Type, WT);
}

TEST(WaitTime, ForcesTheTimeIntoItsRangeAndShowsWhatIsStored) {
  const struct {
    const char* typed;
    const char* shown;
    int stored;
  } rows[] = {{"1", "1.00", 100},         {"1.5", "1.50", 150},
              {"0.125", "0.12", 12},      {"0.135", "0.14", 14},
              {"300", "300.00", 30000},   {"300.01", "300.00", 30000},
              {"-3", "0.01", 1},          {"", "0.01", 1},
              {"soon", "0.01", 1},        {"2 seconds", "2.00", 200},
              {"1E999", "300.00", 30000}, {"0.004", "0.01", 1}};
  for (const auto& row : rows) {
    WaitBench d;
    d.Open();
    d.Enter("delaytime", row.typed);
    EXPECT_EQ(d.Text("delaytime"), row.shown) << row.typed;
    EXPECT_TRUE(d.OK());
    EXPECT_EQ(d.Line().Time, row.stored) << row.typed;
    d.Open();
    d.Type("delaytime", row.typed);
    EXPECT_TRUE(d.OK()) << "from the box that still has the focus";
    EXPECT_EQ(d.Line().Time, row.stored) << row.typed;
  }
}

TEST(WaitTime, TheSliderCountsHundredthsOfASecond) {
  WaitBench d;
  d.Line().Time = 250;
  d.Open();
  EXPECT_EQ(d.Text("delaytime"), "2.50");
  EXPECT_EQ(d.Position("timebar"), 250);
  EXPECT_EQ(d.Ends("timebar"), std::pair(1, 30000));
  d.Move("timebar", 1234);
  EXPECT_EQ(d.Text("delaytime"), "12.34");
  d.Move("timebar", 40000);
  EXPECT_EQ(d.Text("delaytime"), "300.00");
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().Time, 30000);
}

TEST(WaitTime, MovingTheSliderTakesTheTypedTextBack) {
  WaitBench d;
  d.Open();
  d.Type("delaytime", "99");
  d.Move("timebar", 50);
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().Time, 50);
}

TEST(WaitTime, ATimeOutsideTheRangeIsForcedAtOKAndAnyOtherIsKept) {
  const struct {
    int stored;
    const char* shown;
    int after;
  } rows[] = {{0, "0.00", 1},           {-7, "-0.07", 1},         {1, "0.01", 1},
              {12345, "123.45", 12345}, {30000, "300.00", 30000}, {50000, "500.00", 30000}};
  for (const auto& row : rows) {
    WaitBench d;
    d.Line().Time = row.stored;
    d.Open();
    EXPECT_EQ(d.Text("delaytime"), row.shown);
    EXPECT_TRUE(d.OK());
    EXPECT_EQ(d.Line().Time, row.after) << row.stored;
  }
}

TEST(WaitTime, EnterTakesTheEntryAndStays) {
  WaitBench d;
  d.Line().Time = 100;
  d.Open();
  d.Type("delaytime", "500");
  d.form.Enter();
  EXPECT_EQ(d.Text("delaytime"), "300.00");
  EXPECT_EQ(d.form.First().name, "delaytime");
  EXPECT_EQ(d.Line().Time, 100) << "only OK writes";
}

TEST(WaitTime, CancelAfterMovingTheSliderLeavesTheTimeAsItWas) {
  WaitBench d;
  d.Line() = {.Type = WT, .Time = 100};
  const Instruction before = d.Line();
  d.Open();
  d.Move("timebar", 700);
  d.form.Cancel();
  EXPECT_EQ(d.Line(), before);
}

}  // namespace
}  // namespace tavlo::testing
