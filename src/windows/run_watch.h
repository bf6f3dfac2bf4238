// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QObject>

namespace tavlo {

/// Watches the other windows of this program while a run window is up.
///
/// Escape is the key that stops the machine, in every window: in the main window, and in a box that is up
/// over the run. A message from the hub while the machine moves must not take the only stop away, not even
/// for the moment in which such a box blocks keys. The box stays up: the next Escape answers it.
class RunWatch : public QObject {
  Q_OBJECT

 public:
  using QObject::QObject;
  void Begin();
  void End();

 signals:
  void StopPressed();
  /// A modal window has closed.
  void BoxGone();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace tavlo
