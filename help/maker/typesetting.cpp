// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "maker/typesetting.h"

#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QTextBlock>
#include <QTextTable>
#include <QUrl>
#include <algorithm>
#include <array>
#include <cmath>

#include "maker/page.h"
#include "maker/pages.h"

namespace tavlo::help {
namespace {

const QStringList kFamilies = {QStringLiteral("Liberation Sans"), QStringLiteral("Arial"),
                               QStringLiteral("Helvetica")};
const QStringList kFixedFamilies = {QStringLiteral("Liberation Mono"), QStringLiteral("Courier New")};
constexpr double kTextPoints = 10;
constexpr double kCaptionPoints = 8.5;
const QColor kHeadingInk(28, 62, 104);
const QColor kCaptionInk(90, 90, 90);
const QColor kRule(176, 184, 194);
const QColor kHeadGround(232, 237, 244);
const QColor kQuoteGround(243, 245, 248);

struct HeadingLook {
  double points;
  double above;
  double below;
};
/// In units, from the title down.
constexpr std::array<HeadingLook, 3> kHeadings = {{{20, 0, 12}, {13, 18, 7}, {10.5, 12, 5}}};

constexpr double kParagraphGap = 7;
constexpr double kItemGap = 3;
constexpr double kCellPadding = 4;
/// In characters.
constexpr double kLongColumn = 60;
constexpr double kLeastColumn = 14;
constexpr double kQuoteIndent = 14;
constexpr double kQuoteGap = 4;
/// A picture of a screen is shown a little smaller, so that its letters are about those of the text.
constexpr double kPictureScale = 0.7;
constexpr double kHighestPicture = 0.36;

/// The stretches of a block that have one type each. A change of their types may join them.
QList<QTextCursor> WordsOf(const QTextBlock& block) {
  QList<QTextCursor> all;
  for (auto part = block.begin(); !part.atEnd(); ++part) {
    QTextCursor words(block);
    words.setPosition(part.fragment().position());
    words.setPosition(part.fragment().position() + part.fragment().length(), QTextCursor::KeepAnchor);
    all.append(words);
  }
  return all;
}

void SetHeading(const QTextBlock& block, int level) {
  const auto at = static_cast<std::size_t>(std::clamp<int>(level, 1, kHeadings.size()) - 1);
  for (QTextCursor words : WordsOf(block)) {
    QTextCharFormat type = words.charFormat();
    type.clearProperty(QTextFormat::FontSizeAdjustment);
    type.setFontPointSize(kHeadings[at].points);
    type.setFontWeight(QFont::Bold);
    type.setForeground(kHeadingInk);
    words.setCharFormat(type);
  }
  QTextBlockFormat place = block.blockFormat();
  place.setTopMargin(kHeadings[at].above);
  place.setBottomMargin(kHeadings[at].below);
  place.setProperty(kKeepWithNext, true);
  QTextCursor(block).setBlockFormat(place);
}

bool HasPicture(const QTextBlock& block) {
  for (auto part = block.begin(); !part.atEnd(); ++part) {
    if (part.fragment().charFormat().isImageFormat()) return true;
  }
  return false;
}

void SetParagraph(const QTextBlock& block) {
  const bool in_table = QTextCursor(block).currentTable() != nullptr;
  const bool in_list = block.textList() != nullptr;
  QTextBlockFormat place = block.blockFormat();
  place.setTopMargin(0);
  place.setBottomMargin(in_table ? 0 : in_list ? kItemGap : kParagraphGap);
  place.setLineHeight(118, QTextBlockFormat::ProportionalHeight);
  if (place.hasProperty(QTextFormat::BlockQuoteLevel)) {
    place.setTopMargin(kQuoteGap);
    place.setBackground(kQuoteGround);
    place.setLeftMargin(kQuoteIndent);
    place.setRightMargin(kQuoteIndent);
  }
  // "It has these fields:" belongs to what follows.
  if (!in_table && block.text().trimmed().endsWith(QLatin1Char(':'))) place.setProperty(kKeepWithNext, true);
  QTextCursor(block).setBlockFormat(place);
}

/// Fixed pitch where something is typed, italics where another document is named.
void SetWords(const QTextBlock& block) {
  for (QTextCursor words : WordsOf(block)) {
    QTextCharFormat format = words.charFormat();
    if (format.isImageFormat() || (!format.fontFixedPitch() && !format.isAnchor())) continue;
    if (format.fontFixedPitch()) format.setFontFamilies(kFixedFamilies);
    if (format.isAnchor()) {
      format.setFontItalic(true);
      format.setFontUnderline(false);
      format.clearForeground();
      for (const int property : {QTextFormat::IsAnchor, QTextFormat::AnchorHref, QTextFormat::AnchorName}) {
        format.clearProperty(property);
      }
    }
    words.setCharFormat(format);
  }
}

int CharactersIn(const QTextTableCell& cell) {
  return cell.lastCursorPosition().position() - cell.firstCursorPosition().position();
}

/// In percent. A column that has more to say is wider, but not in proportion: a short one needs its words
/// too.
QList<QTextLength> WidthsOf(const QTextTable& table) {
  QList<double> weights;
  double sum = 0;
  for (int column = 0; column < table.columns(); ++column) {
    double longest = 0;
    double all = 0;
    for (int row = 0; row < table.rows(); ++row) {
      longest = std::max<double>(longest, CharactersIn(table.cellAt(row, column)));
      all += CharactersIn(table.cellAt(row, column));
    }
    weights += std::sqrt(std::min(longest, kLongColumn) * std::max(all / table.rows(), kLeastColumn));
    sum += weights.back();
  }
  QList<QTextLength> widths;
  for (const double weight : weights)
    widths += QTextLength(QTextLength::PercentageLength, 100 * weight / sum);
  return widths;
}

void SetTable(QTextTable& table, double width) {
  QTextTableFormat format = table.format();
  format.setColumnWidthConstraints(WidthsOf(table));
  format.setBorderCollapse(true);
  format.setBorder(1);
  format.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
  format.setBorderBrush(kRule);
  format.setCellPadding(kCellPadding);
  format.setCellSpacing(0);
  format.setTopMargin(2);
  format.setBottomMargin(kParagraphGap + 3);
  format.setHeaderRowCount(1);
  format.setWidth(QTextLength(QTextLength::FixedLength, width));
  table.setFormat(format);
  for (int column = 0; column < table.columns(); ++column) {
    const QTextTableCell cell = table.cellAt(0, column);
    QTextCharFormat head = cell.format();
    head.setBackground(kHeadGround);
    QTextTableCell(cell).setFormat(head);
    QTextCharFormat type;
    type.setFontWeight(QFont::Bold);
    for (auto block = cell.begin(); !block.atEnd(); ++block) {
      for (QTextCursor words : WordsOf(block.currentBlock())) words.mergeCharFormat(type);
    }
  }
}

/// What a picture is on the page: at most as wide as the text, and not so high that it fills a page.
QSizeF SizeOf(const QImage& picture) {
  QSizeF size = QSizeF(picture.size()) * kPictureScale;
  const QSizeF room(Units(kTextMm.width()), Units(kTextMm.height()) * kHighestPicture);
  if (size.width() > room.width() || size.height() > room.height()) size.scale(room, Qt::KeepAspectRatio);
  return size;
}

/// A picture stands alone in its paragraph; its description becomes the caption beneath.
void SetPicture(QTextDocument& document, const QTextBlock& block, const QDir& folder) {
  const QTextFragment fragment = block.begin().fragment();
  QTextImageFormat format = fragment.charFormat().toImageFormat();
  const QString caption = format.property(QTextFormat::ImageAltText).toString();
  const QImage picture(folder.filePath(QUrl::fromPercentEncoding(format.name().toUtf8())));
  const QUrl name(QStringLiteral("picture:%1").arg(block.position()));
  document.addResource(QTextDocument::ImageResource, name, picture);
  const QSizeF size = SizeOf(picture);
  format.setName(name.toString());
  format.setWidth(size.width());
  format.setHeight(size.height());
  QTextCursor cursor(block);
  cursor.setPosition(fragment.position() + fragment.length(), QTextCursor::KeepAnchor);
  cursor.setCharFormat(format);

  QTextBlockFormat place;
  place.setAlignment(Qt::AlignHCenter);
  place.setTopMargin(6);
  place.setBottomMargin(3);
  place.setProperty(kKeepWithNext, true);
  cursor.movePosition(QTextCursor::EndOfBlock);
  cursor.setBlockFormat(place);
  place.setTopMargin(0);
  place.setBottomMargin(kParagraphGap + 3);
  place.clearProperty(kKeepWithNext);
  QTextCharFormat type;
  type.setFontPointSize(kCaptionPoints);
  type.setForeground(kCaptionInk);
  cursor.insertBlock(place, type);
  cursor.insertText(caption, type);
}

QList<QTextTable*> TablesOf(const QTextDocument& document) {
  QList<QTextTable*> tables;
  for (QTextFrame* frame : document.rootFrame()->childFrames()) {
    if (auto* table = qobject_cast<QTextTable*>(frame)) tables.append(table);
  }
  return tables;
}

}  // namespace

void Typeset(QTextDocument& document, const Source& source, double width) {
  QFont font;
  font.setFamilies(kFamilies);
  font.setPointSizeF(kTextPoints);
  // The same widths on every machine, whatever its screen is like.
  font.setHintingPreference(QFont::PreferNoHinting);
  document.setDefaultFont(font);
  document.setDocumentMargin(0);
  document.setMarkdown(source.markdown, QTextDocument::MarkdownDialectGitHub);

  const QDir folder = QFileInfo(source.path).dir();
  for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
    const int heading = block.blockFormat().headingLevel();
    if (HasPicture(block)) {
      SetPicture(document, block, folder);
      block = block.next();
    } else if (heading > 0) {
      SetHeading(block, heading);
    } else {
      SetParagraph(block);
    }
    SetWords(block);
  }
  for (QTextTable* table : TablesOf(document)) SetTable(*table, Units(kTextMm.width()));
  document.setTextWidth(width);
}

}  // namespace tavlo::help
