// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QWidget>

#include "windows/row_geometry.h"

namespace tavlo {

/// `ProgCounter`: a pointer whose tip is at the middle of its row. Hidden at first.
class ProgCounterMarker : public QWidget {
  Q_OBJECT

 public:
  explicit ProgCounterMarker(QWidget* parent);
  void StandAt(const RowGeometry& geometry, int line);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  int tip_ = 0;
};

}  // namespace tavlo
