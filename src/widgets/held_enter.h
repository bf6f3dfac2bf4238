// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QObject>

#include "qt/gui/held_key.h"

namespace tavlo {

/// Lets Enter act once for each time that it goes down, in every window of the program. The repeats of a key
/// that is held down would answer the box that its first press has opened, or open a second one.
class HeldEnter : public QObject {
  Q_OBJECT

 public:
  /// Works until it is destroyed.
  HeldEnter();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  HeldKey held_;
};

}  // namespace tavlo
