// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QProgressBar>

namespace tavlo {

/// A bar that says how full something is, by its length, by its colour and in words.
class LevelGauge : public QProgressBar {
  Q_OBJECT

 public:
  enum class Level { Low, High, Full };

  explicit LevelGauge(QWidget* parent);

  void Show(int percent, Level level);
  [[nodiscard]] QString text() const override;
  /// The colour of the bar.
  [[nodiscard]] QColor Colour() const;

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  [[nodiscard]] int TextWidth() const;

  Level level_ = Level::Low;
};

}  // namespace tavlo
