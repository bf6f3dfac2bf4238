// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QObject>
#include <QTimer>

class QKeyEvent;
class QWidget;

namespace tavlo {

/// Protects a window that comes by itself from keys that were meant for what the operator was doing. It
/// blocks all keys in the first 0.7 seconds and until they pause, and every repeat of a held key. After that
/// it lets through only the keys that belong to a box: Enter and Space, Tab, Escape, and letters with Alt.
/// The other keys of the operator terminal are not among them.
class KeyGuard : public QObject {
 public:
  /// Starts again each time the window is shown. The window must already contain its controls.
  explicit KeyGuard(QWidget* window);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  [[nodiscard]] bool Refuses(const QKeyEvent& key) const;

  QWidget* window_;
  QTimer deaf_;
  /// The window has had the focus since it was shown; before that, no key can reach it.
  bool reached_ = false;
};

}  // namespace tavlo
