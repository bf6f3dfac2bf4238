// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/run_watch.h"

#include <QApplication>
#include <QEvent>
#include <QKeyEvent>
#include <QWidget>
#include <utility>

namespace tavlo {
namespace {

bool IsModalWindow(const QObject* object) {
  const auto* widget = qobject_cast<const QWidget*>(object);
  return widget != nullptr && widget->isWindow() && widget->isModal();
}

}  // namespace

// Filters of the application come before those of a window, and the youngest of them first.
RunWatch::RunWatch(std::function<bool()> moving) : moving_(std::move(moving)) {
  qApp->installEventFilter(this);
}

bool RunWatch::TakesKey(QEvent& event) {
  const auto& key = static_cast<const QKeyEvent&>(event);
  const bool repeats = held_.Repeats(key);
  if (key.key() != Qt::Key_Escape || event.type() == QEvent::KeyRelease) return false;
  const bool still_held = repeats && stopped_;
  if (!still_held && !moving_()) {
    stopped_ = false;
    return false;
  }
  // So that no shortcut of the window takes it.
  event.accept();
  if (event.type() == QEvent::KeyPress && !still_held) {
    stopped_ = true;
    emit StopPressed();
  }
  return true;
}

bool RunWatch::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::Hide:
      if (IsModalWindow(watched)) emit BoxGone();
      return false;
    case QEvent::ShortcutOverride:
    case QEvent::KeyPress:
    case QEvent::KeyRelease: return TakesKey(*event);
    default: return false;
  }
}

}  // namespace tavlo
