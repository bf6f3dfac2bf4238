// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "widgets/mnemonics.h"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QShortcutEvent>

namespace tavlo {

Mnemonics::Mnemonics() {
  QCoreApplication::instance()->installEventFilter(this);
}

bool Mnemonics::eventFilter(QObject* watched, QEvent* event) {
  // Each press asks first whether somebody would rather have the key than let it be a shortcut.
  if (event->type() == QEvent::ShortcutOverride || event->type() == QEvent::KeyRelease) {
    repeats_ = held_.Repeats(*static_cast<QKeyEvent*>(event));
    return false;
  }
  if (event->type() != QEvent::Shortcut) return false;
  auto* button = qobject_cast<QAbstractButton*>(watched);
  // Of several buttons with the same letter each gets the focus in turn, and none acts.
  if (button == nullptr || static_cast<QShortcutEvent*>(event)->isAmbiguous()) return false;
  if (repeats_) return true;
  if (button->isCheckable() && (button->focusPolicy() & Qt::ClickFocus) != 0) {
    button->setFocus(Qt::ShortcutFocusReason);
  }
  button->click();
  return true;
}

}  // namespace tavlo
