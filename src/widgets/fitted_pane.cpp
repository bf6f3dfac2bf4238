// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "widgets/fitted_pane.h"

#include <QEvent>
#include <QScreen>
#include <QScrollBar>

namespace tavlo {
namespace {

/// What the window needs besides the pane, in lines of text: its frame, its margins, its buttons.
constexpr int kLinesBeside = 3;
constexpr int kLinesBelow = 6;

QSize RoomFor(const QWidget& pane) {
  return pane.screen()->availableSize() - QSize(kLinesBeside, kLinesBelow) * pane.fontMetrics().lineSpacing();
}

}  // namespace

bool FittedPane::HasRoomFor(const QWidget& pane) {
  return pane.sizeHint().boundedTo(RoomFor(pane)) == pane.sizeHint();
}

FittedPane::FittedPane(QWidget* pane, const QString& name, QWidget* parent) : QScrollArea(parent) {
  setAccessibleName(name);
  setFrameShape(QFrame::NoFrame);
  setWidgetResizable(true);
  setFocusPolicy(Qt::NoFocus);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  verticalScrollBar()->setAccessibleName(QStringLiteral("Scroll: ") + name);
  horizontalScrollBar()->setAccessibleName(QStringLiteral("Scroll sideways: ") + name);
  setWidget(pane);
  pane->setMinimumSize(pane->sizeHint());
  pane->installEventFilter(this);
}

QSize FittedPane::sizeHint() const {
  const QSize room = RoomFor(*this);
  widget()->ensurePolished();
  QSize whole = widget()->sizeHint();
  // A bar takes its room from the pane.
  if (whole.height() > room.height()) whole.rwidth() += verticalScrollBar()->sizeHint().width();
  if (whole.width() > room.width()) whole.rheight() += horizontalScrollBar()->sizeHint().height();
  return whole.boundedTo(room);
}

bool FittedPane::eventFilter(QObject* watched, QEvent* event) {
  // A pane is never smaller than it would like to be: what does not fit is scrolled.
  if (watched == widget() && event->type() == QEvent::LayoutRequest) {
    widget()->setMinimumSize(widget()->sizeHint());
    updateGeometry();
  }
  return QScrollArea::eventFilter(watched, event);
}

}  // namespace tavlo
