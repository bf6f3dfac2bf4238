// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QObject>

namespace tavlo {

/// For as long as it lives, the wheel changes the value of a list, a spin box or a slider only while that
/// control has the focus, and never gives it the focus. Over a control without the focus, the wheel scrolls
/// what the control is in.
class WheelFocus : public QObject {
 public:
  WheelFocus();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace tavlo
