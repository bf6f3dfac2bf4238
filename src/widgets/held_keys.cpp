// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "widgets/held_keys.h"

#include <QCoreApplication>
#include <QKeyEvent>

namespace tavlo {
namespace {

/// Enter and the function keys begin something each time.
bool ActsOnce(int key) {
  return key == Qt::Key_Return || key == Qt::Key_Enter || (key >= Qt::Key_F1 && key <= Qt::Key_F35);
}

}  // namespace

HeldKeys::HeldKeys() {
  QCoreApplication::instance()->installEventFilter(this);
}

bool HeldKeys::eventFilter(QObject* watched, QEvent* event) {
  const bool asks_for_shortcut = event->type() == QEvent::ShortcutOverride;
  if (event->type() != QEvent::KeyPress && event->type() != QEvent::KeyRelease && !asks_for_shortcut)
    return false;
  const auto* widget = qobject_cast<QWidget*>(watched);
  const auto& key = *static_cast<QKeyEvent*>(event);
  if (ActsHere(key, widget != nullptr ? widget->window() : nullptr)) return false;
  // One that is accepted looks for no shortcut; it comes again as a press.
  if (asks_for_shortcut) event->accept();
  return true;
}

bool HeldKeys::ActsHere(const QKeyEvent& key, QWidget* window) {
  const bool repeats = held_.Repeats(key);
  if (key.type() == QEvent::KeyRelease) return true;
  if (repeats && ActsOnce(key.key())) return false;
  // A press comes to its native window first, and then to a widget.
  if (window == nullptr) return true;
  if (repeats && key.key() == key_) return window == pressed_in_;
  key_ = key.key();
  pressed_in_ = window;
  return true;
}

}  // namespace tavlo
