// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "widgets/selection.h"

#include <QApplication>
#include <QPalette>
#include <QWidget>

#include "widgets/contrast.h"

namespace tavlo {

void MakeSelectionStandOut(QWidget& box) {
  const QPalette desktop = QApplication::palette(&box);
  const QColor ground =
      StandOut(desktop.color(QPalette::Highlight), desktop.color(QPalette::HighlightedText), kTextContrast);
  if (box.palette().color(QPalette::Highlight) == ground) return;
  QPalette own = box.palette();
  own.setColor(QPalette::Highlight, ground);
  box.setPalette(own);
}

}  // namespace tavlo
