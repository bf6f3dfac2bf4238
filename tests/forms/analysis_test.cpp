// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/feed_length.h"
#include "forms/feed_set_out.h"
#include "forms/form_bench.h"

namespace tavlo::testing {
namespace {

/// A move of one revolution a second with 10 rev/s/s both ways, on 20000 steps a revolution.
template <class WhichForm>
struct AnalysisBench : FormBench<WhichForm> {
  AnalysisBench() {
    this->Line() = {
        .Type = FL, .Dist = 20000, .Dist2 = 10000, .Speed = 1, .Speed2 = 0.5F, .Accel = 10, .Decel = 10};
  }
  void Turn(int page) { this->form.Turn(this->form.Controls().Find("SSTab1"), page); }
  void Analyse() {
    this->Open();
    Turn(0);
    Turn(1);
  }
  [[nodiscard]] std::string RowText(int row) {
    const std::string at = "(" + std::to_string(row) + ")";
    return this->Caption("StatLabel" + at) + " " + this->Caption("TimeBox" + at) + " " +
           this->Caption("DistBox" + at);
  }
  /// The rows that are seen.
  [[nodiscard]] std::vector<int> Rows() {
    std::vector<int> rows;
    for (int row = 0; row < 6; ++row) {
      const std::string at = "(" + std::to_string(row) + ")";
      const bool seen = this->Visible("StatLabel" + at);
      EXPECT_EQ(this->Visible("TimeBox" + at), seen);
      EXPECT_EQ(this->Visible("DistBox" + at), seen);
      if (seen) rows.push_back(row);
    }
    return rows;
  }
  [[nodiscard]] const GraphBox& Graph() {
    return *std::get<GraphBox*>(this->form.Controls().Find("Graph").control);
  }
};
using LengthBench = AnalysisBench<FeedLength>;
struct AnalysedOutput : AnalysisBench<FeedSetOut> {
  AnalysedOutput() {
    Line().Type = FLSO;
    Line().Speed2IsMMI = true;
  }
};

const std::vector<int> kFourRows = {0, 1, 2, 3};

TEST(Analysis, ShowsTheRowsOfATrapezoid) {
  LengthBench d;
  d.Analyse();
  EXPECT_EQ(d.Rows(), kFourRows);
  EXPECT_EQ(d.RowText(0), "Accel 0.100 1000");
  EXPECT_EQ(d.RowText(1), "at Speed 0.900 18000");
  EXPECT_EQ(d.RowText(2), "Decel 0.100 1000");
  EXPECT_EQ(d.RowText(3), "Total 1.100 20000");
  EXPECT_EQ(d.Caption("PeakSpeed"), "1.000");
  EXPECT_FALSE(d.Visible("lblCant"));
}

TEST(Analysis, ShowsTheRowsOfTwoPlateaus) {
  LengthBench d;
  d.Line() = {
      .Type = FLCS, .Dist = 100000, .Dist2 = 50000, .Speed = 1, .Speed2 = 0.5F, .Accel = 10, .Decel = 10};
  d.Analyse();
  const std::vector<std::string> rows = {"Accel 0.100 1000",      "at Speed 2.450 49000",
                                         "Decel 0.050 750",       "at Speed2 4.900 49000",
                                         "Final Decel 0.050 250", "Total 7.550 100000"};
  for (int row = 0; row < 6; ++row) EXPECT_EQ(d.RowText(row), rows[static_cast<std::size_t>(row)]);
  EXPECT_EQ(d.Rows().size(), 6U);
}

TEST(Analysis, RowsFiveAndSixStayWhenALaterMoveHasFewer) {
  LengthBench d;
  d.Line() = {
      .Type = FLCS, .Dist = 100000, .Dist2 = 50000, .Speed = 1, .Speed2 = 0.5F, .Accel = 10, .Decel = 10};
  d.Analyse();
  d.Turn(0);
  d.Click("ChkChangeSpeed");
  d.Turn(1);
  EXPECT_EQ(d.Rows(), (std::vector<int>{0, 1, 2, 3, 4, 5}));
  EXPECT_EQ(d.RowText(3).substr(0, 5), "Total");
  d.Turn(0);
  d.Click("getmmidst");
  d.Turn(1);
  EXPECT_EQ(d.Rows(), (std::vector<int>{4, 5}));
}

TEST(Analysis, IsWorkedOutWhenThePageIsTurnedToAndNotWhileTyping) {
  LengthBench d;
  d.Analyse();
  d.Turn(0);
  d.Enter("disttext", "40000");
  EXPECT_EQ(d.RowText(3), "Total 1.100 20000");
  d.Turn(1);
  EXPECT_EQ(d.RowText(3), "Total 2.100 40000");
  d.Turn(0);
  d.Type("disttext", "60000");
  d.Turn(1);
  EXPECT_EQ(d.RowText(3), "Total 3.100 60000") << "what is still being typed counts";
}

TEST(Analysis, IsWorkedOutAtOnceWhenTheDialogComesUpOnItsPage) {
  LengthBench d;
  d.Analyse();
  d.Line(1) = d.Line();
  d.Line(1).Dist = 40000;
  d.Open(1);
  EXPECT_EQ(d.RowText(3), "Total 2.100 40000");
}

TEST(Analysis, AVariableMakesTheMoveUnknown) {
  const struct {
    const char* box;
    bool changes_speed;
    bool unknown;
  } rows[] = {{"getmmidst", false, true},   {"GetMMISpd", false, true}, {"getmmidst2", false, false},
              {"getmmispd2", false, false}, {"getmmidst2", true, true}, {"getmmispd2", true, true}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.box);
    LengthBench d;
    d.Line().Type = row.changes_speed ? FLCS : FL;
    d.Analyse();
    const std::size_t points = d.Graph().curve.x.size();
    d.Turn(0);
    d.Click(row.box);
    d.Turn(1);
    EXPECT_EQ(d.Visible("lblCant"), row.unknown);
    EXPECT_EQ(d.Visible("StatLabel(0)"), !row.unknown);
    EXPECT_EQ(d.Graph().curve.x.size(), points) << "the graph keeps what it showed";
  }
  LengthBench d;
  d.Open();
  EXPECT_EQ(
      d.Caption("lblCant"),
      "Analysis of this move can't be done, because speed or distance is an MMI variable and is therefore "
      "unknown at this time.");
}

TEST(Analysis, TheGraphGoesOverTimeOrOverDistance) {
  LengthBench d;
  d.Analyse();
  EXPECT_TRUE(d.Chosen("OptTime"));
  EXPECT_EQ(d.Graph().x_caption, "sec");
  EXPECT_EQ(d.Graph().y_caption, "R e v / s e c");
  EXPECT_FLOAT_EQ(static_cast<float>(d.Graph().curve.x.back()), 1.1F);
  d.Click("OptDistance");
  EXPECT_EQ(d.Graph().x_caption, "steps");
  EXPECT_FLOAT_EQ(static_cast<float>(d.Graph().curve.x.back()), 20000);
  EXPECT_FALSE(d.Graph().trace);
}

TEST(Analysis, TheGraphIsInTheUnitsOfTheAxis) {
  LengthBench d;
  InInches(d.program, 0, 2000);
  d.Analyse();
  EXPECT_EQ(d.Graph().y_caption, "i n c h / s e c");
  EXPECT_FLOAT_EQ(static_cast<float>(d.Graph().curve.y[10]), 10);
  d.Click("OptDistance");
  EXPECT_EQ(d.Graph().x_caption, "inch");
  EXPECT_FLOAT_EQ(static_cast<float>(d.Graph().curve.x.back()), 10);
  EXPECT_EQ(d.RowText(3), "Total 1.100 10.0");
  EXPECT_EQ(d.Caption("PeakSpeed"), "10.0000");
}

TEST(Analysis, LettersOfAUnitStandApart) {
  EXPECT_EQ(spaced("mm"), "m m ");
  EXPECT_EQ(spaced(""), "");
}

TEST(Analysis, OfAnOutputShowsWhenItIsSet) {
  AnalysedOutput d;
  d.Analyse();
  EXPECT_EQ(d.Rows(), kFourRows);
  EXPECT_EQ(d.Caption("OutDist"), "10000");
  EXPECT_EQ(d.Caption("OutTime"), "0.550");
  ASSERT_TRUE(d.Graph().trace);
  EXPECT_EQ(d.Graph().trace->y, (std::vector<double>{0, 0, 1, 1}));
  d.Turn(0);
  d.Click("OptEndOfMove");
  d.Click("OptState(3)");
  d.Enter("pw", "100");
  d.Turn(1);
  EXPECT_EQ(d.Caption("OutDist"), "20000");
  EXPECT_EQ(d.Caption("OutTime"), "1.100");
  EXPECT_EQ(d.Graph().trace->y, (std::vector<double>{1, 1, 0, 0, 1}));
  EXPECT_EQ(d.Graph().curve.x.size(), 23U);
  EXPECT_FLOAT_EQ(static_cast<float>(d.Graph().curve.x.back()), 1.2F);
}

TEST(Analysis, OfAnOutputWhosePlaceIsAVariableOnlyItsTraceVanishes) {
  AnalysedOutput d;
  d.Open();
  d.Click("getmmidst2");
  d.Turn(1);
  EXPECT_FALSE(d.Visible("lblCant"));
  EXPECT_EQ(d.Rows(), kFourRows);
  ASSERT_TRUE(d.Graph().trace) << "its band stays free";
  EXPECT_TRUE(d.Graph().trace->x.empty());
}

TEST(Analysis, OfAnOutputKeepsTheCaptionOfRevolutionsInUserUnits) {
  AnalysedOutput d;
  InInches(d.program, 0, 2000);
  d.Analyse();
  EXPECT_EQ(d.Graph().y_caption, "R e v / s e c");
  EXPECT_FLOAT_EQ(static_cast<float>(d.Graph().curve.y[10]), 10);
}

TEST(Analysis, LeavesNothingInTheLine) {
  LengthBench d;
  const Instruction before = d.Line();
  d.Analyse();
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line(), before);
}

}  // namespace
}  // namespace tavlo::testing
