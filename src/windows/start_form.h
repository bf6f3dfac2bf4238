// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QFrame>

namespace tavlo {

/// `StartForm`: the first window, which shows the version while the main window is created.
class StartForm : public QFrame {
  Q_OBJECT

 public:
  StartForm();
  /// Shows it in the middle of the screen. It has been painted when this returns.
  void ShowAtOnce();
};

}  // namespace tavlo
