// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "qt/gui/gui_services.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <functional>

#include "qt/gui/gui_clipboard.h"
#include "qt/gui/shown_text.h"

namespace tavlo {
namespace {

/// Looks at the box that comes up and presses one of its buttons.
void WhenABoxComes(const std::function<void(QMessageBox&)>& look, QMessageBox::StandardButton press) {
  QTimer::singleShot(0, qApp, [look, press] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    ASSERT_NE(box, nullptr);
    look(*box);
    box->button(press)->click();
  });
}

TEST(GuiMessageBoxes, ShowTextTitleButtonsAndIconExactly) {
  struct Case {
    Buttons buttons;
    Icon icon;
    QMessageBox::StandardButtons shown_buttons;
    QMessageBox::Icon shown_icon;
    QMessageBox::StandardButton press;
    Answer answer;
  };
  const std::vector<Case> cases = {
      {Buttons::OK, Icon::None, QMessageBox::Ok, QMessageBox::NoIcon, QMessageBox::Ok, Answer::OK},
      {Buttons::OKCancel, Icon::Question, QMessageBox::Ok | QMessageBox::Cancel, QMessageBox::Question,
       QMessageBox::Cancel, Answer::Cancel},
      {Buttons::OKCancel, Icon::Stop, QMessageBox::Ok | QMessageBox::Cancel, QMessageBox::Critical,
       QMessageBox::Ok, Answer::OK},
      {Buttons::YesNo, Icon::Exclamation, QMessageBox::Yes | QMessageBox::No, QMessageBox::Warning,
       QMessageBox::Yes, Answer::Yes},
      {Buttons::YesNo, Icon::None, QMessageBox::Yes | QMessageBox::No, QMessageBox::NoIcon, QMessageBox::No,
       Answer::No},
  };
  GuiMessageBoxes boxes;
  for (const Case& row : cases) {
    WhenABoxComes(
        [&row](QMessageBox& box) {
          EXPECT_EQ(box.windowTitle(), QStringLiteral("Title"));
          EXPECT_EQ(box.text(), QStringLiteral("Is <b>this</b> & that\nright?"));
          EXPECT_EQ(box.textFormat(), Qt::PlainText);
          EXPECT_EQ(box.standardButtons(), row.shown_buttons);
          EXPECT_EQ(box.icon(), row.shown_icon);
        },
        row.press);
    EXPECT_EQ(boxes.MsgBox({"Is <b>this</b> & that\nright?", "Title", row.buttons, row.icon}), row.answer);
  }
  EXPECT_EQ(boxes.Shown().size(), cases.size());
}

TEST(GuiMessageBoxes, HaveTheAnswerThatDoesNoHarmAsTheirDefaultAndForEscape) {
  struct Case {
    Buttons buttons;
    QString button;
  };
  GuiMessageBoxes boxes;
  for (const Case& row :
       {Case{Buttons::OK, QStringLiteral("OK")}, Case{Buttons::OKCancel, QStringLiteral("Cancel")},
        Case{Buttons::YesNo, QStringLiteral("No")}, Case{Buttons::OKWithoutPort, QStringLiteral("OK")},
        Case{Buttons::RestoreDiscard, QStringLiteral("Restore")}}) {
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape}) {
      QTimer::singleShot(0, qApp, [&row, key] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        EXPECT_EQ(box->defaultButton()->text().remove(QLatin1Char('&')), row.button);
        QTest::keyClick(box, key);
      });
      EXPECT_EQ(boxes.MsgBox({.text = "x", .buttons = row.buttons}), HarmlessAnswer(row.buttons));
    }
  }
}

/// A question that comes by itself, and what the operator does while it stands.
Answer AskedByItself(const std::function<void(QMessageBox&)>& meanwhile) {
  GuiMessageBoxes boxes;
  QTimer::singleShot(0, qApp, [&meanwhile] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    ASSERT_NE(box, nullptr);
    ASSERT_TRUE(QTest::qWaitFor([box] { return box->isActiveWindow(); }));
    meanwhile(*box);
  });
  return boxes.MsgBox({.text = "Reset?", .buttons = Buttons::YesNo, .by_itself = true});
}

/// Longer than the moments in which it takes no key.
constexpr int kWhenItHears = 850;

void PressYes(QMessageBox& box) {
  box.button(QMessageBox::Yes)->click();
}

TEST(ABoxThatComesByItself, TakesNoKeyInItsFirstMoments) {
  const Answer answer = AskedByItself([](QMessageBox& box) {
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space, Qt::Key_Escape, Qt::Key_Y,
                              Qt::Key_N, Qt::Key_Tab, Qt::Key_Left, Qt::Key_7}) {
      QTest::keyClick(QApplication::focusWidget(), key);
      EXPECT_TRUE(box.isVisible()) << key;
      EXPECT_EQ(QApplication::focusWidget(), box.button(QMessageBox::No)) << key;
    }
    for (const Qt::Key key : {Qt::Key_Y, Qt::Key_N}) {
      QTest::keyClick(QApplication::focusWidget(), key, Qt::AltModifier);
      QTest::qWait(150);
      EXPECT_TRUE(box.isVisible()) << key;
    }
    PressYes(box);
  });
  EXPECT_EQ(answer, Answer::Yes) << "the mouse works at once";
}

