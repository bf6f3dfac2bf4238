// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "widgets/wheel_focus.h"

#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QEvent>
#include <QScrollBar>

namespace tavlo {
namespace {

/// Scroll bars only move a view.
bool HoldsAValue(const QWidget& widget) {
  if (qobject_cast<const QScrollBar*>(&widget) != nullptr) return false;
  return qobject_cast<const QComboBox*>(&widget) != nullptr ||
         qobject_cast<const QAbstractSpinBox*>(&widget) != nullptr ||
         qobject_cast<const QAbstractSlider*>(&widget) != nullptr;
}

}  // namespace

WheelFocus::WheelFocus() {
  qApp->installEventFilter(this);
}

bool WheelFocus::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::Polish && event->type() != QEvent::Wheel) return false;
  auto* widget = qobject_cast<QWidget*>(watched);
  if (widget == nullptr || !HoldsAValue(*widget)) return false;
  if (event->type() == QEvent::Polish) {
    if (widget->focusPolicy() == Qt::WheelFocus) widget->setFocusPolicy(Qt::StrongFocus);
    return false;
  }
  if (widget->hasFocus()) return false;
  event->ignore();
  return true;
}

}  // namespace tavlo
