// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "qt/paper/paper_pages.h"

#include <gtest/gtest.h>

#include <QFontMetricsF>
#include <QStringList>

#include "programs.h"
#include "text/shown_listing.h"

namespace tavlo {
namespace {

/// A4 less its margins, and a narrow slip.
const QSizeF kSheet(500.0 * kPoint, 720.0 * kPoint);
const QSizeF kSlip(150.0 * kPoint, 720.0 * kPoint);
const QSizeF kLabel(60.0 * kPoint, 40.0 * kPoint);

/// Of what can be seen: blanks at the end of a row may hang over.
qreal WidthOf(const PaperText& text) {
  QString seen = text.text;
  while (seen.endsWith(QLatin1Char(' '))) seen.chop(1);
  return QFontMetricsF(PaperFont(text.style)).horizontalAdvance(seen);
}
qreal HeightOf(const PaperText& text) {
  return QFontMetricsF(PaperFont(text.style)).lineSpacing();
}

PaperDocument DocumentOfBlocks(std::vector<PaperBlock> blocks) {
  return {.title = "Title", .file_name = "a.TVH", .blocks = std::move(blocks)};
}

QStringList TextsOf(const PaperPage& page) {
  QStringList texts;
  for (const PaperText& text : page.texts) texts << text.text;
  return texts;
}

/// A block of so many rows, which name it.
PaperBlock Block(int name, int rows) {
  PaperBlock block;
  for (int row = 0; row < rows; ++row) block.push_back({.text = std::to_string(name)});
  return block;
}

void ExpectWithin(const std::vector<PaperPage>& pages, const QSizeF& size) {
  for (const PaperPage& page : pages) {
    for (const PaperText& text : page.texts) {
      EXPECT_GE(text.at.x(), 0) << text.text.toStdString();
      EXPECT_LE(text.at.x() + WidthOf(text), size.width() + 1) << text.text.toStdString();
      EXPECT_LE(text.at.y() + HeightOf(text), size.height() + 1) << text.text.toStdString();
    }
  }
}

TEST(PaperPages, AnEmptyDocumentIsOneEmptyPage) {
  const auto pages = LayOut(DocumentOfBlocks({}), kSheet);
  ASSERT_EQ(pages.size(), 1U);
  EXPECT_TRUE(pages[0].texts.empty());
}

TEST(PaperPages, RowsStandBelowEachOtherInTheirOrder) {
  const auto pages = LayOut(DocumentOfBlocks({Block(1, 2), Block(2, 1)}), kSheet);
  ASSERT_EQ(pages.size(), 1U);
  const auto& texts = pages[0].texts;
  ASSERT_EQ(texts.size(), 3U);
  EXPECT_EQ(texts[0].at.y(), 0);
  EXPECT_GE(texts[1].at.y(), texts[0].at.y() + HeightOf(texts[0]));
  EXPECT_GE(texts[2].at.y(), texts[1].at.y() + HeightOf(texts[1]));
}

TEST(PaperPages, ABlockIsNeverDividedBetweenPages) {
  for (int rows = 1; rows <= 7; ++rows) {
    std::vector<PaperBlock> blocks;
    for (int name = 0; name < 60; ++name) blocks.push_back(Block(name, rows));
    const auto pages = LayOut(DocumentOfBlocks(blocks), kSheet);
    ExpectWithin(pages, kSheet);
    int name = 0;
    for (const PaperPage& page : pages) {
      const QStringList texts = TextsOf(page);
      ASSERT_EQ(texts.size() % rows, 0) << "a page has a part of a block";
      for (qsizetype i = 0; i < texts.size(); i += rows, ++name) {
        for (int row = 0; row < rows; ++row) EXPECT_EQ(texts[i + row], QString::number(name));
      }
    }
    EXPECT_EQ(name, 60);
    EXPECT_GT(pages.size(), rows > 1 ? 1U : 0U);
  }
}

TEST(PaperPages, ABlockHigherThanAPageGoesOnOnTheNext) {
  const auto pages = LayOut(DocumentOfBlocks({Block(1, 300), Block(2, 1)}), kSheet);
  ExpectWithin(pages, kSheet);
  EXPECT_GT(pages.size(), 3U);
  qsizetype rows = 0;
  for (const PaperPage& page : pages) {
    EXPECT_FALSE(page.texts.empty());
    rows += TextsOf(page).size();
  }
  EXPECT_EQ(rows, 301);
}

TEST(PaperPages, NumbersEndAtOneEdgeAndTextsBeginAtAnother) {
  const auto pages = LayOut(DocumentOfBlocks({{{.text = "one", .number = "1"}, {.text = "more", .indent = 4}},
                                              {{.text = "ten", .number = "10"}},
                                              {{.text = "all", .number = "200"}}}),
                            kSheet);
  const auto& texts = pages.at(0).texts;
  ASSERT_EQ(texts.size(), 7U);
  const auto find = [&texts](const char* text) {
    return *std::find_if(texts.begin(), texts.end(),
                         [text](const PaperText& t) { return t.text == QLatin1String(text); });
  };
  const qreal edge = find("1").at.x() + WidthOf(find("1"));
  for (const char* number : {"10", "200"}) EXPECT_NEAR(find(number).at.x() + WidthOf(find(number)), edge, 1);
  EXPECT_GT(find("one").at.x(), edge + WidthOf(find("1")) / 2) << "a gap stands between";
  EXPECT_EQ(find("ten").at.x(), find("one").at.x());
  EXPECT_EQ(find("all").at.x(), find("one").at.x());
  EXPECT_GT(find("more").at.x(), find("one").at.x());
  EXPECT_EQ(find("one").at.y(), find("1").at.y());
}

TEST(PaperPages, TheBodyOfALoopStandsFurtherRight) {
  const auto pages = LayOut(
      DocumentOfBlocks({{{.text = "out", .number = "1"}}, {{.text = "in", .number = "2", .indent = 2}}}),
      kSheet);
  const auto& texts = pages.at(0).texts;
  EXPECT_NEAR(texts[2].at.x() - texts[0].at.x(), 2 * WidthOf({{}, QStringLiteral("0")}), 1);
}

TEST(PaperPages, ALongRowGoesOnBelowItselfFurtherRightAndLosesNothing) {
  const std::string text =
      "Axis 1: Feed to Length(cw) 120.0 mm, 160.0 mps, A=8000 mm/s/s, D=8000 mm/s/s and so on to the end";
  const auto pages = LayOut(DocumentOfBlocks({{{.text = text, .number = "5", .indent = 2}}}), kSlip);
  ExpectWithin(pages, kSlip);
  QString joined;
  qreal first = -1;
  int pieces = 0;
  for (const PaperText& piece : pages.at(0).texts) {
    if (piece.text == QStringLiteral("5")) continue;
    joined += piece.text;
    if (pieces++ == 0)
      first = piece.at.x();
    else
      EXPECT_GT(piece.at.x(), first);
  }
  EXPECT_GT(pieces, 2);
  EXPECT_EQ(joined.toStdString(), text);
}

TEST(PaperPages, AWordLongerThanARowIsBroken) {
  const auto pages = LayOut(DocumentOfBlocks({{{.text = std::string(3000, 'W')}}}), kSlip);
  ExpectWithin(pages, kSlip);
  qsizetype letters = 0;
  for (const PaperPage& page : pages) {
    for (const PaperText& text : page.texts) letters += text.text.size();
  }
  EXPECT_EQ(letters, 3000);
}

TEST(PaperPages, DeeplyNestedLoopsKeepRoomForTheirTexts) {
  const auto pages =
      LayOut(DocumentOfBlocks({{{.text = "Repeat 10 times", .number = "200", .indent = 398}}}), kSheet);
  ExpectWithin(pages, kSheet);
  EXPECT_TRUE(TextsOf(pages.at(0)).contains(QStringLiteral("Repeat 10 times"))) << "in one piece";
}

TEST(PaperPages, PaperWithoutRoomStillHoldsEveryLetter) {
  for (const QSizeF& size : {QSizeF(0, 0), QSizeF(-100, -100), QSizeF(10, 10)}) {
    qsizetype letters = 0;
    for (const PaperPage& page : LayOut(DocumentOfBlocks({Block(7, 3)}), size)) {
      for (const PaperText& text : page.texts) letters += text.text.size();
    }
    EXPECT_EQ(letters, 3);
  }
}

TEST(PaperPages, ABlankRowDoesNotBeginAPage) {
  const auto pages = LayOut(DocumentOfBlocks({{PaperRow{}}, {{.text = "first"}}}), kSheet);
  EXPECT_EQ(pages.at(0).texts.at(0).at.y(), 0);
}

TEST(PaperPages, EveryExampleFitsItsPages) {
  for (const auto& example : examples::ExamplePrograms()) {
    const Listing listing = MakeListing(example.program, example.file_name);
    const auto reference = SectionsOf(MakeCrossReference(example.program));
    for (const QSizeF& size : {kSheet, kSheet.transposed(), kSlip, kLabel}) {
      const auto pages = LayOut(OnPaper(listing, example.file_name, reference), size);
      ExpectWithin(pages, size);
      EXPECT_GE(pages.size(), 1U);
    }
  }
}

}  // namespace
}  // namespace tavlo
