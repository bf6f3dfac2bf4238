// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "widgets/tall_pane.h"

#include <QEvent>
#include <QScrollBar>

namespace tavlo {
namespace {

/// Less of the pane than so many lines of text is of no use to anybody.
constexpr int kLeastLines = 4;

}  // namespace

TallPane::TallPane(QWidget* pane, const QString& name, QWidget* parent) : QScrollArea(parent) {
  setAccessibleName(name);
  setFrameShape(QFrame::NoFrame);
  setWidgetResizable(true);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setFocusPolicy(Qt::NoFocus);
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
  verticalScrollBar()->setAccessibleName(QStringLiteral("Scroll: ") + name);
  setWidget(pane);
  pane->installEventFilter(this);
}

int TallPane::Width() const {
  const QSize whole = widget()->minimumSizeHint();
  return whole.width() + (height() < whole.height() ? verticalScrollBar()->sizeHint().width() : 0);
}

QSize TallPane::sizeHint() const {
  return {Width(), widget()->sizeHint().height()};
}

QSize TallPane::minimumSizeHint() const {
  return {Width(), fontMetrics().lineSpacing() * kLeastLines};
}

bool TallPane::eventFilter(QObject* watched, QEvent* event) {
  if (watched == widget() && event->type() == QEvent::LayoutRequest) updateGeometry();
  return QScrollArea::eventFilter(watched, event);
}

void TallPane::resizeEvent(QResizeEvent* event) {
  QScrollArea::resizeEvent(event);
  if (width() < Width()) updateGeometry();
}

}  // namespace tavlo
