// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "widgets/held_enter.h"

#include <QCoreApplication>
#include <QKeyEvent>

namespace tavlo {

HeldEnter::HeldEnter() {
  QCoreApplication::instance()->installEventFilter(this);
}

bool HeldEnter::eventFilter(QObject*, QEvent* event) {
  if (event->type() != QEvent::KeyPress && event->type() != QEvent::KeyRelease) return false;
  const auto* key = static_cast<QKeyEvent*>(event);
  return held_.Repeats(*key) && (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter);
}

}  // namespace tavlo
