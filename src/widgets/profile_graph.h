// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QWidget>
#include <array>
#include <optional>

#include "motion/graph.h"

class QLabel;

namespace tavlo {

/// The picture of a velocity profile: grid, curve, an output's trace, and the labels of the ticks. It is laid
/// out anew at each size.
class ProfileGraph : public QWidget {
  Q_OBJECT

 public:
  explicit ProfileGraph(QWidget* parent);

  /// Shows a curve and, where the move sets an output, its trace; see GraphDraw().
  void Show(const Series& curve, const std::optional<Series>& trace, const QString& x_caption,
            const QString& y_caption);

  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  static constexpr std::size_t kTicks = 7;

  void LayOut();
  void PlaceTicks();

  Series curve_;
  std::optional<Series> trace_;
  Graph graph_;
  std::array<QLabel*, kTicks> x_labels_{};
  std::array<QLabel*, kTicks> y_labels_{};
  QLabel* x_caption_;
  QLabel* y_caption_;
  QLabel* high_;
  QLabel* low_;
};

}  // namespace tavlo
