// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <QComboBox>
#include <QDropEvent>
#include <QMenu>
#include <QMimeData>
#include <QSplitter>
#include <QTimer>
#include <QToolButton>
#include <QUrl>

#include "commands/recent_files.h"
#include "model/program_file.h"
#include "windows/window_session.h"

namespace tavlo::testing {
namespace {

constexpr const char* kOddName = "/home/op/a & b.TVH";

struct FilesSession : RunningSession {
  FilesSession() { fakes.files.files[kOddName] = WriteHubProg(Lines(), 0); }

  /// Drags these over the main window and drops them. Returns whether it would take them.
  bool Drop(const QList<QUrl>& urls) {
    QMimeData data;
    data.setUrls(urls);
    QDragEnterEvent enter({50, 50}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&Main(), &enter);
    QDropEvent drop({50, 50}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&Main(), &drop);
    Settle();
    return enter.isAccepted();
  }
  /// What Load's arrow offers.
  QList<QAction*> Recent() {
    auto* menu = Find<QMenu>("Recent");
    emit menu->aboutToShow();
    return menu->actions();
  }
};

TEST(DroppedFile, IsLoadedAsLoadDoesQuestionIncluded) {
  FilesSession session;
  EXPECT_TRUE(session.Drop({QUrl::fromLocalFile(QString::fromLatin1(kOddName))}));
  EXPECT_EQ(session.Session().file_name, kOddName);
  EXPECT_TRUE(session.fakes.boxes.shown.empty());
  session.Session().Changed = true;
  session.fakes.boxes.setNextAnswer(Answer::Cancel);
  session.Session().file_name = "mine.TVH";
  session.Drop({QUrl::fromLocalFile(QString::fromLatin1(kOddName))});
  ASSERT_EQ(session.fakes.boxes.shown.size(), 1U);
  EXPECT_EQ(session.fakes.boxes.shown[0].title, "Open");
  EXPECT_EQ(session.Session().file_name, "mine.TVH");
}

TEST(DroppedFile, IsOnlyTakenAsOneFileAndWhileTheCommandsAreFree) {
  FilesSession session;
  const QUrl file = QUrl::fromLocalFile(QString::fromLatin1(kOddName));
  EXPECT_FALSE(session.Drop({}));
  EXPECT_FALSE(session.Drop({file, file}));
  EXPECT_FALSE(session.Drop({QUrl(QStringLiteral("https://example.org/a.TVH"))}));
  for (const Hold hold : {Hold::Run, Hold::Transfer}) {
    session.Main().HoldCommands(hold);
    EXPECT_FALSE(session.Drop({file}));
  }
  session.Main().HoldCommands(Hold::None);
  EXPECT_EQ(session.Session().file_name, "untitled");
  EXPECT_TRUE(session.Drop({file}));
}

TEST(RecentFiles, StandAtTheArrowOfLoadAndOpenByAClick) {
  FilesSession session;
  EXPECT_EQ(session.Find<QToolButton>("Load")->popupMode(), QToolButton::MenuButtonPopup);
  ASSERT_EQ(session.Recent().size(), 1);
  EXPECT_EQ(session.Recent()[0]->text(), QStringLiteral("No recent files"));
  EXPECT_FALSE(session.Recent()[0]->isEnabled());
  RememberFile(session.fakes.settings, "/home/op/other.TVH");
  RememberFile(session.fakes.settings, kOddName);
  const QList<QAction*> files = session.Recent();
  ASSERT_EQ(files.size(), 2);
  EXPECT_EQ(files[0]->text(), QStringLiteral("/home/op/a && b.TVH"));
  files[0]->trigger();
  EXPECT_EQ(session.Session().file_name, kOddName);
}

TEST(MainWindow, TheTitleIsMarkedWhileNoFileHoldsTheProgram) {
  FilesSession session;
  const auto title = [&session] { return session.Main().windowTitle(); };
  session.Main().Open(QString::fromLatin1(kOddName));
  EXPECT_EQ(title(), QStringLiteral("Tavlo Composer  V1.29.1 - /home/op/a & b.TVH"));
  session.Find<QComboBox>("LimitList")->setCurrentIndex(2);
  EXPECT_EQ(title(), QStringLiteral("Tavlo Composer  V1.29.1 - /home/op/a & b.TVH*"));
  QTest::keyClick(&session.Main(), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(title(), QStringLiteral("Tavlo Composer  V1.29.1 - /home/op/a & b.TVH"));
  EXPECT_EQ(session.Lines().LimitList, HaltProgram);
  QTest::keyClick(&session.Main(), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(session.Lines().LimitList, ContinueProgram);
  session.fakes.dialogs.next_file_name = kOddName;
  session.Find<QToolButton>("Save")->click();
  EXPECT_EQ(title(), QStringLiteral("Tavlo Composer  V1.29.1 - /home/op/a & b.TVH"));
}

TEST(MainWindow, SaysThatChangesCannotBeKeptForACrash) {
  FilesSession session;
  session.disk.broken = "No space left on device";
  session.Find<QComboBox>("LimitList")->setCurrentIndex(2);
  EXPECT_EQ(session.Session().happened.front().text,
            "Changes are not kept for a crash: No space left on device");
  EXPECT_TRUE(session.fakes.boxes.shown.empty());
}

TEST(MainWindow, PlaceSizeAndColumnsOutlastTheSession) {
  FakeSettings kept;
  QRect place;
  QList<int> columns;
  {
    RunningSession session;
    session.Main().setGeometry(40, 60, 720, 640);
    session.Settle();
    auto* splitter = session.Find<QSplitter>("Columns");
    const QList<int> before = splitter->sizes();
    splitter->setSizes({before[0] - 60, before[1] + 60});
    session.Settle();
    place = session.Main().geometry();
    columns = splitter->sizes();
    EXPECT_EQ(columns[1], before[1] + 60);
    session.Find<QToolButton>("Quit")->click();
    kept = session.fakes.settings;
  }
  WindowSession next;
  next.fakes.settings.values = kept.values;
  next.Begin();
  EXPECT_EQ(next.Main().geometry(), place);
  EXPECT_EQ(next.Find<QSplitter>("Columns")->sizes(), columns);
}

TEST(MainWindow, APlaceThatMakesNoSenseOrIsOnNoScreenIsNotTaken) {
  RunningSession usual;
  for (const char* text :
       {"", "AAAA", "1 2", "1 2 3 4 5 6", "9000 9000 700 500 0", "-900 0 700 500 0", "0 -400 700 500 0",
        "0 0 99999999 500 0", "0 0 700 x 0", "99999999999 0 700 500 0"}) {
    WindowSession session;
    for (const char* key : {"Place", "Columns"}) {
      session.fakes.settings.values[FakeSettings::Path("Tavlo Hub Composer", "Window", key)] = text;
    }
    session.Begin();
    EXPECT_EQ(session.Main().size(), usual.Main().size()) << text;
    const int columns = session.Find<QSplitter>("Columns")->sizes()[0];
    if (std::string_view(text) != "1 2") {
      EXPECT_EQ(columns, usual.Find<QSplitter>("Columns")->sizes()[0]) << text;
    }
    EXPECT_GT(columns, 80) << text;
  }
}

TEST(MainWindow, ComesUpMaximisedIfItWasAndKeepsItsUsualSize) {
  WindowSession session;
  session.fakes.settings.values[FakeSettings::Path("Tavlo Hub Composer", "Window", "Place")] =
      "10 20 700 500 1";
  session.Begin();
  EXPECT_TRUE(session.Main().isMaximized());
  session.Main().showNormal();
  session.Settle();
  EXPECT_EQ(session.Main().size(), QSize(700, 500));
}

}  // namespace
}  // namespace tavlo::testing
