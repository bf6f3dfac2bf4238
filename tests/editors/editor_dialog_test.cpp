// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "editors/editor_dialog.h"

#include <QAbstractButton>
#include <QRadioButton>
#include <QTabWidget>
#include <map>

#include "editors/dialog_bench.h"
#include "model/instruction.h"

namespace tavlo::testing {
namespace {

/// One type for each dialog.
std::vector<int> TypesWithDialogs() {
  std::map<std::string_view, int> types;
  for (int type = 0; type < kTypes; ++type) {
    if (const FormRow* row = FormOf(type)) types[row->name] = type;
  }
  std::vector<int> found;
  for (const auto& [name, type] : types) found.push_back(type);
  found.push_back(kTuning);
  return found;
}

/// Those in which something can be typed at once.
std::vector<int> TypesThatBeginWithAText() {
  std::vector<int> types = TypesWithDialogs();
  std::erase_if(
      types, [](int type) { return std::holds_alternative<ListBox*>(RowOf(type).make()->First().control); });
  return types;
}

TEST(EveryDialog, HasItsFormsControlsAndNoOthers) {
  for (const int type : TypesWithDialogs()) {
    const FormRow& row = RowOf(type);
    SCOPED_TRACE(row.name);
    DialogBench d(type);
    EXPECT_EQ(d.dialog.objectName().toStdString(), row.name);
    EXPECT_EQ(d.dialog.windowTitle().toStdString(), row.title);
    d.ExpectControlsOf(*row.make());
  }
}

TEST(EveryDialog, HasNoMnemonicTwice) {
  for (const int type : TypesWithDialogs()) {
    DialogBench d(type);
    SCOPED_TRACE(RowOf(type).name);
    d.ExpectNoMnemonicTwice();
  }
}

TEST(EveryDialog, IsWalkedByTabInTheOrderOfItsForm) {
  for (const int type : TypesWithDialogs()) {
    SCOPED_TRACE(RowOf(type).name);
    DialogBench d(type);
    d.While([&] { d.ExpectWalkedByTab(*RowOf(type).make()); });
  }
}

TEST(EveryDialog, OpensItsHelpAndStaysAsItIs) {
  for (const int type : TypesWithDialogs()) {
    DialogBench d(type);
    const std::string document(RowOf(type).help);
    EXPECT_FALSE(d.While([&] {
      d.Find<QPushButton>("Help").click();
      d.Press(Qt::Key_F1);
      d.Press(Qt::Key_H, Qt::AltModifier);
      EXPECT_TRUE(QTest::qWaitFor([&] { return d.help.shown.size() == 3; }));
    })) << document;
    EXPECT_FALSE(d.closed_by_itself) << document;
    EXPECT_EQ(d.help.shown, std::vector<std::string>({document, document, document}));
  }
}

TEST(EveryDialog, BeginsAtItsFirstEntryWithItsTextSelected) {
  for (const int type : TypesThatBeginWithAText()) {
    DialogBench d(type);
    for (int time = 0; time < 2; ++time) {
      d.While([&] {
        EXPECT_EQ(d.Focus().toStdString(), RowOf(type).make()->First().name);
        EXPECT_FALSE(d.Selected().isEmpty());
        EXPECT_EQ(d.Selected(), d.Text(d.Focus().toLatin1()));
        d.Press(Qt::Key_Tab);
      });
    }
  }
}

TEST(EveryDialog, BeginsAtItsNextControlWhereAVariableTakesThePlaceOfTheFirst) {
  DialogBench d(FL);
  d.program.Prog[0].DistIsMMI = true;
  d.While([&] {
    EXPECT_EQ(d.Focus(), QStringLiteral("getmmidst"));
    EXPECT_FALSE(d.Find<QLineEdit>("disttext").hasSelectedText());
    d.Press(Qt::Key_Return);
    EXPECT_EQ(d.Focus(), QStringLiteral("getmmidst"));
  });
}

TEST(EveryDialog, EnterTakesTheEntryAndNeverCloses) {
  for (const int type : TypesThatBeginWithAText()) {
    for (const Qt::Key enter : {Qt::Key_Return, Qt::Key_Enter}) {
      DialogBench d(type);
      const Instruction before = d.program.Prog[0];
      d.While([&] {
        // No entry leaves this as it is: it is no number, and no text keeps a double quote.
        d.Type(QStringLiteral("none\""));
        d.Press(enter);
        EXPECT_NE(d.Text(RowOf(type).make()->First().name.c_str()), QStringLiteral("none\""));
        // From a button too: it has the Space key.
        d.Find<QWidget>("OK").setFocus();
        d.Press(enter);
        d.Find<QWidget>("Cancel").setFocus();
        d.Press(enter);
      });
      EXPECT_FALSE(d.closed_by_itself) << RowOf(type).name;
      EXPECT_EQ(d.program.Prog[0], before);
    }
  }
}

TEST(EveryDialog, IsLeftWithoutAChangeByCancelByEscapeAndByItsFrame) {
  for (const int type : TypesThatBeginWithAText()) {
    const std::function<void(DialogBench&)> ways[] = {[](DialogBench& d) { d.Click("Cancel"); },
                                                      [](DialogBench& d) { d.Press(Qt::Key_Escape); },
                                                      [](DialogBench& d) { d.dialog.close(); }};
    for (const auto& way : ways) {
      DialogBench d(type);
      const Instruction before = d.program.Prog[0];
      const bool written = d.While([&] {
        d.Type(QStringLiteral("7"));
        d.Press(Qt::Key_Tab);
        way(d);
      });
      EXPECT_TRUE(d.closed_by_itself);
      EXPECT_FALSE(written);
      EXPECT_EQ(d.program.Prog[0], before) << RowOf(type).name;
    }
  }
}

TEST(EveryDialog, IsConfirmedByMouseBySpaceAndByItsLetter) {
  for (const int type : TypesThatBeginWithAText()) {
    const std::function<void(DialogBench&)> ways[] = {
        [](DialogBench& d) { d.Click("OK"); },
        [](DialogBench& d) {
          d.Find<QWidget>("OK").setFocus();
          d.Press(Qt::Key_Space);
        },
        [](DialogBench& d) {
          d.Press(Qt::Key_O, Qt::AltModifier);
          EXPECT_TRUE(QTest::qWaitFor([&] { return !d.dialog.isVisible(); }));
        }};
    for (const auto& way : ways) {
      DialogBench d(type);
      const Instruction before = d.program.Prog[0];
      const bool written = d.While([&] {
        d.Type(QStringLiteral("7"));
        way(d);
      });
      EXPECT_TRUE(written);
      if (d.FirstEntry() == nullptr) continue;
      EXPECT_NE(d.program.Prog[0], before) << "the box that was typed in counts: " << RowOf(type).name;
    }
  }
}

TEST(EveryDialog, IsNotTouchedByAPressThatActsAfterItWasLeft) {
  for (const char* button : {"OK", "Cancel"}) {
    DialogBench d(WT);
    d.While([&] {
      d.Type(QStringLiteral("7"));
      d.Find<QPushButton>(button).animateClick();
      d.Press(Qt::Key_Escape);
    });
    // What stands there now is another line's.
    d.program.Prog[0].Type = GT;
    const Instruction after = d.program.Prog[0];
    EXPECT_TRUE(QTest::qWaitFor([&] { return !d.Find<QPushButton>(button).isDown(); }));
    EXPECT_EQ(d.program.Prog[0], after) << button;
  }
}

TEST(EveryDialog, StaysUnderABoxWhateverAScreenReaderPresses) {
  DialogBench d(WT);
  d.While([&] {
    QDialog box(&d.dialog);
    box.setModal(true);
    box.show();
    for (const char* button : {"OK", "Cancel"}) {
      d.Find<QPushButton>(button).click();
      EXPECT_TRUE(d.dialog.isVisible()) << button;
    }
    box.close();
  });
  EXPECT_FALSE(d.closed_by_itself);
}

TEST(FeedLengthDialog, EnterInASpeedBoxLeavesItOpenWithTheQuantisedSpeedShown) {
  DialogBench d(FL);
  d.While([&] {
    d.Find<QLineEdit>("SpeedText").setFocus();
    d.Type(QStringLiteral("1.2345"));
    d.Press(Qt::Key_Return);
    EXPECT_EQ(d.Text("SpeedText"), QStringLiteral("1.2325"));
    EXPECT_EQ(d.Find<QSlider>("SpeedBar").value(), 49);
    EXPECT_EQ(d.Focus(), QStringLiteral("disttext"));
    EXPECT_EQ(d.Find<QLineEdit>("disttext").selectedText(), QStringLiteral("40000"));
  });
  EXPECT_FALSE(d.closed_by_itself);
}

TEST(FeedLengthDialog, ABoxIsCleanedWhenItIsLeftAndNotWhenItsWindowMerelyStepsBack) {
  DialogBench d(FL);
  d.While([&] {
    d.Type(QStringLiteral("0"));
    QFocusEvent back(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
    QApplication::sendEvent(&d.Find<QLineEdit>("disttext"), &back);
    EXPECT_EQ(d.Text("disttext"), QStringLiteral("0"));
    d.Press(Qt::Key_Tab);
    EXPECT_EQ(d.Text("disttext"), QStringLiteral("1"));
  });
}

TEST(FeedLengthDialog, ASliderIsMovedByItsKeysAndByItsMouse) {
  DialogBench d(FL);
  d.While([&] {
    auto& slider = d.Find<QSlider>("SpeedBar");
    slider.setFocus();
    d.Press(Qt::Key_Right);
    EXPECT_EQ(d.Text("SpeedText"), QStringLiteral("2.525"));
    slider.setSliderDown(true);
    slider.setSliderPosition(40);
    EXPECT_EQ(d.Text("SpeedText"), QStringLiteral("1.000"));
    slider.setSliderDown(false);
    d.Click("OK");
  });
  EXPECT_EQ(d.program.Prog[0].Speed, 1.0F);
}

TEST(FeedLengthDialog, AVariableTakesThePlaceOfItsEntry) {
  DialogBench d(FLCS);
  d.While([&] {
    EXPECT_FALSE(d.Find<QWidget>("spdname").isVisible());
    d.Click("GetMMISpd");
    EXPECT_TRUE(d.Find<QWidget>("spdname").isVisible());
    EXPECT_FALSE(d.Find<QWidget>("SpeedText").isEnabled());
    EXPECT_FALSE(d.Find<QWidget>("SpeedBar").isEnabled());
    auto& names = d.Find<QComboBox>("spdname");
    EXPECT_EQ(names.count(), 50);
    names.setFocus();
    d.Press(Qt::Key_Down);
    EXPECT_EQ(names.currentIndex(), 1);
    d.Click("OK");
  });
  EXPECT_TRUE(d.program.Prog[0].SpeedIsMMI);
  EXPECT_EQ(d.program.Prog[0].SpeedVar, 1);
}

TEST(FeedLengthDialog, KeepsItsSizeWhateverItShows) {
  DialogBench d(FL);
  d.While([&] {
    const QSize size = d.dialog.size();
    for (const char* box : {"ChkChangeSpeed", "getmmidst", "GetMMISpd", "getmmidst2", "getmmispd2"}) {
      d.Click(box);
      QTest::qWait(0);
      EXPECT_EQ(d.dialog.size(), size) << box;
    }
  });
}

TEST(FeedLengthDialog, ItsEntriesStandInOneColumn) {
  DialogBench d(FLCS);
  d.While([&] {
    const auto left = [&](const char* name) {
      return d.Find<QWidget>(name).mapTo(&d.dialog, QPoint(0, 0)).x();
    };
    for (const char* box : {"SpeedText", "AccelText", "DecelText", "Dist2Text", "speed2text"}) {
      EXPECT_EQ(left(box), left("disttext")) << box;
    }
    for (const char* box : {"getmmidst2", "getmmispd2"}) EXPECT_EQ(left(box), left("getmmidst")) << box;
  });
}

TEST(GoToDialog, ItsNumberIsSpunByButtonsAndArrowKeys) {
  DialogBench d(GT);
  d.While([&] {
    EXPECT_EQ(d.Text("linenum"), QStringLiteral("42"));
    d.Press(Qt::Key_Up);
    EXPECT_EQ(d.Text("linenum"), QStringLiteral("43"));
    d.Press(Qt::Key_Down);
    d.Press(Qt::Key_Down);
    EXPECT_EQ(d.Text("linenum"), QStringLiteral("41"));
    const auto buttons = d.Find<QWidget>("Spin1").findChildren<QAbstractButton*>();
    ASSERT_EQ(buttons.size(), 2);
    QTest::mouseClick(buttons[0], Qt::LeftButton);
    EXPECT_EQ(d.Text("linenum"), QStringLiteral("42"));
    QTest::mouseClick(buttons[1], Qt::LeftButton);
    EXPECT_EQ(d.Text("linenum"), QStringLiteral("41"));
    d.Click("OK");
  });
  EXPECT_EQ(d.program.Prog[0].LineNum, 40);
}

TEST(EditorDialog, ComesUpWithItsAnalysisIfAskedAndOthersWithTheirEntries) {
  for (const int type : {FL, FLSO, WT}) {
    DialogBench d(type);
    int page = -1;
    bool graph = false;
    const bool written =
        d.Acting([&] { return d.dialog.Edit(d.program, 0, DialogPage::Analysis); },
                 [&] {
                   if (auto* tabs = d.dialog.findChild<QTabWidget*>(QStringLiteral("SSTab1")))
                     page = tabs->currentIndex();
                   if (auto* picture = d.dialog.findChild<ProfileGraph*>()) graph = picture->isVisible();
                 });
    EXPECT_FALSE(written);
    EXPECT_EQ(page, type == WT ? -1 : 1);
    EXPECT_EQ(graph, type != WT);
  }
}

}  // namespace
}  // namespace tavlo::testing
