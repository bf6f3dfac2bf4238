// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include <QAbstractItemModel>
#include <QPlainTextEdit>
#include <QSignalSpy>
#include <QTableView>

#include "hubsim_panel/panel_bench.h"

namespace tavlo::hubsim {
namespace {

QAbstractItemModel& LinesOf(const PanelBench& panel) {
  return *panel.window.findChild<QTableView*>(QStringLiteral("lines"))->model();
}

std::string Cell(const PanelBench& panel, int row, int column, int role = Qt::DisplayRole) {
  const QAbstractItemModel& lines = LinesOf(panel);
  return lines.data(lines.index(row, column), role).toString().toStdString();
}

TEST(MemoryTabs, ADownloadedLineIsShownInWordsAndBytes) {
  PanelBench panel;
  EXPECT_EQ(Cell(panel, 1, 1), "nothing");
  panel.bench.Download({FeedLength({.axis = 3}), WaitTime(300)});
  panel.window.Refresh();
  EXPECT_EQ(LinesOf(panel).rowCount(), 200);
  EXPECT_EQ(Cell(panel, 0, 1), "feed to length, axis 4");
  EXPECT_EQ(Cell(panel, 1, 0), "2");
  EXPECT_EQ(Cell(panel, 1, 1), "wait time");
  EXPECT_EQ(Cell(panel, 1, 2), "04 01 2c");
  EXPECT_EQ(Cell(panel, 199, 1), "empty");
}

TEST(MemoryTabs, TheBytesFit) {
  PanelBench panel;
  panel.bench.Download({FeedSafety({}, 2, 1, 4000, 4), Comment("A comment that fills a line")});
  panel.window.resize(1040, 640);
  panel.window.show();
  panel.window.Refresh();
  const auto* view = panel.window.findChild<QTableView*>(QStringLiteral("lines"));
  const QFontMetrics letters(LinesOf(panel).data(LinesOf(panel).index(0, 2), Qt::FontRole).value<QFont>());
  const auto room_for = [&](int row) {
    return view->columnWidth(2) - letters.horizontalAdvance(QString::fromStdString(Cell(panel, row, 2)));
  };
  EXPECT_GT(room_for(0), 4) << "a move, in a window of the usual size";
  EXPECT_EQ(Cell(panel, 1, 2, Qt::ToolTipRole), Cell(panel, 1, 2)) << "what does not fit is told whole";
  panel.window.resize(1400, 640);
  QCoreApplication::processEvents();
  EXPECT_GT(room_for(1), 4) << "a comment, in a wider one";
  EXPECT_EQ(view->columnViewportPosition(2) + view->columnWidth(2), view->viewport()->width());
}

TEST(MemoryTabs, TheRunningLineHasAPointerAndAColour) {
  PanelBench panel;
  panel.bench.Download({Empty(), WaitTime(300)});
  panel.bench.Run(0.1);
  panel.window.Refresh();
  EXPECT_EQ(Cell(panel, 1, 0), "\u25BA 2");
  const QAbstractItemModel& lines = LinesOf(panel);
  EXPECT_TRUE(lines.data(lines.index(1, 0), Qt::BackgroundRole).isValid());
  EXPECT_FALSE(lines.data(lines.index(0, 0), Qt::BackgroundRole).isValid());
  panel.bench.Send("S");
  panel.window.Refresh();
  EXPECT_EQ(Cell(panel, 1, 0), "2");
  EXPECT_FALSE(lines.data(lines.index(1, 0), Qt::BackgroundRole).isValid());
}

TEST(MemoryTabs, NothingIsPaintedAnewWhileNothingChanges) {
  PanelBench panel;
  panel.bench.Download({WaitTime(300), FeedLength({.axis = 0})});
  panel.window.Refresh();
  QSignalSpy changes(&LinesOf(panel), &QAbstractItemModel::dataChanged);
  panel.window.Refresh();
  EXPECT_EQ(changes.count(), 0);
  panel.bench.Run(0.1);
  panel.window.Refresh();
  EXPECT_EQ(changes.count(), 1);
  panel.bench.Go(1);
  panel.window.Refresh();
  EXPECT_EQ(changes.count(), 1);
  panel.bench.Go(2);
  panel.window.Refresh();
  EXPECT_EQ(changes.count(), 3) << "the line that ended and the one that began";
}

TEST(MemoryTabs, SettingsAndPoolHavePagesOfTheirOwn) {
  PanelBench panel;
  panel.bench.Download({}, SystemOf(1), std::string("Hello\xFF\0", 7));
  panel.window.Refresh();
  const auto page = [&](const char* name) {
    return panel.window.findChild<QPlainTextEdit*>(QLatin1String(name))->toPlainText();
  };
  EXPECT_TRUE(page("pool").contains(QStringLiteral("Hello")));
  EXPECT_TRUE(page("settings").startsWith(QStringLiteral("Axis 1  ")));
  EXPECT_TRUE(page("settings").contains(QStringLiteral("Axis 8  ")));
}

}  // namespace
}  // namespace tavlo::hubsim
