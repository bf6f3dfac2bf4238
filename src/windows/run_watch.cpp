// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/run_watch.h"

#include <QApplication>
#include <QEvent>
#include <QKeyEvent>
#include <QWidget>

namespace tavlo {
namespace {

bool IsEscape(const QEvent& event) {
  return static_cast<const QKeyEvent&>(event).key() == Qt::Key_Escape;
}

bool IsModalWindow(const QObject* object) {
  const auto* widget = qobject_cast<const QWidget*>(object);
  return widget != nullptr && widget->isWindow() && widget->isModal();
}

}  // namespace

// Filters of the application come before those of a window.
void RunWatch::Begin() {
  qApp->installEventFilter(this);
}

void RunWatch::End() {
  qApp->removeEventFilter(this);
}

bool RunWatch::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::Hide:
      if (IsModalWindow(watched)) emit BoxGone();
      return false;
    case QEvent::ShortcutOverride:
      if (!IsEscape(*event)) return false;
      // So that no shortcut of the window takes it.
      event->accept();
      return true;
    case QEvent::KeyPress:
      if (!IsEscape(*event)) return false;
      emit StopPressed();
      return true;
    default: return false;
  }
}

}  // namespace tavlo
