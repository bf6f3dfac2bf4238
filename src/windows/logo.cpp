// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/logo.h"

#include <QPainter>

#include "widgets/font_size.h"
#include "widgets/icon_images.h"

namespace tavlo {

Logo::Logo(int side, QWidget* parent) : QWidget(parent) {
  const int scaled = ByFont(fontMetrics(), side);
  setFixedSize(scaled, scaled);
}

void Logo::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  ApplicationIcon().paint(&painter, rect());
}

}  // namespace tavlo
