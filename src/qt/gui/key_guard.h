// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QObject>
#include <QTimer>

class QKeyEvent;
class QWidget;

namespace tavlo {

/// Keeps from a window that comes by itself the keys that were meant for what the operator was doing. It
/// takes none in its first 0.7 seconds, none until they pause, and none that is held. After that it takes
/// those that belong to a box: Enter and Space, Tab, Escape, and letters with Alt. The other keys of the
/// operator terminal are not among them.
class KeyGuard : public QObject {
 public:
  /// Begins anew with each showing of the window, whose controls must be in it by now.
  explicit KeyGuard(QWidget* window);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  [[nodiscard]] bool Refuses(const QKeyEvent& key) const;

  QWidget* window_;
  QTimer deaf_;
  /// The window has had the focus since it was shown; before that no key can reach it.
  bool reached_ = false;
};

}  // namespace tavlo
