// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/main_keys.h"

#include <QAbstractButton>
#include <QDialog>
#include <QLineEdit>
#include <functional>
#include <set>

#include "model/program_file.h"
#include "session/grid.h"
#include "support/fake_editors.h"
#include "support/whenever.h"
#include "windows/window_session.h"

namespace tavlo::testing {
namespace {

constexpr const char* kPresentFile = "/home/op/cut.TVH";

/// A program with something to save, to find and to take back.
struct KeySession : RunningSession {
  KeySession() {
    for (int line = 0; line < 20; ++line) Lines().Prog[line] = {.Type = FL, .Dist = line + 1};
    ShowProgram(Handlers());
    fakes.files.files[kPresentFile] = WriteHubProg(Lines(), 0);
  }
  void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier, QWidget* at = nullptr) {
    QTest::keyClick(at == nullptr ? static_cast<QWidget*>(&Pane()) : at, key, modifiers);
    Settle();
  }
};

struct KeyCase {
  const char* what;
  Qt::Key key;
  Qt::KeyboardModifiers modifiers;
  /// How often it has been done.
  std::function<int(KeySession&)> done;
};

const std::vector<KeyCase>& Keys() {
  constexpr auto kCtrl = Qt::ControlModifier;
  static const std::vector<KeyCase> keys = {
      {"Load", Qt::Key_O, kCtrl,
       [](KeySession& s) { return static_cast<int>(s.fakes.dialogs.shown.size()); }},
      {"Save, of a program without a file", Qt::Key_S, kCtrl,
       [](KeySession& s) { return static_cast<int>(s.fakes.dialogs.shown.size()); }},
      {"Save with its dialog", Qt::Key_S, kCtrl | Qt::ShiftModifier,
       [](KeySession& s) { return static_cast<int>(s.fakes.dialogs.shown.size()); }},
      {"Print", Qt::Key_P, kCtrl, [](KeySession& s) { return s.printer.asked; }},
      {"Download", Qt::Key_D, kCtrl,
       [](KeySession& s) { return static_cast<int>(s.fakes.boxes.shown.size()); }},
      {"Upload", Qt::Key_U, kCtrl,
       [](KeySession& s) { return static_cast<int>(s.fakes.boxes.shown.size()); }},
      {"Execute", Qt::Key_F5, Qt::NoModifier,
       [](KeySession& s) { return static_cast<int>(s.fakes.boxes.shown.size()); }},
      {"Insert", Qt::Key_Insert, Qt::NoModifier,
       [](KeySession& s) { return s.Session().history.UndoName() == "insert line 1" ? 1 : 0; }},
      {"Delete", Qt::Key_Delete, Qt::NoModifier,
       [](KeySession& s) { return s.Session().history.UndoName() == "delete line 1" ? 1 : 0; }},
      {"Cut", Qt::Key_X, kCtrl, [](KeySession& s) { return 20 - s.Lines().Prog[0].Dist < 19 ? 1 : 0; }},
      {"Copy", Qt::Key_C, kCtrl, [](KeySession& s) { return s.clipboard.kept ? 1 : 0; }},
  };
  return keys;
}

TEST(MainKeys, EachDoesItsCommandOnceHoweverLongItIsHeld) {
  for (const KeyCase& c : Keys()) {
    SCOPED_TRACE(c.what);
    KeySession session;
    session.Press(c.key, c.modifiers);
    const int once = c.done(session);
    EXPECT_GE(once, 1);
    KeySession held;
    QTest::keyPress(&held.Pane(), c.key, c.modifiers);
    for (int i = 0; i < 5; ++i) {
      QKeyEvent repeat(QEvent::KeyPress, c.key, c.modifiers, QString(), true);
      QApplication::sendEvent(&held.Pane(), &repeat);
    }
    QTest::keyRelease(&held.Pane(), c.key, c.modifiers);
    EXPECT_EQ(c.done(held), once);
  }
}

TEST(MainKeys, NothingActsWhileTheCommandsAreHeldButTheHelp) {
  for (const Hold hold : {Hold::Run, Hold::Transfer}) {
    for (const KeyCase& c : Keys()) {
      SCOPED_TRACE(c.what);
      KeySession session;
      session.Main().HoldCommands(hold);
      session.Press(c.key, c.modifiers);
      EXPECT_EQ(c.done(session), 0);
    }
    KeySession session;
    session.Main().HoldCommands(hold);
    session.Press(Qt::Key_F1);
    EXPECT_EQ(session.help.shown.size(), 1U);
  }
}

TEST(MainKeys, NothingActsThroughAModalBox) {
  KeySession session;
  QDialog box(&session.Main());
  box.setModal(true);
  box.show();
  session.Settle();
  for (const KeyCase& c : Keys()) {
    session.Press(c.key, c.modifiers);
    EXPECT_EQ(c.done(session), 0) << c.what;
  }
}

TEST(MainKeys, InTheBoxOfTheLimitTheKeysOfTextsAreItsOwn) {
  KeySession session;
  session.Lines().LimitList = BranchToLine;
  session.Main().LimitChanged();
  auto* box = session.Find<QLineEdit>("LimitBranch");
  box->setFocus();
  box->setText(QStringLiteral("12"));
  const Program before = session.Lines();
  box->selectAll();
  session.Press(Qt::Key_C, Qt::ControlModifier, box);
  EXPECT_FALSE(session.clipboard.kept);
  session.Press(Qt::Key_X, Qt::ControlModifier, box);
  EXPECT_EQ(box->text(), QString());
  session.Press(Qt::Key_V, Qt::ControlModifier, box);
  EXPECT_EQ(box->text(), QStringLiteral("12"));
  session.Press(Qt::Key_Z, Qt::ControlModifier, box);
  EXPECT_EQ(box->text(), QString());
  box->setText(QStringLiteral("34"));
  box->home(false);
  session.Press(Qt::Key_Delete, Qt::NoModifier, box);
  EXPECT_EQ(box->text(), QStringLiteral("4"));
  session.Press(Qt::Key_Insert, Qt::NoModifier, box);
  EXPECT_TRUE(session.Lines().Prog == before.Prog);
}

TEST(MainKeys, KeysOfLinesActOnlyWhereTheRowsHaveTheFocus) {
  KeySession session;
  const Program before = session.Lines();
  auto* list = session.Find<QWidget>("ModelList");
  list->setFocus();
  for (const Qt::Key key : {Qt::Key_Delete, Qt::Key_Insert}) session.Press(key, Qt::NoModifier, list);
  session.Press(Qt::Key_X, Qt::ControlModifier, list);
  EXPECT_TRUE(session.Lines().Prog == before.Prog);
}

TEST(MainKeys, SelectedRowsAreCutPastedAndDeletedAndTakenBack) {
  KeySession session;
  const Program before = session.Lines();
  ProgWindow& pane = session.Pane();
  pane.GoTo(4);
  session.Press(Qt::Key_Down, Qt::ShiftModifier);
  session.Press(Qt::Key_Down, Qt::ShiftModifier);
  session.Press(Qt::Key_X, Qt::ControlModifier);
  EXPECT_EQ(session.Lines().Prog[4].Dist, 8);
  EXPECT_EQ(pane.Selection().Rows(), (LineRange{4, 1}));
  pane.GoTo(10);
  session.Press(Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(session.Lines().Prog[10].Dist, 5);
  EXPECT_EQ(session.Lines().Prog[12].Dist, 7);
  session.Press(Qt::Key_Z, Qt::ControlModifier);
  session.Press(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_TRUE(session.Lines().Prog == before.Prog);
  session.Press(Qt::Key_Y, Qt::ControlModifier);
  EXPECT_EQ(session.Lines().Prog[4].Dist, 8);
  session.Press(Qt::Key_Z, Qt::ControlModifier);
  session.Press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(session.Lines().Prog[4].Dist, 8);
  pane.GoTo(0);
  session.Press(Qt::Key_Down, Qt::ShiftModifier);
  session.fakes.boxes.setNextAnswer(Answer::Cancel);
  session.Press(Qt::Key_Delete);
  EXPECT_EQ(session.fakes.boxes.shown.back().text, "Delete program lines 1 to 2?");
  EXPECT_EQ(pane.Selection().Rows(), (LineRange{0, 2})) << "what was not deleted stays selected";
}

TEST(MainKeys, APasteOfNothingIsToldInPassingAndInNoBox) {
  KeySession session;
  session.Press(Qt::Key_V, Qt::ControlModifier);
  auto* notice = session.Find<QLabel>("LblHeld");
  EXPECT_TRUE(notice->isVisible());
  EXPECT_EQ(notice->text(), QStringLiteral("There are no program lines to paste."));
  EXPECT_TRUE(session.fakes.boxes.shown.empty());
  session.Main().HoldCommands(Hold::Run);
  EXPECT_EQ(notice->text(), QStringLiteral("Lines held: a run"));
  session.Main().Note("in passing");
  EXPECT_EQ(notice->text(), QStringLiteral("Lines held: a run"));
}

TEST(MainKeys, SaveWritesToThePresentFileAndTheButtonProposesIt) {
  KeySession session;
  session.fakes.dialogs.next_file_name = kPresentFile;
  session.Press(Qt::Key_O, Qt::ControlModifier);
  session.Pane().setFocus();
  session.Press(Qt::Key_Insert);
  session.fakes.dialogs.shown.clear();
  session.Press(Qt::Key_S, Qt::ControlModifier);
  EXPECT_TRUE(session.fakes.dialogs.shown.empty());
  EXPECT_EQ(session.fakes.files.files[kPresentFile], WriteHubProg(session.Lines(), 0));
  session.Find<QAbstractButton>("Save")->click();
  ASSERT_EQ(session.fakes.dialogs.shown.size(), 1U);
  EXPECT_EQ(session.fakes.dialogs.shown[0].present, kPresentFile);
}

TEST(MainKeys, GoToLineTakesANumberAndGoesThereOnEnter) {
  struct Case {
    const char* typed;
    Qt::Key key;
    int row;
  };
  for (const Case& c : {Case{"150", Qt::Key_Return, 149}, Case{"150", Qt::Key_Escape, 7},
                        Case{"900", Qt::Key_Return, 199}, Case{"-3", Qt::Key_Return, 0},
                        Case{"12a", Qt::Key_Return, 7}, Case{"99999999999999", Qt::Key_Return, 7}}) {
    KeySession session;
    session.Pane().GoTo(7);
    const auto is_up = [] { return QApplication::activeModalWidget() != nullptr; };
    const Whenever asked(is_up, [&] {
      auto* number = QApplication::activeModalWidget()->findChild<QLineEdit*>(QStringLiteral("LineNumber"));
      EXPECT_EQ(number->text(), QStringLiteral("8"));
      QTest::keyClicks(number, QLatin1String(c.typed));
      QTest::keyClick(number, c.key);
    });
    session.Press(Qt::Key_G, Qt::ControlModifier);
    EXPECT_EQ(session.Pane().CurrentRow(), c.row) << c.typed;
  }
}

TEST(MainKeys, TheToolTipOfEachButtonNamesItsKey) {
  RunningSession session;
  const std::vector<std::pair<const char*, const char*>> tips = {
      {"Load", "Open a program file (Ctrl+O)"},
      {"Save", "Save the program to a file (Ctrl+Shift+S; to its present file: Ctrl+S)"},
      {"PrintButton", "Print a listing of the program (Ctrl+P)"},
      {"Download", "Send the program to the hub and prove the transfer (Ctrl+D)"},
      {"Upload", "Read the program back from the hub (Ctrl+U)"},
      {"execbutton", "Run the program that the hub holds and watch it (F5)"},
      {"Help", "Open the manual (F1)"},
      {"Quit", "Leave Tavlo Composer"}};
  for (const auto& [name, tip] : tips) {
    EXPECT_EQ(session.Find<QAbstractButton>(name)->toolTip(), QLatin1String(tip));
  }
}

TEST(Shortcuts, NoKeyStandsForTwoThings) {
  std::set<int> keys;
  for (const Shortcut& row : kShortcuts) EXPECT_TRUE(keys.insert(row.Keys().toCombined()).second);
}

}  // namespace
}  // namespace tavlo::testing
