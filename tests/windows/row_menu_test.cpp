// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/row_menu.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <set>

#include "commands/lines.h"
#include "session/grid.h"
#include "support/fake_editors.h"
#include "windows/window_session.h"

namespace tavlo::testing {
namespace {

/// Line 3 goes to line 8, so do a menu on line 5 and the branch of a limit; line 12 is a move.
struct MenuSession : RunningSession {
  MenuSession() {
    Handlers().editors = &editors;
    Lines().Prog[2] = {.Type = GT, .LineNum = 7};
    Lines().Prog[4] = {.Type = MMI, .Text = "A & B", .SubType = Menu};
    Lines().Prog[4].MenuKey[1] = Lines().Prog[4].MenuKey[2] = true;
    Lines().Prog[4].MenuLine[1] = 7;
    Lines().Prog[4].MenuLine[2] = 11;
    Lines().Prog[11] = {.Type = FL, .Dist = 100};
    Lines().LimitList = BranchToLine;
    Lines().LimitBranch = 8;
    ShowProgram(Handlers());
  }
  ~MenuSession() { Handlers().editors = nullptr; }
  MenuSession(const MenuSession&) = delete;
  MenuSession& operator=(const MenuSession&) = delete;

  QMenu* RightClick(int line) {
    const QPoint at = Pane().Geometry().Desc(line).center();
    QContextMenuEvent event(QContextMenuEvent::Mouse, at, Pane().mapToGlobal(at));
    QApplication::sendEvent(&Pane(), &event);
    return OpenMenu();
  }
  QMenu* OpenMenu() { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); }
  /// The entry whose caption begins so, in the menu or one below it.
  static QAction* Entry(QMenu* menu, const QString& beginning) {
    for (QAction* action : menu->actions()) {
      if (action->text().remove(QLatin1Char('&')).startsWith(beginning)) return action;
    }
    for (QAction* action : menu->actions()) {
      if (action->menu() == nullptr) continue;
      if (QAction* found = Entry(action->menu(), beginning)) return found;
    }
    return nullptr;
  }
  void Choose(QMenu* menu, const QString& beginning) {
    QAction* entry = Entry(menu, beginning);
    ASSERT_NE(entry, nullptr) << beginning.toStdString();
    EXPECT_TRUE(entry->isEnabled()) << beginning.toStdString();
    menu->close();
    entry->trigger();
    Settle();
  }

