// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QObject>

#include "qt/gui/held_key.h"

namespace tavlo {

/// Lets Enter act only once each time it is pressed, in every window of the program. Otherwise the repeats of
/// a held key would answer the box that its first press opened, or open a second one.
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
