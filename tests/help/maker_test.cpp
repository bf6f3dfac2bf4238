// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QImage>
#include <QPdfDocument>
#include <QPdfSelection>
#include <QProcess>
#include <QTemporaryDir>

// The program that makes the help documents.

namespace tavlo::testing {
namespace {

struct Made {
  int exit_code;
  QString complaints;
};

class MakerBench {
 public:
  MakerBench() {
    QDir(dir_.path()).mkdir("help");
    QImage picture(400, 300, QImage::Format_RGB32);
    picture.fill(Qt::red);
    picture.save(dir_.filePath("picture.png"));
  }
  void Write(const QString& name, const QByteArray& markdown) const {
    QFile file(Source(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(markdown);
  }
  [[nodiscard]] Made Make(const QStringList& names) const {
    QStringList arguments = {dir_.filePath("out")};
    for (const QString& name : names) arguments += Source(name);
    QProcess process;
    process.start(TAVLO_MAKE_HELP, arguments);
    EXPECT_TRUE(process.waitForFinished(60000));
    QString complaints = QString::fromUtf8(process.readAllStandardError());
    return {process.exitCode(), complaints.remove(dir_.path() + "/").trimmed()};
  }
  [[nodiscard]] QString Source(const QString& name) const { return dir_.filePath("help/" + name + ".md"); }
  [[nodiscard]] QString Pdf(const QString& name) const { return dir_.filePath("out/" + name + ".pdf"); }
  [[nodiscard]] QByteArray Bytes(const QString& name) const {
    QFile file(Pdf(name));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
  }

 private:
  QTemporaryDir dir_;
};

/// The texts of the pages.
QStringList PagesOf(const QString& path) {
  QPdfDocument pdf;
  EXPECT_EQ(pdf.load(path), QPdfDocument::Error::None);
  QStringList pages;
  for (int page = 0; page < pdf.pageCount(); ++page) pages += pdf.getAllText(page).text();
  return pages;
}

TEST(HelpMaker, MakesADocumentOfA4UnderTheTitleOfItsFirstHeading) {
  MakerBench bench;
  bench.Write("Two Words", "# The title\n\nSome **bold** text, see [Two Words](<Two Words.md>).\n");
  EXPECT_EQ(bench.Make({"Two Words"}).complaints, "");
  QPdfDocument pdf;
  ASSERT_EQ(pdf.load(bench.Pdf("Two Words")), QPdfDocument::Error::None);
  EXPECT_EQ(pdf.metaData(QPdfDocument::MetaDataField::Title).toString(), "The title");
  EXPECT_EQ(pdf.pageCount(), 1);
  EXPECT_EQ(pdf.pagePointSize(0).toSize(), QSize(595, 842));
  const QString text = pdf.getAllText(0).text();
  for (const char* words : {"The title", "bold", "Page 1 of 1", "Tavlo Composer: The title"}) {
    EXPECT_TRUE(text.contains(words)) << words;
  }
}

TEST(HelpMaker, SaysWithFileAndLineWhatLeadsNowhereAndMakesNothing) {
  struct Case {
    QByteArray markdown;
    const char* complaint;
  };
  const Case cases[] = {
      {"# A\n\n![x](../missing.png)\n", "help/a.md:3: there is no picture ../missing.png"},
      {"# A\n\n![x](a.md)\n", "help/a.md:3: there is no picture a.md"},
      {"# A\n\nSee [the\nother](b.md).\n", "help/a.md:3: there is no document b.md"},
      {"# A\n\n[x](../help)\n", "help/a.md:3: there is no document ../help"},
      {"# A\n\n[x](../picture.png)\n", "help/a.md:3: there is no document ../picture.png"},
      {"# A\n\n[x](https://example.org/a.md)\n",
       "help/a.md:3: there is no document https://example.org/a.md"},
      {"## A\n", "help/a.md:1: the document has no title: no line begins with \"# \""},
      {"", "help/a.md:1: the document has no title: no line begins with \"# \""},
  };
  for (const Case& each : cases) {
    MakerBench bench;
    bench.Write("a", each.markdown);
    bench.Write("good", "# Good\n");
    const Made made = bench.Make({"good", "a"});
    EXPECT_EQ(made.exit_code, 1) << each.complaint;
    EXPECT_EQ(made.complaints, each.complaint);
    EXPECT_FALSE(QFile::exists(bench.Pdf("good")));
  }
}

TEST(HelpMaker, SaysThatASourceCannotBeRead) {
  MakerBench bench;
  const Made made = bench.Make({"none"});
  EXPECT_EQ(made.exit_code, 1);
  EXPECT_TRUE(made.complaints.startsWith("help/none.md: ")) << made.complaints.toStdString();
}

TEST(HelpMaker, MakesTheSameBytesEachTime) {
  MakerBench bench;
  bench.Write("a", "# A\n\n![a picture](../picture.png)\n\n| x | y |\n|---|---|\n| 1 | 2 |\n\n`typed`\n");
  EXPECT_EQ(bench.Make({"a"}).exit_code, 0);
  const QByteArray once = bench.Bytes("a");
  EXPECT_EQ(bench.Make({"a"}).exit_code, 0);
  EXPECT_EQ(bench.Bytes("a"), once);
}

TEST(HelpMaker, LeavesNoHeadingAtTheFootOfAPage) {
  // The more text stands above a heading, the nearer it comes to the foot.
  for (int lines = 30; lines < 60; ++lines) {
    MakerBench bench;
    QByteArray markdown = "# A\n\n";
    for (int line = 0; line < lines; ++line) markdown += "line\n\n";
    markdown += "## Heading\n\n### Below\n\nWORDS\n";
    bench.Write("a", markdown);
    EXPECT_EQ(bench.Make({"a"}).exit_code, 0);
    for (const QString& page : PagesOf(bench.Pdf("a"))) {
      EXPECT_EQ(page.contains("Heading"), page.contains("WORDS")) << lines;
      EXPECT_EQ(page.contains("Below"), page.contains("WORDS")) << lines;
    }
  }
}

TEST(HelpMaker, DividesATableBetweenItsRowsAndRepeatsItsHead) {
  MakerBench bench;
  QByteArray markdown = "# A\n\n| Head | of it |\n|---|---|\n";
  constexpr int kRows = 70;
  for (int row = 0; row < kRows; ++row) {
    const QByteArray number = QByteArray::number(row);
    markdown +=
        "| first" + number + "x | " + QByteArray("some words ").repeated(12) + "last" + number + "x |\n";
  }
  bench.Write("a", markdown);
  EXPECT_EQ(bench.Make({"a"}).exit_code, 0);
  const QStringList pages = PagesOf(bench.Pdf("a"));
  EXPECT_GT(pages.size(), 2);
  int met = 0;
  for (const QString& page : pages) {
    EXPECT_TRUE(page.contains("Head"));
    for (int row = 0; row < kRows; ++row) {
      const bool begins = page.contains(QStringLiteral("first%1x").arg(row));
      EXPECT_EQ(begins, page.contains(QStringLiteral("last%1x").arg(row))) << row;
      met += begins ? 1 : 0;
    }
  }
  EXPECT_EQ(met, kRows) << "each row once";
}

TEST(HelpMaker, KeepsAPictureWholeAndWithItsCaption) {
  for (int lines = 20; lines < 50; lines += 3) {
    MakerBench bench;
    QByteArray markdown = "# A\n\n";
    for (int line = 0; line < lines; ++line) markdown += "line\n\n";
    markdown += "![The CAPTION](../picture.png)\n\nWORDS\n";
    bench.Write("a", markdown);
    EXPECT_EQ(bench.Make({"a"}).exit_code, 0);
    QPdfDocument pdf;
    ASSERT_EQ(pdf.load(bench.Pdf("a")), QPdfDocument::Error::None);
    for (int page = 0; page < pdf.pageCount(); ++page) {
      const QImage picture = pdf.render(page, pdf.pagePointSize(page).toSize());
      int red = 0;
      for (int y = 0; y < picture.height(); ++y)
        red += qRed(picture.pixel(picture.width() / 2, y)) > 200 &&
               qAlpha(picture.pixel(picture.width() / 2, y)) > 200 &&
               qBlue(picture.pixel(picture.width() / 2, y)) < 50;
      const bool captioned = pdf.getAllText(page).text().contains("CAPTION");
      // 300 dots at seven tenths, in points.
      EXPECT_NEAR(red, captioned ? 157 : 0, 3) << lines << ", page " << page;
    }
  }
}

TEST(HelpMaker, DrawsNothingBeyondThePlaceOfTheText) {
  MakerBench bench;
  QByteArray markdown = "# A\n\n";
  for (int i = 0; i < 40; ++i) {
    markdown +=
        "| a | b |\n|---|---|\n| " + QByteArray("word ").repeated(30) + " | x |\n\nText\n\n> A message.\n\n";
  }
  bench.Write("a", markdown);
  EXPECT_EQ(bench.Make({"a"}).exit_code, 0);
  QPdfDocument pdf;
  ASSERT_EQ(pdf.load(bench.Pdf("a")), QPdfDocument::Error::None);
  EXPECT_GT(pdf.pageCount(), 3);
  for (int page = 0; page < pdf.pageCount(); ++page) {
    const QImage picture = pdf.render(page, QSize(595, 842));
    for (int y = 0; y < picture.height(); ++y) {
      for (int x = 0; x < picture.width(); ++x) {
        // The margins: 22 mm at the sides, 20 above.
        if (x > 60 && x < 535 && y > 54) continue;
        ASSERT_LT(qAlpha(picture.pixel(x, y)) * (255 - qGray(picture.pixel(x, y))), 255 * 40)
            << x << ", " << y << " of page " << page;
      }
    }
  }
}

}  // namespace
}  // namespace tavlo::testing
