// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "widgets/entry_box.h"

#include <QEvent>
#include <QFocusEvent>

#include "widgets/selection.h"

namespace tavlo {

EntryBox::EntryBox(int digits, QWidget* parent) : QLineEdit(parent), digits_(digits) {
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  MakeSelectionStandOut(*this);
}

QSize EntryBox::sizeHint() const {
  // What stands around the digits does not depend on how many the style takes for its own hint.
  constexpr int kOwnLetters = 17;
  const QFontMetrics font = fontMetrics();
  const QSize own = QLineEdit::sizeHint();
  const int around = own.width() - kOwnLetters * font.horizontalAdvance(QLatin1Char('x'));
  return {digits_ * font.horizontalAdvance(QLatin1Char('0')) + around, own.height()};
}

void EntryBox::changeEvent(QEvent* event) {
  QLineEdit::changeEvent(event);
  if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange)
    MakeSelectionStandOut(*this);
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
