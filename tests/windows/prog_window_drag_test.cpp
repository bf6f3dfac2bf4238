// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <QScrollBar>
#include <functional>
#include <optional>
#include <vector>

#include "windows/drag.h"

namespace tavlo::testing {
namespace {

/// The row that bears the mark of the palette's highlight, if one does.
std::optional<int> MarkedRow(WindowSession& session) {
  const QImage image = session.Painted();
  std::optional<int> marked;
  for (int line = 0; line < kLines; ++line) {
    const QRect desc = session.Pane().Geometry().Desc(line);
    if (image.pixelColor(desc.center().x(), desc.top() + 1) !=
        session.Pane().palette().color(QPalette::Highlight))
      continue;
    EXPECT_FALSE(marked) << "rows " << *marked << " and " << line;
    marked = line;
  }
  return marked;
}

/// A session whose line 3 is a Go To, with the current row elsewhere.
struct DragSession : RunningSession {
  DragSession() {
    Lines().Prog[2].Type = GT;
    Pane().SetCurrentRow(5);
  }
  /// Copies of the Go To, in any line.
  [[nodiscard]] int Copies() {
    int count = -1;
    for (const Instruction& line : Lines().Prog) count += line.Type == GT ? 1 : 0;
    return count;
  }
  [[nodiscard]] QScrollBar& Bar() { return *Find<QScrollBar>("ScrollProg"); }
  [[nodiscard]] int ViewHeight() { return Pane().parentWidget()->height(); }
};

TEST(ProgWindowDrag, ADragOntoAnEmptyLineCopiesWithoutAQuestion) {
  RunningSession session;
  session.Lines().Prog[2].Type = GT;
  session.Lines().Prog[2].LineNum = 4;
  Drag(session, 2, IconPoint(session, 7));
  EXPECT_TRUE(session.fakes.boxes.shown.empty());
  EXPECT_EQ(session.Lines().Prog[7].Type, GT);
  EXPECT_EQ(session.Session().shown.rows[7].desc, "Go to line 5");
  EXPECT_TRUE(session.Session().Changed);
  EXPECT_EQ(session.Pane().CurrentRow(), 7);
}

TEST(ProgWindowDrag, ADragOntoALineInUseAsksFirst) {
  RunningSession session;
  session.Lines().Prog[2].Type = GT;
  session.Lines().Prog[7].Type = WT;
  session.fakes.boxes.setNextAnswer(Answer::Cancel);
  Drag(session, 2, IconPoint(session, 7));
  EXPECT_EQ(session.Lines().Prog[7].Type, WT);
  Drag(session, 2, IconPoint(session, 7));
  EXPECT_EQ(session.Lines().Prog[7].Type, GT);
  ASSERT_EQ(session.fakes.boxes.shown.size(), 2u);
  EXPECT_EQ(session.fakes.boxes.shown[0], (ShownBox{"Do you want to copy program line 3 to line 8?",
                                                    "Copy Program Line", Buttons::OKCancel, Icon::None}));
}

TEST(ProgWindowDrag, TheRowThatIsMarkedIsTheRowThatIsWritten) {
  DragSession session;
  EXPECT_EQ(MarkedRow(session), 5);
  QTest::mousePress(&session.Pane(), Qt::LeftButton, Qt::NoModifier, IconPoint(session, 2));
  EXPECT_EQ(MarkedRow(session), 5) << "nothing is dragged yet";
  for (const int line : {7, 3, 9}) {
    MoveTo(session, IconPoint(session, line));
    EXPECT_EQ(MarkedRow(session), line);
    EXPECT_EQ(session.Pane().CurrentRow(), 5);
  }
  Release(session, IconPoint(session, 9));
  EXPECT_EQ(session.Lines().Prog[9].Type, GT);
  EXPECT_EQ(session.Copies(), 1);
  EXPECT_EQ(session.Pane().CurrentRow(), 9);
  EXPECT_EQ(MarkedRow(session), 9);
}

TEST(ProgWindowDrag, RowsThatScrollAwayUnderTheIconMoveTheMarkWithThem) {
  DragSession session;
  const int pitch = session.Pane().Geometry().pitch;
  DragTo(session, 2, IconPoint(session, 7));
  const QPoint held = session.Pane().mapToGlobal(IconPoint(session, 7));
  session.Bar().setValue(3 * pitch);
  EXPECT_EQ(MarkedRow(session), 10);
  Release(session, session.Pane().mapFromGlobal(held));
  EXPECT_EQ(session.Lines().Prog[10].Type, GT);
  EXPECT_EQ(session.Copies(), 1);
}

TEST(ProgWindowDrag, CountsOnlyWhereItIsReleasedOverRowsThatCanBeSeen) {
  DragSession session;
  const int pitch = session.Pane().Geometry().pitch;
  session.Bar().setValue(pitch / 2);
  const int first = session.Bar().value();
  const int last = first + session.ViewHeight() - 1;
  const int x = IconPoint(session, 0).x();
  struct Case {
    const char* name;
    QPoint at;
    bool counts;
  };
  for (const Case& c :
       {Case{"the last point of the view", {x, last}, true}, Case{"below the view", {x, last + 1}, false},
        Case{"far below it", {x, last + 40 * pitch}, false}, Case{"above the view", {x, first - 1}, false},
        Case{"left of it", {-1, pitch * 8}, false},
        Case{"right of it", {session.Pane().width(), pitch * 8}, false},
        Case{"its right edge", {session.Pane().width() - 1, pitch * 8}, true}}) {
    session.Bar().setValue(first);
    const QPoint held = session.Pane().mapToGlobal(c.at);
    DragTo(session, 2, c.at);
    EXPECT_EQ(MarkedRow(session).has_value(), c.counts) << c.name;
    Release(session, session.Pane().mapFromGlobal(held));
    EXPECT_EQ(session.Copies(), c.counts ? 1 : 0) << c.name;
    EXPECT_EQ(session.Session().Changed, c.counts) << c.name;
    EXPECT_EQ(session.Pane().CurrentRow() == 5, !c.counts) << c.name;
    for (int line = 3; line < kLines; ++line) session.Lines().Prog[line].Type = NO;
    session.Session().Changed = false;
    session.Pane().SetCurrentRow(5);
  }
}

TEST(ProgWindowDrag, HeldAtAnEdgeOrBeyondItScrollsTheRowsUntilTheirEnd) {
  DragSession session;
  const int pitch = session.Pane().Geometry().pitch;
  const int x = IconPoint(session, 0).x();
  DragTo(session, 2, {x, session.ViewHeight() - 2});
  EXPECT_TRUE(QTest::qWaitFor([&] { return session.Bar().value() >= 2 * pitch; }));
  // Back in the middle it stands still, whatever time passes.
  const auto in_view = [&](int y) { return QPoint(x, session.Bar().value() + y); };
  MoveTo(session, in_view(session.ViewHeight() / 2));
  const int rested = session.Bar().value();
  QTest::qWait(200);
  EXPECT_EQ(session.Bar().value(), rested);
  MoveTo(session, in_view(session.ViewHeight() + 300));
  EXPECT_TRUE(QTest::qWaitFor([&] { return session.Bar().value() == session.Bar().maximum(); }, 60000));
  MoveTo(session, in_view(session.ViewHeight() - 2));
  EXPECT_EQ(MarkedRow(session), kLines - 1);
  MoveTo(session, in_view(-50));
  EXPECT_TRUE(QTest::qWaitFor([&] { return session.Bar().value() < session.Bar().maximum() - pitch; }));
  const QPoint end = in_view(session.ViewHeight() / 2);
  const int line = session.Pane().Geometry().RowAt(end.y());
  Release(session, end);
  EXPECT_EQ(session.Lines().Prog[line].Type, GT);
  const int after = session.Bar().value();
  QTest::qWait(200);
  EXPECT_EQ(session.Bar().value(), after) << "it scrolls on by itself";
}

TEST(ProgWindowDrag, GivenUpInAnyWayItCopiesNothingAndLeavesTheCurrentRowWhereItWas) {
  struct Case {
    const char* name;
    std::function<void(DragSession&)> give_up;
  };
  const std::vector<Case> cases = {
      {"Escape", [](DragSession& s) { QTest::keyClick(&s.Pane(), Qt::Key_Escape); }},
      {"another button",
       [](DragSession& s) {
         QTest::mousePress(&s.Pane(), Qt::RightButton, Qt::NoModifier, IconPoint(s, 9));
       }},
      {"a release that went elsewhere", [](DragSession& s) { MoveTo(s, IconPoint(s, 9), Qt::NoButton); }},
      {"a transfer that begins",
       [](DragSession& s) {
         s.Main().HoldCommands(Hold::Transfer);
         s.Main().HoldCommands(Hold::None);
       }},
      {"a modal window",
       [](DragSession& s) {
         QWidget box(&s.Main(), Qt::Dialog);
         box.setWindowModality(Qt::ApplicationModal);
         box.show();
         s.Settle();
       }},
      {"the window is hidden", [](DragSession& s) {
         s.Main().hide();
         s.Main().show();
       }}};
  for (const Case& c : cases) {
    DragSession session;
    DragTo(session, 2, IconPoint(session, 9));
    EXPECT_EQ(MarkedRow(session), 9) << c.name;
    c.give_up(session);
    EXPECT_EQ(session.Pane().CurrentRow(), 5) << c.name;
    EXPECT_NE(MarkedRow(session), 9) << c.name;
    EXPECT_NE(session.Pane().cursor().shape(), Qt::DragCopyCursor) << c.name;
    Release(session, IconPoint(session, 9));
    EXPECT_EQ(session.Copies(), 0) << c.name;
    EXPECT_FALSE(session.Session().Changed) << c.name;
  }
}

TEST(ProgWindowDrag, KeysDoNothingWhileAnIconIsHeld) {
  DragSession session;
  DragTo(session, 2, IconPoint(session, 9));
  for (const Qt::Key key : {Qt::Key_Down, Qt::Key_End, Qt::Key_Return}) QTest::keyClick(&session.Pane(), key);
  EXPECT_EQ(session.Pane().CurrentRow(), 5);
  EXPECT_EQ(session.Bar().value(), 0);
  EXPECT_EQ(session.Session().CurLine, 0);
  Release(session, IconPoint(session, 9));
  EXPECT_EQ(session.Lines().Prog[9].Type, GT);
}

TEST(ProgWindowDrag, AnIconThatIsPressedAndLetGoBesideItLeavesTheCurrentRow) {
  DragSession session;
  QTest::mousePress(&session.Pane(), Qt::LeftButton, Qt::NoModifier, IconPoint(session, 3));
  Release(session, session.Pane().Geometry().Icon(3).topRight() + QPoint(2, 5));
  EXPECT_EQ(session.Pane().CurrentRow(), 5);
}

}  // namespace
}  // namespace tavlo::testing
