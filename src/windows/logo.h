// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QWidget>

namespace tavlo {

/// The program's picture, drawn for the screen that it is painted on. `side` is chosen beside text 16 high.
class Logo : public QWidget {
 public:
  Logo(int side, QWidget* parent);

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace tavlo
