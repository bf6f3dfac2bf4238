// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/run_log_window.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QTableView>

#include "link/execution.h"
#include "session/run_log.h"
#include "session/run_rows.h"
#include "support/fake_state_folder.h"
#include "windows/run_session.h"
#include "windows/window_place.h"

namespace tavlo::testing {
namespace {

/// A session that keeps its runs, and its log's window.
struct LogSession : RunSession {
  LogSession() {
    // Made anew, now with a folder.
    windows.reset();
    Outside services = Services();
    services.runs = &folder;
    windows = std::make_unique<ComposerWindows>(services);
    Begin();
    fakes.port.is_open = true;
    fakes.boxes.shown.clear();
  }

  /// The windows keep their last run when they go.
  ~LogSession() { windows.reset(); }
  LogSession(const LogSession&) = delete;
  LogSession& operator=(const LogSession&) = delete;

  void PressCtrlL(QWidget& in) {
    QTest::keyClick(&in, Qt::Key_L, Qt::ControlModifier);
    Settle();
  }
  void Open() { PressCtrlL(Main()); }
  [[nodiscard]] QWidget& Window() { return Form("RunLog"); }
  [[nodiscard]] bool IsUp() {
    const auto* window = Main().findChild<QWidget*>(QStringLiteral("RunLog"));
    return window != nullptr && window->isVisible();
  }
  [[nodiscard]] QTableView& Table() { return Find<QTableView>("RunLog", "Events"); }
  [[nodiscard]] QComboBox& Runs() { return Find<QComboBox>("RunLog", "Runs"); }
  [[nodiscard]] QString Notice() { return Find<QLabel>("RunLog", "Notice").text(); }
  [[nodiscard]] QPushButton& SaveButton() { return Find<QPushButton>("RunLog", "Save"); }
  [[nodiscard]] RunLog& Log() { return *Handlers().log; }
  [[nodiscard]] int Rows() { return Table().model()->rowCount(); }
  [[nodiscard]] std::string Cell(int row, RunColumn column) {
    return Table().model()->index(row, static_cast<int>(column)).data().toString().toStdString();
  }
  /// Waits for the next batch.
  void Batch() { QTest::qWait(150); }
  void Lines(int count) {
    for (int i = 0; i < count; ++i) fakes.port.Receive(LineMessage(254, i % 200));
  }
  /// A run that is stopped.
  void WholeRun() {
    WhileRunning(RunWindow::ExecStatus, [this] {
      Lines(3);
      Click("ExecStatus", "btnStop");
    });
    Log().Close();
  }

