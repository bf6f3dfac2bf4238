// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "widgets/ringed_button.h"

#include <QEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOptionToolButton>

#include "widgets/contrast.h"
#include "widgets/font_size.h"

namespace tavlo {
namespace {

constexpr int kRingWidth = 2;

}  // namespace

RingedButton::RingedButton(int picture_size, QWidget* parent)
    : QToolButton(parent), picture_size_(picture_size) {
  setFocusPolicy(Qt::StrongFocus);
  Measure();
}

void RingedButton::Measure() {
  const int side = ByFont(fontMetrics(), picture_size_);
  setIconSize({side, side});
}

void RingedButton::paintEvent(QPaintEvent* event) {
  QToolButton::paintEvent(event);
  if (!hasFocus()) return;
  const QColor ground = palette().color(autoRaise() ? QPalette::Window : QPalette::Button);
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(StandOut(palette().color(QPalette::Highlight), ground, kTextContrast), kRingWidth));
  const double inset = kRingWidth / 2.0;
  painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), kRingWidth, kRingWidth);
}

void RingedButton::mousePressEvent(QMouseEvent* event) {
  QStyleOptionToolButton option;
  initStyleOption(&option);
  const QRect arrow =
      style()->subControlRect(QStyle::CC_ToolButton, &option, QStyle::SC_ToolButtonMenu, this);
  const bool on_arrow = popupMode() == MenuButtonPopup && arrow.contains(event->position().toPoint());
  if (menu() == nullptr || !on_arrow || event->button() != Qt::LeftButton)
    return QToolButton::mousePressEvent(event);
  menu()->popup(mapToGlobal(rect().bottomLeft()));
}

void RingedButton::changeEvent(QEvent* event) {
  if (event->type() == QEvent::FontChange) Measure();
  QToolButton::changeEvent(event);
}

}  // namespace tavlo
