// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "widgets/entry_box.h"

#include <QApplication>
#include <QEvent>
#include <QFocusEvent>

#include "widgets/contrast.h"

namespace tavlo {

EntryBox::EntryBox(int digits, QWidget* parent) : QLineEdit(parent), digits_(digits) {
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  MakeSelectionStandOut();
}

QSize EntryBox::sizeHint() const {
  // What stands around the digits does not depend on how many the style takes for its own hint.
  constexpr int kOwnLetters = 17;
  const QFontMetrics font = fontMetrics();
  const QSize own = QLineEdit::sizeHint();
  const int around = own.width() - kOwnLetters * font.horizontalAdvance(QLatin1Char('x'));
  return {digits_ * font.horizontalAdvance(QLatin1Char('0')) + around, own.height()};
}

void EntryBox::MakeSelectionStandOut() {
  const QPalette desktop = QApplication::palette(this);
  const QColor ground =
      StandOut(desktop.color(QPalette::Highlight), desktop.color(QPalette::HighlightedText), kTextContrast);
  if (palette().color(QPalette::Highlight) == ground) return;
  QPalette own = palette();
  own.setColor(QPalette::Highlight, ground);
  setPalette(own);
}

void EntryBox::changeEvent(QEvent* event) {
  QLineEdit::changeEvent(event);
  if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange) MakeSelectionStandOut();
}

void EntryBox::focusInEvent(QFocusEvent* event) {
  QLineEdit::focusInEvent(event);
  if (event->reason() != Qt::ActiveWindowFocusReason && event->reason() != Qt::PopupFocusReason) selectAll();
}

void EntryBox::focusOutEvent(QFocusEvent* event) {
  QLineEdit::focusOutEvent(event);
  if (event->reason() != Qt::ActiveWindowFocusReason && event->reason() != Qt::PopupFocusReason) emit Left();
}

}  // namespace tavlo