  FakeEditors editors;
};

std::vector<QString> Captions(QMenu* menu) {
  std::vector<QString> captions;
  for (QAction* action : menu->actions()) {
    if (!action->isSeparator()) captions.push_back(action->text());
  }
  return captions;
}

TEST(RowMenu, OffersWhatCanBeDoneToTheRowEachWithItsKey) {
  MenuSession session;
  QMenu* menu = session.RightClick(11);
  ASSERT_NE(menu, nullptr);
  EXPECT_EQ(session.Pane().CurrentRow(), 11);
  struct Case {
    const char* entry;
    const char* key;
    bool enabled;
  };
  for (const Case& c : {Case{"Edit line 12", "Shift+Return", true}, Case{"Insert line 12", "Ins", true},
                        Case{"Delete line 12", "Del", true}, Case{"Cut line 12", "Ctrl+X", true},
                        Case{"Copy line 12", "Ctrl+C", true}, Case{"Paste at line 12", "Ctrl+V", true},
                        Case{"Go to its target", "", false}, Case{"Who comes here", "", true},
                        Case{"Profile of this move", "", true}, Case{"Undo", "Ctrl+Z", false},
                        Case{"Redo", "Ctrl+Shift+Z", false}, Case{"Go to line ...", "Ctrl+G", true},
                        Case{"Find ...", "Ctrl+F", true}, Case{"Find next", "F3", true}}) {
    QAction* entry = MenuSession::Entry(menu, QLatin1String(c.entry));
    ASSERT_NE(entry, nullptr) << c.entry;
    EXPECT_EQ(entry->shortcut().toString(), QLatin1String(c.key)) << c.entry;
    EXPECT_EQ(entry->isEnabled(), c.enabled) << c.entry;
  }
  menu->close();
}

TEST(RowMenu, MnemonicsDoNotClash) {
  MenuSession session;
  QMenu* menu = session.RightClick(11);
  for (QMenu* part : {menu, MenuSession::Entry(menu, QStringLiteral("Edit"))->menu()}) {
    if (part == nullptr) continue;
    std::set<QChar> letters;
    for (const QString& caption : Captions(part)) {
      const qsizetype at = caption.indexOf(QLatin1Char('&'));
      ASSERT_GE(at, 0) << caption.toStdString();
      EXPECT_TRUE(letters.insert(caption.at(at + 1).toLower()).second) << caption.toStdString();
    }
  }
  menu->close();
}

TEST(RowMenu, LeadsToTheTargetsAndToWhoComesHere) {
  MenuSession session;
  session.Choose(session.RightClick(2), QStringLiteral("Line 8:"));
  EXPECT_EQ(session.Pane().CurrentRow(), 7);
  QMenu* targets = MenuSession::Entry(session.RightClick(4), QStringLiteral("Go to its target"))->menu();
  EXPECT_EQ(targets->actions().size(), 2);
  session.OpenMenu()->close();
  QMenu* menu = session.RightClick(7);
  QMenu* comers = MenuSession::Entry(menu, QStringLiteral("Who comes here"))->menu();
  const std::vector<QString> captions = Captions(comers);
  ASSERT_EQ(captions.size(), 3U);
  EXPECT_EQ(captions[0], QStringLiteral("Line 3: Go to line 8"));
  EXPECT_TRUE(captions[1].startsWith(QStringLiteral("Line 5: ")));
  EXPECT_EQ(captions[2], QStringLiteral("A limit switch, at any line"));
  session.Choose(menu, QStringLiteral("Line 3:"));
  EXPECT_EQ(session.Pane().CurrentRow(), 2);
}

TEST(RowMenu, ActsOnTheSelectedRowsIfItIsOpenedOnOneOfThem) {
  MenuSession session;
  session.Pane().GoTo(2);
  QTest::keyClick(&session.Pane(), Qt::Key_Down, Qt::ShiftModifier);
  QTest::keyClick(&session.Pane(), Qt::Key_Down, Qt::ShiftModifier);
  session.Choose(session.RightClick(3), QStringLiteral("Cut lines 3 to 5"));
  EXPECT_EQ(session.Session().history.UndoName(), "cut lines 3 to 5");
  QMenu* menu = session.RightClick(2);
  EXPECT_NE(MenuSession::Entry(menu, QStringLiteral("Undo cut lines 3 to 5")), nullptr);
  session.Choose(menu, QStringLiteral("Undo cut lines 3 to 5"));
  EXPECT_EQ(session.Lines().Prog[2].Type, GT);
  menu = session.RightClick(150);
  EXPECT_NE(MenuSession::Entry(menu, QStringLiteral("Cut line 151")), nullptr);
  menu->close();
}

TEST(RowMenu, EditsTheLineAndOpensTheProfileOfAMove) {
  MenuSession session;
  session.Choose(session.RightClick(11), QStringLiteral("Edit line 12"));
  session.Choose(session.RightClick(11), QStringLiteral("Profile of this move"));
  EXPECT_EQ(session.editors.log, (std::vector<std::string>{"edit 11 of kind 0", "edit 11 of kind 0"}));
  EXPECT_EQ(session.editors.came_up_with, DialogPage::Analysis);
  QMenu* menu = session.RightClick(2);
  EXPECT_FALSE(MenuSession::Entry(menu, QStringLiteral("Profile of this move"))->isEnabled());
  menu->close();
}

TEST(RowMenu, ComesUpByItsKeysAtTheCurrentRow) {
  for (const auto& [key, modifiers] : {std::pair(Qt::Key_Menu, Qt::KeyboardModifiers()),
                                       std::pair(Qt::Key_F10, Qt::KeyboardModifiers(Qt::ShiftModifier))}) {
    MenuSession session;
    session.Pane().GoTo(120);
    QTest::keyClick(&session.Pane(), key, modifiers);
    ASSERT_NE(session.OpenMenu(), nullptr);
    EXPECT_NE(MenuSession::Entry(session.OpenMenu(), QStringLiteral("Edit line 121")), nullptr);
    session.OpenMenu()->close();
  }
}

TEST(RowMenu, ChangesNothingWhileTheLinesAreHeld) {
  MenuSession session;
  session.Main().HoldCommands(Hold::Run);
  QMenu* menu = session.RightClick(2);
  for (const char* entry :
       {"Edit line 3", "Insert", "Delete", "Cut", "Copy", "Paste", "Profile", "Undo", "Redo"}) {
    EXPECT_FALSE(MenuSession::Entry(menu, QLatin1String(entry))->isEnabled()) << entry;
  }
  menu->close();
  session.Main().HoldCommands(Hold::None);
}

}  // namespace
}  // namespace tavlo::testing
