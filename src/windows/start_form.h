// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QFrame>

namespace tavlo {

/// `StartForm`: the first window, which tells the version while the main window is made.
class StartForm : public QFrame {
  Q_OBJECT

 public:
  StartForm();
  /// In the middle of the screen, painted when this returns.
  void ShowAtOnce();
};

}  // namespace tavlo
