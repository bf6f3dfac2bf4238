// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "qt/gui/key_guard.h"

#include <QEvent>
#include <QKeyEvent>
#include <QWidget>
#include <utility>

namespace tavlo {
namespace {

// Milliseconds.
constexpr int kDeafFor = 700;
/// Longer than from one key to the next in typing, or in what a held key repeats.
constexpr int kPause = 300;

bool BelongsToABox(const QKeyEvent& key) {
  if ((key.modifiers() & (Qt::AltModifier | Qt::ControlModifier | Qt::MetaModifier)) != 0) return true;
  switch (key.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
    case Qt::Key_Escape: return true;
    default: return false;
  }
}

}  // namespace

KeyGuard::KeyGuard(QWidget* window) : window_(window) {
  deaf_.setSingleShot(true);
  window->installEventFilter(this);
  for (QWidget* control : window->findChildren<QWidget*>()) control->installEventFilter(this);
}

bool KeyGuard::Refuses(const QKeyEvent& key) const {
  return deaf_.isActive() || key.isAutoRepeat() || !BelongsToABox(key);
}

bool KeyGuard::eventFilter(QObject* watched, QEvent* event) {
  if (watched == window_ && event->type() == QEvent::Show) {
    reached_ = false;
    deaf_.start(kDeafFor);
  }
  if (watched == window_ && event->type() == QEvent::WindowActivate && !std::exchange(reached_, true)) {
    deaf_.start(kDeafFor);
  }
  const bool key = event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride;
  if (!key || !Refuses(*static_cast<QKeyEvent*>(event))) return QObject::eventFilter(watched, event);
  if (deaf_.isActive() && deaf_.remainingTime() < kPause) deaf_.start(kPause);
  // Accepted, a key does not become the shortcut that Alt makes of it.
  event->accept();
  return true;
}

}  // namespace tavlo
