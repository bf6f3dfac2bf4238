// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "widgets/line_text.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

namespace tavlo {
LineText::LineText(int characters, QWidget* parent) : QLabel(parent), characters_(characters) {
  setTextFormat(Qt::PlainText);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
}

QSize LineText::sizeHint() const {
  return {fontMetrics().averageCharWidth() * characters_, fontMetrics().height()};
}

QString LineText::Fitting() const {
  return fontMetrics().elidedText(text(), Qt::ElideRight, width());
}

bool LineText::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QLabel::event(event);
  const bool cut = Fitting() != text();
  QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), cut ? text().toHtmlEscaped() : QString(),
                     this);
  return true;
}

void LineText::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  style()->drawItemText(&painter, rect(), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, palette(),
                        isEnabled(), Fitting(), foregroundRole());
}

}  // namespace tavlo
