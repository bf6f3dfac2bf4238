// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QColor>
#include <QWidget>
#include <array>

#include "session/desk.h"
#include "windows/row_geometry.h"

class QPainter;

namespace tavlo {

/// Colours of the connecting lines. Each has enough contrast with a light pane and with a dark one.
[[nodiscard]] const std::array<QColor, kArrowColours>& ArrowColours();

/// `ArrowZone`: draws jumps, branches and loops as lines from the row that jumps to its target, each in its
/// lane. Those that leave the current row or come in there lie over the others, which are paler then.
class ArrowZone : public QWidget {
  Q_OBJECT

 public:
  ArrowZone(const Source& source, const RowGeometry& geometry, QWidget* parent);

  /// Returns the distance of an arrow's lane from the left edge.
  [[nodiscard]] static double LaneX(const Arrow& arrow);
  void SetCurrentRow(int line);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  [[nodiscard]] bool IsOwn(const Arrow& arrow) const;
  [[nodiscard]] bool AnyOwn() const;
  /// Draws an arrow and gives way to none below it.
  void PaintOwn(QPainter& painter, const Arrow& arrow) const;
  void Paint(QPainter& painter, const Arrow& arrow, const QColor& colour, int line_width) const;

  const Source& source_;
  const RowGeometry& geometry_;
  int current_ = 0;
};

}  // namespace tavlo
