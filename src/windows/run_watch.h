// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QObject>

namespace tavlo {

/// What happens in the other windows of this program while one of a run is up and watches.
///
/// Escape is the key that stops the machine, and it is that in every window: in the main window, and in a box
/// that stands over the run too. A message that the hub sends while the machine moves on must not take its
/// only stop away, not even for the moment in which such a box takes no key. The box stays: the next Escape
/// answers it.
class RunWatch : public QObject {
  Q_OBJECT

 public:
  using QObject::QObject;
  void Begin();
  void End();

 signals:
  void StopPressed();
  /// A modal window has gone.
  void BoxGone();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace tavlo
