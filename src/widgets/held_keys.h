// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>

#include "qt/gui/held_key.h"

class QKeyEvent;

namespace tavlo {

/// Keeps a held key from acting where nobody pressed it. Its repeats stay in the window in which it was
/// pressed: otherwise they would type into the dialog that the first press opened, or press a mnemonic of the
/// window below the one that it closed. Enter and the function keys act only once each time they are
/// pressed, everywhere.
class HeldKeys : public QObject {
  Q_OBJECT

 public:
  /// Works until it is destroyed.
  HeldKeys();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  [[nodiscard]] bool ActsHere(const QKeyEvent& key, QWidget* window);

  HeldKey held_;
  /// The key that was pressed last, and the window in which it was; null if that is gone.
  int key_ = 0;
  QPointer<QWidget> pressed_in_;
};

}  // namespace tavlo
