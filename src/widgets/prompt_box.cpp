// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "widgets/prompt_box.h"

#include <QApplication>
#include <QEvent>
#include <QFontDatabase>
#include <QKeyEvent>
#include <QMimeData>
#include <QScrollBar>
#include <QSignalBlocker>
#include <cmath>

#include "widgets/selection.h"

namespace tavlo {

QFont DisplayFont(const QWidget& beside) {
  QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  fixed.setPointSizeF(QApplication::font(&beside).pointSizeF());
  return fixed;
}

PromptBox::PromptBox(int columns, QWidget* parent) : QTextEdit(parent), columns_(columns) {
  setAcceptRichText(false);
  setTabChangesFocus(true);
  setLineWrapMode(QTextEdit::FixedColumnWidth);
  setLineWrapColumnOrWidth(columns);
  setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  verticalScrollBar()->setAccessibleName(QStringLiteral("Scroll the text"));
  TakeFont();
  connect(this, &QTextEdit::textChanged, this, [this] { emit Edited(Text()); });
}

void PromptBox::TakeFont() {
  if (const QFont fixed = DisplayFont(*this); font() != fixed) setFont(fixed);
  MakeSelectionStandOut(*this);
}

void PromptBox::changeEvent(QEvent* event) {
  QTextEdit::changeEvent(event);
  if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange) TakeFont();
}

QSize PromptBox::HintFor(int lines) const {
  const int around = 2 * (frameWidth() + static_cast<int>(std::ceil(document()->documentMargin())));
  const int wide = fontMetrics().horizontalAdvance(QString(columns_, QLatin1Char('M')));
  // There is always room for the bar, so that the text does not move when it comes.
  return {wide + around + verticalScrollBar()->sizeHint().width(),
          lines * fontMetrics().lineSpacing() + around};
}

void PromptBox::SetLines(int lines) {
  if (lines == lines_) return;
  lines_ = lines;
  updateGeometry();
}

QString PromptBox::Text() const {
  // The toolkit's own plain text would turn a hard space into a blank.
  QString text = document()->toRawText();
  for (const QChar end : {QChar(QChar::ParagraphSeparator), QChar(QChar::LineSeparator)}) {
    text.replace(end, QLatin1Char('\n'));
  }
  return text;
}

void PromptBox::SetText(const QString& text) {
  const QSignalBlocker quiet(this);
  const int caret = textCursor().position();
  setPlainText(text);
  QTextCursor cursor = textCursor();
  cursor.setPosition(std::min(caret, document()->characterCount() - 1));
  setTextCursor(cursor);
}

void PromptBox::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  // The whole text is selected when the box gets the focus. Enter goes behind it and does not replace it.
  if (QTextCursor cursor = textCursor(); enter && cursor.hasSelection()) {
    cursor.setPosition(cursor.selectionEnd());
    setTextCursor(cursor);
  }
  QTextEdit::keyPressEvent(event);
}

void PromptBox::insertFromMimeData(const QMimeData* source) {
  if (!source->hasText()) return;
  QString text = source->text();
  // The display would not show what controls it, and the hub takes one of them for the end of the text.
  for (QChar& c : text) {
    const bool ends_line = c == QLatin1Char('\n') || c == QLatin1Char('\r');
    if (c.category() == QChar::Other_Control && !ends_line) c = QLatin1Char(' ');
  }
  insertPlainText(text);
}

}  // namespace tavlo
