// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "widgets/takes_input.h"

#include <QApplication>
#include <QWidget>

namespace tavlo {

bool TakesInput(const QWidget& widget) {
  if (!widget.isVisible() || !widget.isEnabled()) return false;
  const QWidget* modal = QApplication::activeModalWidget();
  return modal == nullptr || modal->window() == widget.window();
}

}  // namespace tavlo
