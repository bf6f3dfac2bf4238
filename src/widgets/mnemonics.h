// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QObject>

#include "qt/gui/held_key.h"

namespace tavlo {

/// Lets a button act at once when the keys of its mnemonic are pressed, and once however long they are held.
/// By itself it goes down for a tenth of a second first, and acts then whatever has come before it or
/// between: a dialog that was left meanwhile would still be confirmed, a command would run under a dialog
/// that is up.
class Mnemonics : public QObject {
  Q_OBJECT

 public:
  /// Works until it is destroyed.
  Mnemonics();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  HeldKey held_;
  /// The key that is being looked at is the repeat of one that is held.
  bool repeats_ = false;
};

}  // namespace tavlo
