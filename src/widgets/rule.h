// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QFrame>
#include <QPalette>

namespace tavlo {

/// A quiet line between groups, in a grey that suits light and dark windows.
class Rule : public QFrame {
 public:
  Rule(QFrame::Shape shape, QWidget* parent) : QFrame(parent) {
    setFrameStyle(static_cast<int>(shape) | QFrame::Plain);
    QPalette quiet = palette();
    quiet.setColor(QPalette::WindowText, QColor(128, 128, 128, 120));
    setPalette(quiet);
  }
};

}  // namespace tavlo
