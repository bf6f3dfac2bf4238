// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/run_log_model.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>

#include "support/fake_desk.h"

namespace tavlo::testing {
namespace {

/// A log and the model that follows it, watched for what a view may not see.
struct FollowedLog : FakeDesk {
  FollowedLog() {
    log.Begin(source);
    model.Follow(log);
  }
  void Step(int times) {
    for (int i = 0; i < times; ++i) {
      clock.now += 0.002;
      log.Add({.kind = RunEventKind::LineStarted, .line = static_cast<std::int16_t>(i % 200)});
    }
  }
  [[nodiscard]] std::vector<std::string> Row(int row) const {
    std::vector<std::string> cells;
    for (int column = 0; column < model.columnCount(); ++column) {
      cells.push_back(model.index(row, column).data().toString().toStdString());
    }
    return cells;
  }
  /// All that the view would show is what the log holds.
  void ExpectWhole() const {
    const std::vector<RunRow> head = HeadOf(log);
    ASSERT_EQ(model.rowCount(), static_cast<int>(head.size() + log.Last() - log.First()));
    for (int row = 0; row < model.rowCount(); row += std::max(1, model.rowCount() / 50)) {
      const auto index = static_cast<std::size_t>(row);
      const RunRow expected =
          index < head.size() ? head[index] : RowOf(log, log.First() + index - head.size());
      EXPECT_EQ(Row(row), std::vector<std::string>(expected.cells.begin(), expected.cells.end())) << row;
    }
  }

  RunLog log{clock};
  RunLogModel model;
  QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST(RunLogModel, GrowsInOneStepABatch) {
  FollowedLog d;
  int steps = 0;
  QObject::connect(&d.model, &QAbstractItemModel::rowsInserted, [&steps] { ++steps; });
  EXPECT_EQ(d.model.rowCount(), 1) << "the begin";
  d.Step(48);
  EXPECT_EQ(d.model.rowCount(), 1);
  d.model.Take();
  EXPECT_EQ(steps, 1);
  d.ExpectWhole();
  d.model.Take();
  EXPECT_EQ(steps, 1) << "nothing new";
}

TEST(RunLogModel, DropsWhatTheLogHasLostAndCountsIt) {
  FollowedLog d;
  d.Step(static_cast<int>(RunLog::kMostEvents));
  d.model.Take();
  d.ExpectWhole();
  d.Step(10);
  d.model.Take();
  EXPECT_EQ(d.Row(1)[1], "missing");
  EXPECT_EQ(d.Row(1)[5], "10");
  d.ExpectWhole();
  d.Step(1);
  EXPECT_EQ(d.Row(2), (std::vector<std::string>{"", "", "", "", "", ""})) << "lost since the last look";
  d.model.Take();
  EXPECT_EQ(d.Row(1)[5], "11");
  d.ExpectWhole();
  d.Step(2 * static_cast<int>(RunLog::kMostEvents) + 5);
  d.model.Take();
  d.ExpectWhole();
}

TEST(RunLogModel, ANewRunTakesThePlaceOfTheOldOne) {
  FollowedLog d;
  d.Step(5);
  d.model.Take();
  d.log.Begin(d.source);
  d.model.Follow(d.log);
  EXPECT_EQ(d.model.rowCount(), 1);
  d.ExpectWhole();
}

TEST(RunLogModel, ShowsAKeptRunWithWhateverItHolds) {
  FollowedLog d;
  d.model.Show({{{"1.000", "display", "", "", "", "a\nb\x01"}}});
  EXPECT_EQ(d.model.rowCount(), 1);
  EXPECT_EQ(d.Row(0), (std::vector<std::string>{"1.000", "display", "", "", "", "a b "}));
  d.Step(3);
  d.model.Take();
  EXPECT_EQ(d.model.rowCount(), 1) << "it follows no log any more";
}

TEST(RunLogModel, BeforeTheFirstRunItIsEmpty) {
  FakeDesk d;
  RunLog log(d.clock);
  RunLogModel model;
  model.Follow(log);
  EXPECT_EQ(model.rowCount(), 0);
}

}  // namespace
}  // namespace tavlo::testing