  FakeStateDisk disk;
  FakeStateFolder folder{disk};
};

TEST(RunLogWindow, CtrlLOpensItFromTheMainWindowAndSaysThatThereIsNothingYet) {
  LogSession session;
  EXPECT_FALSE(session.IsUp());
  session.Open();
  ASSERT_TRUE(session.IsUp());
  EXPECT_EQ(session.Notice(), "No run has been logged yet.");
  EXPECT_EQ(session.Rows(), 0);
  EXPECT_FALSE(session.SaveButton().isEnabled());
  EXPECT_FALSE(session.Window().isModal());
  QTest::keyClick(&session.Window(), Qt::Key_Escape);
  EXPECT_FALSE(session.IsUp());
}

TEST(RunLogWindow, IsNotOpenedByARun) {
  LogSession session;
  session.WholeRun();
  EXPECT_FALSE(session.IsUp());
}

TEST(RunLogWindow, ShowsARunAsItGoesOn) {
  LogSession session;
  session.WhileRunning(RunWindow::ExecStatus, [&] {
    session.PressCtrlL(session.Form("ExecStatus"));
    ASSERT_TRUE(session.IsUp());
    EXPECT_EQ(session.Cell(0, RunColumn::Event), "begin");
    session.Lines(2);
    session.Batch();
    ASSERT_EQ(session.Rows(), 3);
    EXPECT_EQ(session.Cell(2, RunColumn::Event), "line started");
    EXPECT_EQ(session.Cell(2, RunColumn::Line), "2");
    EXPECT_TRUE(session.Runs().itemText(0).contains(QStringLiteral("(running)")));
    session.Click("ExecStatus", "btnStop");
  });
  session.Log().Close();
  EXPECT_FALSE(session.Runs().itemText(0).contains(QStringLiteral("(running)")));
  EXPECT_EQ(session.Cell(session.Rows() - 1, RunColumn::What), "stopped");
}

TEST(RunLogWindow, FollowsTheNewestEventOnlyWhileTheScrollBarIsAtTheEnd) {
  LogSession session;
  session.WhileRunning(RunWindow::ExecStatus, [&] {
    session.Open();
    QScrollBar& bar = *session.Table().verticalScrollBar();
    session.Lines(200);
    session.Batch();
    ASSERT_GT(bar.maximum(), 0);
    EXPECT_EQ(bar.value(), bar.maximum());
    bar.setValue(3);
    session.Lines(200);
    session.Batch();
    EXPECT_EQ(session.Rows(), 401);
    EXPECT_EQ(bar.value(), 3) << "the operator reads there";
    bar.setValue(bar.maximum());
    session.Lines(50);
    session.Batch();
    EXPECT_EQ(bar.value(), bar.maximum());
    session.Click("ExecStatus", "btnStop");
  });
}

TEST(RunLogWindow, EscapeInItStopsARunAndClosesItOtherwise) {
  LogSession session;
  session.WhileRunning(RunWindow::ExecStatus, [&] {
    session.Open();
    session.fakes.port.sent.clear();
    QTest::keyClick(&session.Table(), Qt::Key_Escape);
  });
  EXPECT_EQ(session.fakes.port.sent.front(), "S");
  EXPECT_TRUE(session.IsUp());
  QTest::keyClick(&session.Table(), Qt::Key_Escape);
  EXPECT_FALSE(session.IsUp());
}

TEST(RunLogWindow, GivesTheKeyboardBackToTheRunWhenItIsClosed) {
  LogSession session;
  session.WhileRunning(RunWindow::fakeMMI, [&] {
    session.Open();
    EXPECT_TRUE(session.Window().isActiveWindow());
    session.Click("RunLog", "Quit");
    session.Settle();
    EXPECT_TRUE(session.Form("fakeMMI").isActiveWindow());
    session.Click("fakeMMI", "btnStop");
  });
}

TEST(RunLogWindow, LeavesTheWindowOfTheRunInSight) {
  LogSession session;
  session.WhileRunning(RunWindow::ExecStatus, [&] {
    const QWidget& run = session.Form("ExecStatus");
    session.Open();
    EXPECT_FALSE(session.Window().frameGeometry().intersects(run.frameGeometry()));
    EXPECT_TRUE(session.Main().screen()->availableGeometry().contains(session.Window().frameGeometry()));
    session.Click("ExecStatus", "btnStop");
  });
}

TEST(RoomBeside, IsWhereAWindowCoversLeastOfAnother) {
  const struct {
    const char* what;
    QRect spared;
    QRect room;
    QRect place;
  } cases[] = {
      {"there is room on its right", {100, 100, 300, 400}, {0, 0, 1920, 1080}, {400, 100, 900, 520}},
      {"there is room on its left", {1500, 100, 300, 400}, {0, 0, 1920, 1080}, {600, 100, 900, 520}},
      {"it stands low", {1500, 900, 300, 150}, {0, 0, 1920, 1080}, {600, 560, 900, 520}},
      {"a narrow part is filled", {900, 0, 300, 400}, {0, 0, 1280, 720}, {0, 0, 900, 520}},
      {"the window is made smaller", {500, 0, 300, 400}, {0, 0, 1000, 720}, {100, 400, 900, 320}},
      {"it cannot but cover some", {100, 100, 700, 500}, {0, 0, 800, 600}, {0, 0, 800, 200}},
      {"a part is too narrow for it", {0, 0, 800, 700}, {0, 0, 1000, 720}, {700, 0, 300, 520}},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(RoomBeside(c.spared, c.room, {900, 520}, {300, 200}), c.place) << c.what;
  }
}

TEST(RunLogWindow, KeysTypedInItGoNowhere) {
  LogSession session;
  session.WhileRunning(RunWindow::fakeMMI, [&] {
    session.Open();
    session.fakes.port.sent.clear();
    for (const Qt::Key key : {Qt::Key_5, Qt::Key_Return, Qt::Key_Plus, Qt::Key_Up})
      QTest::keyClick(&session.Table(), key);
    EXPECT_TRUE(session.fakes.port.sent.empty());
    session.Click("fakeMMI", "btnStop");
  });
}

TEST(RunLogWindow, ListsTheLastTenRunsAndShowsTheChosenOne) {
  LogSession session;
  std::time_t wall = 1795351904;
  session.Log().wall = [&wall] { return wall; };
  for (int i = 0; i < 12; ++i) {
    session.Session().file_name = "/home/op/run " + std::to_string(i) + ".TVH";
    session.WholeRun();
    wall += 60;
  }
  session.Open();
  ASSERT_EQ(session.Runs().count(), 10);
  EXPECT_TRUE(session.Runs().itemText(0).endsWith(QStringLiteral("  run 11.TVH")));
  EXPECT_TRUE(session.Runs().itemText(9).endsWith(QStringLiteral("  run 2.TVH")));
  session.Runs().setCurrentIndex(4);
  EXPECT_EQ(session.Cell(0, RunColumn::What), "/home/op/run 7.TVH");
  EXPECT_EQ(session.Cell(session.Rows() - 1, RunColumn::Event), "end");
  session.WholeRun();
  EXPECT_EQ(session.Cell(0, RunColumn::What), "/home/op/run 7.TVH") << "whoever reads goes on reading";
  EXPECT_EQ(session.Runs().currentIndex(), 5);
}

TEST(RunLogWindow, AFileThatHoldsNoLogIsSaidToBeSo) {
  LogSession session;
  session.disk.files["run-20200101-000000-01.csv"] = "\xFF\xFE";
  session.Open();
  ASSERT_EQ(session.Runs().count(), 1);
  EXPECT_TRUE(session.Runs().itemText(0).startsWith(QStringLiteral("Cannot be read  ")));
  EXPECT_EQ(session.Notice(), "This file cannot be read as the log of a run.");
  EXPECT_EQ(session.Rows(), 0);
  EXPECT_FALSE(session.SaveButton().isEnabled());
}

TEST(RunLogWindow, ARunThatCannotBeKeptIsSaidInTheWindowAndInNoBox) {
  LogSession session;
  session.disk.broken = "No space left on device";
  session.WhileRunning(RunWindow::ExecStatus, [&] {
    session.Open();
    EXPECT_EQ(session.Notice(), "This run cannot be kept: No space left on device.");
    session.Click("ExecStatus", "btnStop");
  });
  session.Log().Close();
  EXPECT_TRUE(session.fakes.boxes.shown.empty());
  EXPECT_EQ(session.Notice(), "This run cannot be kept: No space left on device.");
  session.disk.broken.clear();
  session.WholeRun();
  EXPECT_EQ(session.Notice(), "");
}

TEST(RunLogWindow, SavesTheChosenRunAsCsv) {
  LogSession session;
  session.WholeRun();
  session.Open();
  session.fakes.dialogs.next_file_name = "/home/op/log.csv";
  session.Click("RunLog", "Save");
  EXPECT_EQ(session.fakes.files.files["/home/op/log.csv"], CsvOf(session.Log()));
  ASSERT_EQ(session.fakes.dialogs.shown.size(), 1u);
  EXPECT_EQ(session.fakes.dialogs.shown[0].default_extension, "csv");
  const std::string kept = session.folder.Names().front();
  const std::string csv = session.disk.files[kept];
  session.WholeRun();
  session.Runs().setCurrentIndex(1);
  session.fakes.dialogs.next_file_name = "/home/op/earlier.csv";
  session.Click("RunLog", "Save");
  EXPECT_EQ(session.fakes.files.files["/home/op/earlier.csv"], csv);
  session.fakes.dialogs.next_file_name.reset();
  session.Click("RunLog", "Save");
  EXPECT_TRUE(session.fakes.boxes.shown.empty());
}

TEST(RunLogWindow, ASaveThatFailsIsTold) {
  LogSession session;
  session.WholeRun();
  session.Open();
  session.fakes.dialogs.next_file_name = "/home/op/log.csv";
  session.fakes.files.room = 3;
  session.Click("RunLog", "Save");
  ASSERT_EQ(session.fakes.boxes.shown.size(), 1u);
  EXPECT_EQ(session.fakes.boxes.shown[0].text, "The log could not be saved: No space left on device.");
}

TEST(RunLogWindow, NoFileDialogComesOverARunOrATransfer) {
  LogSession session;
  session.WholeRun();
  session.Open();
  EXPECT_TRUE(session.SaveButton().isEnabled());
  session.Session().link.Busy = true;
  session.Click("RunLog", "Save");
  session.Session().link.Busy = false;
  session.WhileRunning(RunWindow::ExecStatus, [&] {
    EXPECT_FALSE(session.SaveButton().isEnabled());
    session.Click("RunLog", "Save");
    session.Click("ExecStatus", "btnStop");
  });
  // The run is closed while Execute still holds the line.
  session.Session().link.Busy = true;
  session.Log().Close();
  EXPECT_FALSE(session.SaveButton().isEnabled());
  session.Session().link.Busy = false;
  session.Batch();
  EXPECT_TRUE(session.fakes.dialogs.shown.empty());
  EXPECT_TRUE(session.SaveButton().isEnabled());
}

TEST(RunLogWindow, ARunIsKeptWhileItRunsAndWhenTheProgramEnds) {
  LogSession session;
  session.WhileRunning(RunWindow::ExecStatus, [&] {
    ASSERT_EQ(session.disk.files.size(), 1u) << "from its begin on";
    session.Lines(5);
    QElapsedTimer patience;
    patience.start();
    while (session.disk.appends == 0 && patience.elapsed() < 20000) QTest::qWait(50);
    EXPECT_NE(session.disk.files.begin()->second.find("line started,5,"), std::string::npos);
    session.Click("ExecStatus", "btnStop");
  });
  session.windows.reset();
  EXPECT_NE(session.disk.files.begin()->second.find(",end,,,stopped,\r\n"), std::string::npos);
}

TEST(RunLogWindow, TheTabKeyGoesThroughItAndOut) {
  LogSession session;
  session.WholeRun();
  session.Open();
  std::vector<std::string> order;
  for (int i = 0; i < 4; ++i) {
    order.push_back(QApplication::focusWidget()->objectName().toStdString());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  }
  EXPECT_EQ(order, (std::vector<std::string>{"Events", "Save", "Quit", "Runs"}));
}

}  // namespace
}  // namespace tavlo::testing
