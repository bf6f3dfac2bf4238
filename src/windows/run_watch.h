// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QObject>
#include <functional>

#include "qt/gui/held_key.h"

namespace tavlo {

/// Watches all windows of this program for the key that stops the machine.
///
/// That is Escape, in every window: in the main window, in a dialog, in the terminal to the drives, and in a
/// box that is up over a run. A message from the hub while the machine moves must not take the only stop
/// away, not even for the moment in which such a box blocks keys. The window stays up: the next press of
/// Escape is its own. So are all of them while nothing moves.
class RunWatch : public QObject {
  Q_OBJECT

 public:
  /// `moving` says whether anything may be moving that a stop can reach. Works until it is destroyed, before
  /// all filters that the application has by then.
  explicit RunWatch(std::function<bool()> moving);

 signals:
  void StopPressed();
  /// A modal window has closed.
  void BoxGone();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  [[nodiscard]] bool TakesKey(QEvent& event);

  std::function<bool()> moving_;
  HeldKey held_;
  /// The last press of Escape was a stop: its repeats are nobody's.
  bool stopped_ = false;
};

}  // namespace tavlo
