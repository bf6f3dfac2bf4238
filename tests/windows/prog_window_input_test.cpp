// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <QAccessible>
#include <QAccessibleActionInterface>
#include <QHelpEvent>
#include <QScrollBar>
#include <QToolTip>

#include "session/grid.h"
#include "support/fake_editors.h"
#include "windows/drag.h"

namespace tavlo::testing {
namespace {

TEST(ProgWindowInput, KeysWalkTheRowsAndBringThemIntoView) {
  RunningSession session;
  ProgWindow& pane = session.Pane();
  auto* bar = session.Find<QScrollBar>("ScrollProg");
  const int page = pane.parentWidget()->height() / pane.Geometry().pitch - 1;
  struct Case {
    Qt::Key key;
    int row;
  };
  const std::vector<Case> cases = {{Qt::Key_Down, 1},
                                   {Qt::Key_Down, 2},
                                   {Qt::Key_Up, 1},
                                   {Qt::Key_Home, 0},
                                   {Qt::Key_Up, 0},
                                   {Qt::Key_PageDown, page},
                                   {Qt::Key_PageDown, 2 * page},
                                   {Qt::Key_PageUp, page},
                                   {Qt::Key_End, 199},
                                   {Qt::Key_Down, 199}};
  for (const Case& step : cases) {
    QTest::keyClick(&pane, step.key);
    EXPECT_EQ(pane.CurrentRow(), step.row);
    EXPECT_GE(pane.Geometry().Top(step.row), bar->value());
    EXPECT_LE(pane.Geometry().Top(step.row) + pane.Geometry().pitch,
              bar->value() + pane.parentWidget()->height());
  }
}

TEST(ProgWindowInput, TheCurrentRowIsFramedAndMoreSoWithTheFocus) {
  RunningSession session;
  ProgWindow& pane = session.Pane();
  pane.SetCurrentRow(2);
  const QRect desc = pane.Geometry().Desc(2);
  EXPECT_TRUE(pane.hasFocus());
  EXPECT_EQ(session.Painted().pixelColor(desc.center().x(), desc.top() + 1),
            pane.palette().color(QPalette::Highlight));
  session.Find<QWidget>("ModelList")->setFocus();
  EXPECT_EQ(session.Painted().pixelColor(desc.center().x(), desc.top() + 1), QColor(Qt::white));
  EXPECT_NE(session.Painted().pixelColor(desc.center().x(), desc.top()), QColor(Qt::white));
}

TEST(ProgWindowInput, AClickWithoutEditorsOnlyMakesTheRowCurrent) {
  RunningSession session;
  QTest::mouseClick(&session.Pane(), Qt::LeftButton, Qt::NoModifier, IconPoint(session, 6));
  EXPECT_EQ(session.Pane().CurrentRow(), 6);
  EXPECT_EQ(session.Session().CurLine, 6);
  EXPECT_EQ(session.Session().shown.rows[6].state, RowState::Normal);
  EXPECT_TRUE(session.fakes.boxes.shown.empty());
  QTest::mouseClick(&session.Pane(), Qt::LeftButton, Qt::NoModifier,
                    session.Pane().Geometry().Desc(9).center());
  EXPECT_EQ(session.Pane().CurrentRow(), 9);
  EXPECT_EQ(session.Session().CurLine, 6);
}

TEST(ProgWindowInput, ClickAndEnterOpenThePickerAndWithShiftTheEditor) {
  RunningSession session;
  FakeEditors editors;
  session.Handlers().editors = &editors;
  ProgWindow& pane = session.Pane();
  QTest::mouseClick(&pane, Qt::LeftButton, Qt::NoModifier, IconPoint(session, 4));
  QTest::mouseClick(&pane, Qt::LeftButton, Qt::ShiftModifier, IconPoint(session, 5));
  QTest::keyClick(&pane, Qt::Key_Down);
  QTest::keyClick(&pane, Qt::Key_Return);
  QTest::keyClick(&pane, Qt::Key_Enter, Qt::ShiftModifier);
  EXPECT_EQ(editors.log,
            (std::vector<std::string>{"pick for 4", "edit 5 of kind 11", "pick for 6", "edit 6 of kind 11"}));
}

TEST(ProgWindowInput, AClickThatEndsBesideTheIconDoesNothing) {
  RunningSession session;
  ProgWindow& pane = session.Pane();
  QTest::mousePress(&pane, Qt::LeftButton, Qt::NoModifier, IconPoint(session, 3));
  QTest::mouseRelease(&pane, Qt::LeftButton, Qt::NoModifier, pane.Geometry().Desc(3).center());
  EXPECT_EQ(session.Session().CurLine, 0);
}

TEST(ProgWindowInput, TheToolTipOfAnIconNamesItsLine) {
  RunningSession session;
  session.Session().shown.rows[1].desc = "short";
  session.Session().shown.rows[2].desc = std::string(300, 'm');
  ProgWindow& pane = session.Pane();
  const auto tip = [&pane](QPoint point) {
    QToolTip::hideText();
    QHelpEvent help(QEvent::ToolTip, point, pane.mapToGlobal(point));
    QApplication::sendEvent(&pane, &help);
    return QToolTip::text();
  };
  EXPECT_EQ(tip(IconPoint(session, 0)), QStringLiteral("Change program line 1"));
  EXPECT_EQ(tip(IconPoint(session, 11)), QStringLiteral("Change program line 12"));
  EXPECT_EQ(tip(pane.Geometry().Desc(2).center()), QString(300, QLatin1Char('m')));
}

TEST(ProgWindowInput, EveryRowIsAThingOfItsOwnForAScreenReader) {
  RunningSession session;
  session.Lines().Prog[2].Type = GT;
  session.Lines().Prog[2].LineNum = 0;
  ShowAllDescs(session.Handlers().grid());
  ShowLine(session.Handlers().grid(), 2);
  QAccessibleInterface* pane = QAccessible::queryAccessibleInterface(&session.Pane());
  ASSERT_NE(pane, nullptr);
  EXPECT_EQ(pane->text(QAccessible::Name), QStringLiteral("Program lines"));
  EXPECT_EQ(pane->childCount(), kLines);
  EXPECT_EQ(pane->child(kLines), nullptr);
  QAccessibleInterface* row = pane->child(2);
  EXPECT_EQ(row->text(QAccessible::Name), QStringLiteral("Line 3: Go to line 1, executing"));
  EXPECT_EQ(pane->child(3)->text(QAccessible::Name), QStringLiteral("Line 4: empty"));
  EXPECT_EQ(row->role(), QAccessible::ListItem);
  EXPECT_EQ(row->parent(), pane);
  EXPECT_EQ(pane->indexOfChild(row), 2);
  EXPECT_EQ(pane->childAt(row->rect().center().x(), row->rect().center().y()), row);
  row->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_EQ(session.Session().CurLine, 2);
  EXPECT_TRUE(row->state().focused);
  EXPECT_FALSE(row->state().offscreen);
  EXPECT_TRUE(pane->child(199)->state().offscreen);
}

}  // namespace
}  // namespace tavlo::testing