TEST(ABoxThatComesByItself, TakesTheFirstKeyThatIsPressedSevenTenthsOfASecondLater) {
  const Answer answer = AskedByItself([](QMessageBox& box) {
    QTest::qWait(kWhenItHears);
    QTest::keyClick(&box, Qt::Key_Return);
    EXPECT_FALSE(box.isVisible());
  });
  EXPECT_EQ(answer, Answer::No);
}

TEST(ABoxThatComesByItself, WaitsForAPauseInWhatIsTyped) {
  const Answer answer = AskedByItself([](QMessageBox& box) {
    QElapsedTimer typing;
    QElapsedTimer since;
    typing.start();
    do {
      QTest::keyClick(&box, Qt::Key_Return);
      EXPECT_TRUE(box.isVisible());
      since.start();
      QTest::qWait(20);
      // Where the machine itself makes the pause there is nothing to see.
    } while (box.isVisible() && since.elapsed() < 200 && typing.elapsed() < 2 * kWhenItHears);
    PressYes(box);
  });
  EXPECT_EQ(answer, Answer::Yes);
}

TEST(ABoxThatComesByItself, IsNotAnsweredByTheKeysOfTheOperatorTerminal) {
  const Answer answer = AskedByItself([](QMessageBox& box) {
    QTest::qWait(kWhenItHears);
    for (const Qt::Key key : {Qt::Key_Y, Qt::Key_N, Qt::Key_7, Qt::Key_Plus, Qt::Key_Left, Qt::Key_Right,
                              Qt::Key_Up, Qt::Key_Down}) {
      QTest::keyClick(QApplication::focusWidget(), key);
      QTest::qWait(150);
      EXPECT_TRUE(box.isVisible()) << key;
      EXPECT_EQ(QApplication::focusWidget(), box.button(QMessageBox::No)) << key;
    }
    QTest::keyClick(&box, Qt::Key_Y, Qt::AltModifier);
  });
  EXPECT_EQ(answer, Answer::Yes) << "its letters work with Alt";
}

TEST(ABoxThatComesByItself, IsNotAnsweredByAKeyThatIsHeld) {
  const Answer answer = AskedByItself([](QMessageBox& box) {
    QTest::qWait(kWhenItHears);
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"), true);
    QApplication::sendEvent(QApplication::focusWidget(), &held);
    EXPECT_TRUE(box.isVisible());
    PressYes(box);
  });
  EXPECT_EQ(answer, Answer::Yes);
}

TEST(ABoxThatComesByItself, IsTheOnlyOneThatIsHardOfHearing) {
  GuiMessageBoxes boxes;
  QTimer::singleShot(0, qApp, [] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Y); });
  EXPECT_EQ(boxes.MsgBox({.text = "Clear?", .buttons = Buttons::YesNo}), Answer::Yes);
}

TEST(GuiMessageBoxes, OfAPortThatDoesNotOpenOfferToGoOnWithoutOne) {
  GuiMessageBoxes boxes;
  QTimer::singleShot(0, qApp, [] {
    for (QAbstractButton* button : QApplication::activeModalWidget()->findChildren<QAbstractButton*>()) {
      if (button->text() == QStringLiteral("&Without a port")) button->click();
    }
  });
  EXPECT_EQ(boxes.MsgBox({.text = "x", .buttons = Buttons::OKWithoutPort}), Answer::WithoutPort);
}

TEST(GuiMessageBoxes, AnEmptyTitleStaysEmptyOnTheScreen) {
  GuiMessageBoxes boxes;
  WhenABoxComes([](QMessageBox& box) { EXPECT_EQ(box.windowTitle().trimmed(), QString()); }, QMessageBox::Ok);
  EXPECT_EQ(boxes.MsgBox({.text = "x", .title = ""}), Answer::OK);
  EXPECT_EQ(boxes.Shown().back().title, "");
}

TEST(GuiMessageBoxes, EscapeAnswersTheCautiousWay) {
  GuiMessageBoxes boxes;
  const auto escape = [] {
    QTimer::singleShot(0, qApp, [] { static_cast<QDialog*>(QApplication::activeModalWidget())->reject(); });
  };
  escape();
  EXPECT_EQ(boxes.MsgBox({.text = "x", .title = "t", .buttons = Buttons::OKCancel}), Answer::Cancel);
  escape();
  EXPECT_EQ(boxes.MsgBox({.text = "x", .title = "t", .buttons = Buttons::YesNo}), Answer::No);
  escape();
  EXPECT_EQ(boxes.MsgBox({.text = "x", .title = "t"}), Answer::OK);
}

TEST(GuiMessageBoxes, AnswersSetBeforehandAreGivenInTurnWithoutABox) {
  GuiMessageBoxes boxes;
  boxes.setNextAnswer(Answer::No);
  boxes.setNextAnswer(Answer::Cancel);
  EXPECT_EQ(boxes.MsgBox({.text = "one", .title = "a", .buttons = Buttons::YesNo, .icon = Icon::Stop}),
            Answer::No);
  EXPECT_EQ(boxes.MsgBox({.text = "two", .title = "b", .buttons = Buttons::OKCancel}), Answer::Cancel);
  ASSERT_EQ(boxes.Shown().size(), 2u);
  EXPECT_EQ(boxes.Shown()[0], (Box{"one", "a", Buttons::YesNo, Icon::Stop}));
}

