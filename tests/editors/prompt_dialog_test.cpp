// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <QClipboard>
#include <QFontMetrics>

#include "editors/dialog_bench.h"
#include "model/instruction.h"
#include "widgets/contrast.h"
#include "widgets/display_picture.h"
#include "widgets/level_gauge.h"

namespace tavlo::testing {
namespace {

struct PromptDialog : DialogBench {
  explicit PromptDialog(int function = DisplayOnly) : DialogBench(MMI) {
    program.Prog[0].SubType = static_cast<std::int16_t>(function);
    program.Prog[0].MenuKey[1] = true;
    program.Prog[0].JogLR = program.Prog[0].JogUD = true;
  }
  void ClickFunction(int function) { Click(("MMIfunction(" + std::to_string(function) + ")").c_str()); }
};

TEST(PromptDialog, IsWalkedByTabWhateverItsFunction) {
  for (int function = GetDistance; function <= Menu; ++function) {
    PromptDialog d(function);
    d.While([&] {
      const std::vector<std::string> wanted = d.TabStops(*FormOf(MMI)->make());
      for (const std::string& name : wanted) {
        EXPECT_EQ(d.Focus().toStdString(), name) << function;
        d.Press(Qt::Key_Tab);
      }
      EXPECT_EQ(d.Focus().toStdString(), wanted.front());
      EXPECT_EQ(wanted.size() > 5, function != DisplayOnly);
    });
  }
}

TEST(PromptDialog, KeepsItsSizeAndItsPlacesWhateverItsFunction) {
  PromptDialog d(GetDistance);
  d.While([&] {
    const QSize size = d.dialog.size();
    const auto places = [&] {
      std::vector<QPoint> found;
      for (const char* name : {"MMItext", "MMIdisplay", "PoolGauge", "MMIfunction(0)", "OK"}) {
        found.push_back(d.Find<QWidget>(name).mapTo(&d.dialog, QPoint(0, 0)));
      }
      return found;
    };
    const std::vector<QPoint> before = places();
    for (int function = GetDistance; function <= Menu; ++function) {
      d.ClickFunction(function);
      d.Find<QWidget>("MMItext").setFocus();
      for (const int letters : {1, 500}) {
        d.Type(QString(letters, QLatin1Char('x')));
        QTest::qWait(0);
        EXPECT_EQ(d.dialog.size(), size) << function;
        EXPECT_EQ(places(), before) << function;
      }
      d.Press(Qt::Key_A, Qt::ControlModifier);
    }
  });
}

TEST(PromptDialog, ItsTextIsAsHighAsTheLinesThatItMayHave) {
  PromptDialog d;
  d.While([&] {
    const auto& box = d.Find<PromptBox>("MMItext");
    const int line = box.fontMetrics().lineSpacing();
    const int four = box.height();
    EXPECT_GE(four, 4 * line);
    for (const int function : {int{GetDistance}, int{GetSpeed}, int{GetCount}}) {
      d.ClickFunction(function);
      QTest::qWait(0);
      EXPECT_EQ(box.height(), four - line);
      EXPECT_TRUE(d.Find<QLabel>("ReservedDataEntry").isVisible());
      EXPECT_EQ(d.Find<QLabel>("ReservedDataEntry").text(), QStringLiteral("Line 4 reserved for data entry"));
    }
    d.ClickFunction(Menu);
    QTest::qWait(0);
    EXPECT_EQ(box.height(), four);
    EXPECT_FALSE(d.Find<QLabel>("ReservedDataEntry").isVisible());
  });
}

TEST(PromptDialog, EnterIsALineFeedOfTheTextAndReplacesNothing) {
  PromptDialog d;
  d.While([&] {
    EXPECT_EQ(d.Selected(), QStringLiteral("Length of the part?"));
    d.Press(Qt::Key_Return);
    d.Type(QStringLiteral("in mm"));
    d.Press(Qt::Key_Enter);
    EXPECT_EQ(d.Text("MMItext"), QStringLiteral("Length of the part?\nin mm\n"));
    d.Press(Qt::Key_Tab);
    EXPECT_EQ(d.Focus(), QStringLiteral("MMIfunction(3)"));
    d.Click("OK");
  });
  EXPECT_EQ(d.program.Prog[0].Text, "Length of the part? in mm               ");
}

TEST(PromptDialog, EnterElsewhereGoesBackToTheText) {
  PromptDialog d(GetDistance);
  d.While([&] {
    d.Find<QWidget>("upperlimit").setFocus();
    d.Press(Qt::Key_Return);
    EXPECT_EQ(d.Focus(), QStringLiteral("MMItext"));
    EXPECT_EQ(d.Selected(), QStringLiteral("Length of the part?"));
  });
  EXPECT_FALSE(d.closed_by_itself);
}

TEST(PromptDialog, ShowsHowTheTextFallsOnTheDisplayAsItIsTyped) {
  PromptDialog d;
  d.While([&] {
    auto& picture = d.Find<DisplayPicture>("MMIdisplay");
    const QImage before = picture.grab().toImage();
    d.Type(QStringLiteral("word1 word2 word3 word4"));
    EXPECT_EQ(picture.accessibleDescription(), QStringLiteral("word1 word2 word3   \nword4"));
    EXPECT_NE(picture.grab().toImage(), before);
    d.Type(QString(90, QLatin1Char('x')));
    EXPECT_TRUE(d.Find<QLabel>("lblLeftOver").text().endsWith(QStringLiteral("characters do not fit")));
  });
}

TEST(PromptDialog, HatchesTheLineThatIsKeptFree) {
  PromptDialog d;
  d.While([&] {
    auto& picture = d.Find<DisplayPicture>("MMIdisplay");
    const QImage four = picture.grab().toImage();
    d.ClickFunction(GetDistance);
    const QImage three = picture.grab().toImage();
    EXPECT_NE(three, four);
    const QRect upper(0, 0, four.width() - 1, four.height() / 2);
    EXPECT_EQ(three.copy(upper), four.copy(upper));
  });
}

TEST(PromptDialog, WhatTheDisplayCannotShowIsAQuestionMarkAndTheCaretStays) {
  PromptDialog d;
  d.While([&] {
    QApplication::clipboard()->setText(QStringLiteral("a\u20acb\r\nc"));
    d.Press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(d.Text("MMItext"), QStringLiteral("a?b\nc"));
    d.Type(QStringLiteral("d"));
    EXPECT_EQ(d.Text("MMItext"), QStringLiteral("a?b\ncd"));
  });
}

TEST(PromptDialog, WhatWouldControlTheDisplayIsPastedAsABlank) {
  PromptDialog d;
  d.While([&] {
    const QString nul(1, QChar(0));
    QApplication::clipboard()->setText(QStringLiteral("a\tb\x1b[2J\r\nc") + nul +
                                       QStringLiteral("d\x7f\x80"));
    d.Press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(d.Text("MMItext"), QStringLiteral("a b [2J\nc d  "));
    d.Click("OK");
  });
  EXPECT_EQ(d.program.Prog[0].Text, "a b [2J             c d  ");
}

TEST(PromptDialog, ALetterOfTheDisplayThatLooksLikeABlankStays) {
  PromptDialog d;
  d.program.Prog[0].Text = "hard\xa0space";
  d.While([&] {
    d.Press(Qt::Key_Right);
    d.Type(QStringLiteral("!"));
    d.Click("OK");
  });
  EXPECT_EQ(d.program.Prog[0].Text, "hard\xa0space!");
}

TEST(PromptDialog, TheCaretGoesToTheEntryThatWasRefused) {
  PromptDialog d(GetCount);
  d.While([&] {
    auto& upper = d.Find<QLineEdit>("upperlimit");
    upper.setFocus();
    d.Type(QStringLiteral("0"));
    d.Click("OK");
    EXPECT_EQ(d.Focus(), QStringLiteral("upperlimit"));
    EXPECT_EQ(d.Selected(), QStringLiteral("0"));
    EXPECT_TRUE(d.boxes.shown.empty());
    d.ClickFunction(Menu);
    d.Click("Check1(1)");
    d.Click("OK");
    EXPECT_EQ(d.Focus(), QStringLiteral("Check1(1)"));
    EXPECT_EQ(d.boxes.shown.size(), 1U);
  });
  EXPECT_FALSE(d.closed_by_itself);
}

TEST(PromptDialog, OpensAnewWithoutAnythingOfItsLastUse) {
  PromptDialog d;
  d.While([&] { d.Type(QStringLiteral("another text that is not kept")); });
  d.While([&] {
    EXPECT_EQ(d.Text("MMItext"), QStringLiteral("Length of the part?"));
    EXPECT_EQ(d.Selected(), QStringLiteral("Length of the part?"));
  });
}

TEST(PromptDialog, TheGaugeSaysHowFullThePoolIsByLengthColourAndWords) {
  const struct {
    std::size_t bytes;
    const char* words;
  } rows[] = {{100, "6 %"}, {1400, "91 %, nearly full"}, {1500, "97 %, full"}};
  std::set<QRgb> colours;
  for (const auto& row : rows) {
    PromptDialog d;
    d.program.Prog[0].Text.clear();
    d.program.Prog[1].Type = MMI;
    d.program.Prog[1].Text = std::string(row.bytes, 'x');
    d.While([&] {
      const auto& gauge = d.Find<LevelGauge>("PoolGauge");
      EXPECT_EQ(gauge.text(), QLatin1String(row.words));
      EXPECT_EQ(gauge.accessibleDescription(), QLatin1String(row.words));
      EXPECT_GE(Contrast(gauge.Colour(), gauge.palette().color(QPalette::Base)), kTextContrast);
      colours.insert(gauge.Colour().rgb());
    });
  }
  EXPECT_EQ(colours.size(), 3U);
}

TEST(PromptDialog, FitsASmallScreenWithLargeText) {
  const QFont before = QApplication::font();
  QFont large = before;
  large.setPointSizeF(16);
  QApplication::setFont(large);
  {
    PromptDialog d(Menu);
    d.While([&] {
      EXPECT_LE(d.dialog.frameGeometry().width(), 1280);
      EXPECT_LE(d.dialog.frameGeometry().height(), 1024);
    });
  }
  QApplication::setFont(before);
}

TEST(CommentDialog, TakesOneLineOfTwentySevenCharacters) {
  DialogBench d(CM);
  d.While([&] {
    QApplication::clipboard()->setText(
        QStringLiteral("say \"\u20ac\"\nand go on until the end of the shift"));
    d.Press(Qt::Key_V, Qt::ControlModifier);
    d.Press(Qt::Key_Return);
    EXPECT_EQ(d.Text("commenttext"), QStringLiteral("say '?' and go on until the"));
    d.Click("OK");
  });
  EXPECT_EQ(d.program.Prog[0].Text, "say '?' and go on until the");
}

TEST(CommentDialog, ShowsAWholeComment) {
  DialogBench d(CM);
  d.While([&] {
    const auto& box = d.Find<QLineEdit>("commenttext");
    const QString widest(27, QLatin1Char('0'));
    EXPECT_GE(box.contentsRect().width(), box.fontMetrics().horizontalAdvance(widest));
  });
}

}  // namespace
}  // namespace tavlo::testing
