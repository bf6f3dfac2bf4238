// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "qt/paper/paper_painter.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QPdfWriter>
#include <QRegularExpression>

namespace tavlo {
namespace {

QPageLayout Sheet(QPageSize::PageSizeId size = QPageSize::A4,
                  QPageLayout::Orientation orientation = QPageLayout::Portrait) {
  return {QPageSize(size), orientation, QMarginsF()};
}

/// A document of so many pages: each block fills more than half of one.
PaperDocument DocumentOfPages(int pages) {
  PaperDocument document = {.title = "Tavlo Hub Program Listing", .file_name = "a.TVH", .blocks = {}};
  for (int page = 0; page < pages; ++page) document.blocks.emplace_back(40, PaperRow{.text = "text"});
  return document;
}

int PagesOf(const std::string& pdf) {
  static const QRegularExpression kPages(QStringLiteral("/Type /Page\\b"));
  return static_cast<int>(QString::fromLatin1(pdf).count(kPages));
}

TEST(MakePdf, MakesAWholeFileOfAllPages) {
  for (const int pages : {1, 2, 5}) {
    std::string pdf;
    ASSERT_TRUE(MakePdf(DocumentOfPages(pages), Sheet(), {}, pdf));
    EXPECT_TRUE(pdf.starts_with("%PDF-1."));
    EXPECT_TRUE(pdf.ends_with("%%EOF\n"));
    EXPECT_EQ(PagesOf(pdf), pages);
  }
}

TEST(MakePdf, ThePaperIsAsItWasChosen) {
  struct {
    QPageLayout layout;
    const char* box;
  } const cases[] = {{Sheet(), "/MediaBox [0 0 595"},
                     {Sheet(QPageSize::Letter), "/MediaBox [0 0 612"},
                     {Sheet(QPageSize::A4, QPageLayout::Landscape), "/MediaBox [0 0 842"}};
  for (const auto& c : cases) {
    std::string pdf;
    ASSERT_TRUE(MakePdf(DocumentOfPages(1), c.layout, {}, pdf));
    EXPECT_NE(pdf.find(c.box), std::string::npos) << c.box;
  }
}

TEST(MakePdf, OnlyTheChosenPagesArePrinted) {
  QPageRanges ranges;
  ranges.addRange(2, 3);
  std::string pdf;
  ASSERT_TRUE(MakePdf(DocumentOfPages(5), Sheet(), ranges, pdf));
  EXPECT_EQ(PagesOf(pdf), 2);
  ranges.clear();
  ranges.addRange(4, 9);
  ASSERT_TRUE(MakePdf(DocumentOfPages(5), Sheet(), ranges, pdf));
  EXPECT_EQ(PagesOf(pdf), 2);
}

TEST(MakePdf, PagesThatThereAreNotAreNoDocument) {
  QPageRanges ranges;
  ranges.addPage(6);
  std::string pdf = "as it was";
  const Outcome outcome = MakePdf(DocumentOfPages(5), Sheet(), ranges, pdf);
  EXPECT_FALSE(outcome);
  EXPECT_EQ(outcome.Why(), "the document has none of the chosen pages");
  EXPECT_EQ(pdf, "as it was");
}

TEST(WithMargins, KeepsRoomToFileThePageAndWiderMarginsOfItsOwn) {
  const QMarginsF least = WithMargins(Sheet()).margins(QPageLayout::Millimeter);
  EXPECT_GE(least.left(), 20) << "for the holes";
  EXPECT_GE(least.top(), 10);
  EXPECT_GE(least.right(), 10);
  EXPECT_GE(least.bottom(), 10);
  QPageLayout wide(QPageSize(QPageSize::A4), QPageLayout::Portrait, {40, 30, 30, 30},
                   QPageLayout::Millimeter);
  EXPECT_EQ(WithMargins(wide).margins(QPageLayout::Millimeter), QMarginsF(40, 30, 30, 30));
}

/// A printer that takes so many pages.
class FailingPrinter : public QPdfWriter {
 public:
  FailingPrinter(QIODevice* device, int pages) : QPdfWriter(device), pages_(pages) {}
  bool newPage() override { return --pages_ > 0 && QPdfWriter::newPage(); }

 private:
  int pages_;
};

TEST(PaintOn, SaysThatAPrinterTakesNoFurtherPage) {
  for (int taken = 1; taken <= 4; ++taken) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    FailingPrinter printer(&buffer, taken);
    int given_up = 0;
    const Outcome outcome = PaintOn(printer, DocumentOfPages(4), {}, [&given_up] { ++given_up; });
    EXPECT_EQ(static_cast<bool>(outcome), taken == 4);
    EXPECT_EQ(given_up, taken == 4 ? 0 : 1);
    EXPECT_EQ(outcome.Why(), taken == 4 ? "" : "the printer takes no further page");
  }
}

TEST(PaintOn, SaysThatAPrinterCannotBeOpened) {
  QPdfWriter printer(QStringLiteral("/nowhere/at/all.pdf"));
  EXPECT_EQ(PaintOn(printer, DocumentOfPages(1)).Why(), "the printer cannot be opened");
}

}  // namespace
}  // namespace tavlo
