// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <QRadioButton>

#include "editors/dialog_bench.h"

namespace tavlo::testing {
namespace {

/// Where the Tab key leads from the axis, before it comes round again.
QStringList WalkedByTab(DialogBench& d) {
  QStringList walked;
  d.Find<QWidget>("Drive").setFocus();
  for (d.Press(Qt::Key_Tab); d.Focus() != QStringLiteral("Drive"); d.Press(Qt::Key_Tab)) walked << d.Focus();
  return walked;
}

TEST(InputDialogs, ShowTheCaptionsThatTheModelHas) {
  const struct {
    int model;
    const char* option;
    const char* caption;
  } rows[] = {{1, "OptIn(4)", "5/cwjog"},
              {10, "OptIn(0)", "X1/cwjog"},
              {20, "OptIn(128)", "X0/index"},
              {20, "OptIn(4)", "5"}};
  for (const int type : {FS, FSR, SH, WI, II}) {
    for (const auto& row : rows) {
      DialogBench d(type);
      d.program.Axis.DriveModel[0] = static_cast<std::int16_t>(row.model);
      d.While([&] {
        const auto& option = d.Find<QRadioButton>(row.option);
        EXPECT_TRUE(option.isVisible());
        EXPECT_EQ(option.text(), QLatin1String(row.caption)) << type;
      });
    }
  }
}

TEST(InputDialogs, MainInputsAndTheFurtherBlockAreOneGroup) {
  for (const int type : {FS, FSR, SH, WI, II}) {
    DialogBench d(type);
    d.program.Axis.DriveModel[0] = 20;
    d.While([&] {
      d.Click("OptIn(129)");
      EXPECT_TRUE(d.Find<QRadioButton>("OptIn(129)").isChecked());
      EXPECT_FALSE(d.Find<QRadioButton>("OptIn(0)").isChecked());
      d.Click("OptState(1)");
      EXPECT_TRUE(d.Find<QRadioButton>("OptIn(129)").isChecked());
      d.Click("OK");
    });
    EXPECT_EQ(d.program.Prog[0].IONum, 129) << type;
    EXPECT_EQ(d.program.Prog[0].State, 1) << type;
  }
}

TEST(InputDialogs, TheTabKeyReachesTheInputsThoughTheStoredOneCannotBeChosen) {
  for (const int type : {FS, FSR, SH, WI, II}) {
    DialogBench d(type);
    d.program.Axis.DriveModel[0] = 10;
    d.program.Prog[0].IONum = 7;
    d.While([&] {
      EXPECT_TRUE(WalkedByTab(d).contains(QStringLiteral("OptIn(0)"))) << type;
      d.Find<QWidget>("OptIn(0)").setFocus();
      d.Press(Qt::Key_Space);
      d.Press(Qt::Key_Right);
      EXPECT_TRUE(d.Find<QRadioButton>("OptIn(1)").isChecked());
      d.Click("OK");
    });
    EXPECT_EQ(d.program.Prog[0].IONum, 1) << type;
  }
}

TEST(InputDialogs, AreAsWideAsTheirModeNeeds) {
  for (const int type : {WI, II}) {
    DialogBench d(type);
    d.While([&] {
      const int single = d.dialog.width();
      d.Click("OptSum");
      EXPECT_TRUE(d.Find<QWidget>("FrameSum").isVisible());
      EXPECT_TRUE(QTest::qWaitFor([&] { return d.dialog.width() > single; }));
      d.Click("OptSingle");
      EXPECT_FALSE(d.Find<QWidget>("FrameSum").isVisible());
      EXPECT_TRUE(QTest::qWaitFor([&] { return d.dialog.width() == single; }));
    });
  }
}

TEST(InputDialogs, StayOnTheScreenWhenTheyBecomeWider) {
  DialogBench d(WI);
  d.While([&] {
    const QRect room = d.dialog.screen()->availableGeometry();
    d.dialog.move(room.right() - d.dialog.width(), room.bottom() - d.dialog.height());
    const int narrow = d.dialog.width();
    d.Find<QRadioButton>("OptSum").click();
    ASSERT_TRUE(QTest::qWaitFor([&] { return d.dialog.width() > narrow; }));
    const QRect frame = d.dialog.frameGeometry();
    EXPECT_TRUE(frame.left() == room.left() || frame.right() <= room.right());
    EXPECT_TRUE(frame.top() == room.top() || frame.bottom() <= room.bottom());
  });
}

TEST(InputDialogs, EachRowOfSeveralInputsIsAGroupOfItsOwn) {
  for (const int type : {WII, III}) {
    DialogBench d(type);
    d.While([&] {
      d.Click("OptSum1(0)");
      d.Click("OptSum2(1)");
      d.Click("OptAND");
      EXPECT_TRUE(d.Find<QRadioButton>("OptSum1(0)").isChecked());
      EXPECT_TRUE(d.Find<QRadioButton>("OptSum2(1)").isChecked());
      EXPECT_TRUE(d.Find<QRadioButton>("OptSum3(2)").isChecked());
      EXPECT_EQ(d.Find<QLabel>("LogicDesc").text(), QStringLiteral("IN1 hi and IN2 lo"));
      d.Find<QWidget>("OptSum2(1)").setFocus();
      d.Press(Qt::Key_Left);
      EXPECT_EQ(d.Find<QLabel>("LogicDesc").text(), QStringLiteral("IN1 hi and IN2 hi"));
      d.Click("OK");
    });
    EXPECT_EQ(d.program.Prog[0].InMask, 3);
    EXPECT_EQ(d.program.Prog[0].InState, 3);
    EXPECT_TRUE(d.program.Prog[0].WaitAND);
  }
}

TEST(InputDialogs, StayWhenTheyRefuse) {
  const struct {
    int type;
    const char* title;
  } rows[] = {{WII, "Wait Input"}, {III, "If Input"}, {SH, "Error"}};
  for (const auto& row : rows) {
    DialogBench d(row.type);
    d.program.Prog[0].IONum = 7;
    d.program.Prog[0].InMask = 0;
    d.While([&] {
      d.Click("OK");
      EXPECT_TRUE(d.dialog.isVisible());
    });
    EXPECT_FALSE(d.closed_by_itself);
    ASSERT_EQ(d.boxes.shown.size(), 1U);
    EXPECT_EQ(d.boxes.shown[0].title, row.title);
  }
}

}  // namespace
}  // namespace tavlo::testing
