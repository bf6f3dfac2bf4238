// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <QAccessible>
#include <QScrollBar>

#include "support/fake_editors.h"
#include "widgets/contrast.h"
#include "windows/drag.h"

namespace tavlo::testing {
namespace {

QPoint TextPoint(WindowSession& session, int line) {
  return session.Pane().Geometry().Desc(line).center();
}

LineRange Selected(WindowSession& session) {
  return session.Pane().Selection().Rows();
}

TEST(SelectedRows, ShiftAndAKeyReachToWhereTheKeyAloneWouldGo) {
  RunningSession session;
  ProgWindow& pane = session.Pane();
  const int page = pane.parentWidget()->height() / pane.Geometry().pitch - 1;
  struct Case {
    Qt::Key key;
    LineRange rows;
  };
  const std::vector<Case> cases = {{Qt::Key_Down, {50, 2}},
                                   {Qt::Key_Up, {49, 2}},
                                   {Qt::Key_PageDown, {50, page + 1}},
                                   {Qt::Key_PageUp, {50 - page, page + 1}},
                                   {Qt::Key_Home, {0, 51}},
                                   {Qt::Key_End, {50, 150}}};
  for (const Case& c : cases) {
    pane.GoTo(50);
    QTest::keyClick(&pane, c.key, Qt::ShiftModifier);
    EXPECT_EQ(Selected(session), c.rows) << c.key;
    const QRect current = pane.Geometry().Row(pane.CurrentRow());
    EXPECT_TRUE(pane.visibleRegion().contains(current.adjusted(0, 0, -1, -1))) << c.key;
    const int back = pane.CurrentRow() == 0 ? 1 : pane.CurrentRow() - 1;
    QTest::keyClick(&pane, pane.CurrentRow() == 0 ? Qt::Key_Down : Qt::Key_Up);
    EXPECT_EQ(Selected(session), (LineRange{back, 1})) << "a plain key ends it";
  }
}

TEST(SelectedRows, TheMouseSelectsWithShiftAndByDrawingOverTheTexts) {
  RunningSession session;
  ProgWindow& pane = session.Pane();
  QTest::mouseClick(&pane, Qt::LeftButton, Qt::NoModifier, TextPoint(session, 4));
  QTest::mouseClick(&pane, Qt::LeftButton, Qt::ShiftModifier, TextPoint(session, 8));
  EXPECT_EQ(Selected(session), (LineRange{4, 5}));
  QTest::mouseClick(&pane, Qt::LeftButton, Qt::ShiftModifier, TextPoint(session, 2));
  EXPECT_EQ(Selected(session), (LineRange{2, 3}));
  QTest::mouseClick(&pane, Qt::LeftButton, Qt::NoModifier, TextPoint(session, 3));
  EXPECT_EQ(Selected(session), (LineRange{3, 1})) << "a plain click ends it";

  QTest::mousePress(&pane, Qt::LeftButton, Qt::NoModifier, TextPoint(session, 6));
  MoveTo(session, TextPoint(session, 6) + QPoint(2, 2));
  EXPECT_EQ(Selected(session), (LineRange{6, 1}));
  MoveTo(session, TextPoint(session, 10));
  EXPECT_EQ(Selected(session), (LineRange{6, 5}));
  MoveTo(session, TextPoint(session, 5));
  EXPECT_EQ(Selected(session), (LineRange{5, 2}));
  Release(session, TextPoint(session, 5));
  MoveTo(session, TextPoint(session, 12), Qt::NoButton);
  EXPECT_EQ(Selected(session), (LineRange{5, 2})) << "it stays when the button is let go";
}

TEST(SelectedRows, HeldAtTheEdgeTheyComeByThemselves) {
  RunningSession session;
  ProgWindow& pane = session.Pane();
  auto* bar = session.Find<QScrollBar>("ScrollProg");
  QTest::mousePress(&pane, Qt::LeftButton, Qt::NoModifier, TextPoint(session, 3));
  const QPoint edge(TextPoint(session, 3).x(), pane.parentWidget()->height() - 2);
  MoveTo(session, edge);
  EXPECT_TRUE(QTest::qWaitFor([&] { return bar->value() >= 10 * pane.Geometry().pitch; }, 10000));
  const int seen_last = pane.Geometry().RowAt(bar->value() + edge.y());
  EXPECT_GE(Selected(session).count, seen_last - 3);
  Release(session, pane.mapFromParent(edge));
  const int rests_at = bar->value();
  QTest::qWait(120);
  EXPECT_EQ(bar->value(), rests_at);
}

TEST(SelectedRows, IconsArePickedEditedAndCopiedAsEver) {
  RunningSession session;
  FakeEditors editors;
  session.Handlers().editors = &editors;
  session.Lines().Prog[2].Type = RT;
  QTest::mouseClick(&session.Pane(), Qt::LeftButton, Qt::NoModifier, TextPoint(session, 4));
  QTest::mouseClick(&session.Pane(), Qt::LeftButton, Qt::ShiftModifier, IconPoint(session, 8));
  EXPECT_EQ(editors.log, std::vector<std::string>{"edit 8 of kind 11"});
  EXPECT_EQ(Selected(session), (LineRange{8, 1}));
  QTest::keyClick(&session.Pane(), Qt::Key_Down, Qt::ShiftModifier);
  Drag(session, 2, IconPoint(session, 6));
  EXPECT_EQ(session.Lines().Prog[6].Type, RT);
  EXPECT_EQ(Selected(session), (LineRange{6, 1}));
  session.Handlers().editors = nullptr;
}

TEST(SelectedRows, AreToldFromOthersByTheirNumbersAndABarInEveryStateAndPalette) {
  const QPalette light = QApplication::palette();
  QPalette dark = light;
  dark.setColor(QPalette::Window, QColor(40, 40, 40));
  dark.setColor(QPalette::WindowText, Qt::white);
  for (const QPalette& palette : {light, dark}) {
    QApplication::setPalette(palette);
    RunningSession session;
    ProgWindow& pane = session.Pane();
    auto& rows = session.Session().shown.rows;
    rows[3].state = RowState::Executing;
    rows[3].label = LabelColour::Red;
    rows[4].state = RowState::LimitTarget;
    rows[4].label = LabelColour::Blue;
    session.Main().AllRowsChanged();
    const auto at = [&](const QImage& image, int line) {
      const QRect label = pane.Geometry().Label(line);
      const int bar = pane.Geometry().DescLeft() - 2;
      EXPECT_EQ(image.pixelColor(bar, label.center().y()),
                image.pixelColor(label.left() + 1, label.top() + 1));
      return image.pixelColor(bar, label.center().y());
    };
    const auto state_at = [&](const QImage& image, int line) {
      return image.pixelColor(pane.Geometry().Desc(line).right() - 6,
                              pane.Geometry().Desc(line).center().y());
    };
    const QImage before = session.Painted();
    pane.GoTo(2);
    QTest::mouseClick(&pane, Qt::LeftButton, Qt::ShiftModifier, TextPoint(session, 5));
    const QImage after = session.Painted();
    for (int line = 1; line <= 6; ++line) {
      const bool in = line >= 2 && line <= 5;
      EXPECT_EQ(Contrast(at(after, line), palette.color(QPalette::Window)) >= kSymbolContrast, in) << line;
      EXPECT_EQ(state_at(after, line), state_at(before, line)) << line;
    }
  }
  QApplication::setPalette(light);
}

TEST(SelectedRows, AreToldToAScreenReaderAsTheyComeAndGo) {
  RunningSession session;
  ProgWindow& pane = session.Pane();
  pane.GoTo(4);
  QAccessibleInterface* list = QAccessible::queryAccessibleInterface(&pane);
  EXPECT_TRUE(list->state().multiSelectable);
  EXPECT_TRUE(list->child(4)->state().selected);
  using Told = std::pair<int, QAccessible::Event>;
  std::vector<Told> told;
  QObject::connect(&pane, &ProgWindow::SpeechChanged,
                   [&told](int line, QAccessible::Event what) { told.emplace_back(line, what); });
  QTest::keyClick(&pane, Qt::Key_Down, Qt::ShiftModifier);
  QTest::keyClick(&pane, Qt::Key_Down, Qt::ShiftModifier);
  for (int line = 4; line <= 6; ++line) EXPECT_TRUE(list->child(line)->state().selected) << line;
  EXPECT_FALSE(list->child(7)->state().selected);
  EXPECT_TRUE(list->child(6)->state().focused);
  QTest::keyClick(&pane, Qt::Key_Up);
  EXPECT_EQ(told, (std::vector<Told>{{5, QAccessible::SelectionAdd},
                                     {6, QAccessible::SelectionAdd},
                                     {4, QAccessible::SelectionRemove},
                                     {6, QAccessible::SelectionRemove}}));
}

}  // namespace
}  // namespace tavlo::testing