TEST(GuiMessageBoxes, OneBoxMayStandOnAnother) {
  GuiMessageBoxes boxes;
  QTimer::singleShot(0, qApp, [&] {
    auto* outer = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    WhenABoxComes([](QMessageBox& box) { EXPECT_EQ(box.text(), QStringLiteral("inner")); }, QMessageBox::Ok);
    boxes.MsgBox({.text = "inner", .title = "t"});
    outer->button(QMessageBox::Yes)->click();
  });
  EXPECT_EQ(boxes.MsgBox({.text = "outer", .title = "t", .buttons = Buttons::YesNo}), Answer::Yes);
}

TEST(GuiFileDialogs, OfferTheFiltersInTheirOrderAndGiveNothingWhenCancelled) {
  GuiFileDialogs dialogs;
  bool looked = false;
  QTimer::singleShot(0, qApp, [&] {
    auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
    ASSERT_NE(dialog, nullptr);
    looked = true;
    EXPECT_EQ(dialog->nameFilters(), (QStringList{QStringLiteral("Tavlo Hub Files (*.TVH)"),
                                                  QStringLiteral("Oskel Composer Files (*.OSK)")}));
    EXPECT_EQ(dialog->acceptMode(), QFileDialog::AcceptOpen);
    EXPECT_EQ(dialog->defaultSuffix(), QStringLiteral("tvh"));
    dialog->reject();
  });
  EXPECT_EQ(dialogs.OpenFileName({{{"Tavlo Hub Files", "*.TVH"}, {"Oskel Composer Files", "*.OSK"}}, "tvh"}),
            std::nullopt);
  EXPECT_TRUE(looked);
}

TEST(GuiFileDialogs, ProposeThePresentFileInItsFolderAsLongAsThatExists) {
  QTemporaryDir folder;
  for (const QString& name : {folder.filePath(QStringLiteral("cut.TVH")), QStringLiteral("/gone/cut.TVH")}) {
    GuiFileDialogs dialogs;
    QStringList proposed;
    QTimer::singleShot(0, qApp, [&] {
      auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
      ASSERT_NE(dialog, nullptr);
      proposed = dialog->selectedFiles();
      dialog->reject();
    });
    const FileDialogSetup setup = {
        .filters = {{"Tavlo Files", "*.TVH"}}, .default_extension = "tvh", .present = ToPath(name)};
    EXPECT_EQ(dialogs.SaveFileName(setup), std::nullopt);
    ASSERT_EQ(proposed.size(), 1);
    EXPECT_TRUE(proposed[0].endsWith(QStringLiteral("/cut.TVH"))) << proposed[0].toStdString();
    EXPECT_EQ(proposed[0] == name, !name.startsWith(QStringLiteral("/gone")));
  }
}

TEST(GuiClipboard, CarriesTheLinesForThisProgramAndTextForAnyOther) {
  GuiClipboard clipboard;
  QGuiApplication::clipboard()->setText(QStringLiteral("Dear Sir"));
  EXPECT_EQ(clipboard.Kept(), std::nullopt);
  const std::string kept("any \0 \xFF bytes\n", 15);
  clipboard.Put(kept, "12  Sch\xC3\xB6n\n");
  EXPECT_EQ(clipboard.Kept(), kept);
  EXPECT_EQ(QGuiApplication::clipboard()->text(), QString::fromUtf8("12  Sch\xC3\xB6n\n"));
  QGuiApplication::clipboard()->clear();
  EXPECT_EQ(clipboard.Kept(), std::nullopt);
}

TEST(GuiFileDialogs, APathSetBeforehandIsGivenWithoutADialog) {
  GuiFileDialogs dialogs;
  dialogs.setNextFileName("/a/b.TVH");
  dialogs.setNextFileName(std::nullopt);
  EXPECT_EQ(dialogs.SaveFileName({}), "/a/b.TVH");
  EXPECT_EQ(dialogs.SaveFileName({}), std::nullopt);
}

TEST(ShownText, ReadsProgramsAsLatin1AndMessagesByWhatTheyHold) {
  EXPECT_EQ(FromText("caf\xe9"), QString::fromUtf8("caf\u00e9"));
  EXPECT_EQ(ToText(QString::fromUtf8("caf\u00e9")), "caf\xe9");
  EXPECT_EQ(FromMessage("axis caf\xe9"), QString::fromUtf8("axis caf\u00e9"));
  EXPECT_EQ(FromMessage("/caf\xc3\xa9.TVH"), QString::fromUtf8("/caf\u00e9.TVH"));
  EXPECT_EQ(FromPath(ToPath(QString::fromUtf8("/caf\u00e9.TVH"))), QString::fromUtf8("/caf\u00e9.TVH"));
}

}  // namespace
}  // namespace tavlo
