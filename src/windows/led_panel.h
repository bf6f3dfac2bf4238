// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QGroupBox>
#include <QLabel>
#include <array>
#include <vector>

#include "session/desk.h"

namespace tavlo {

/// One light. Inputs and outputs are round, limit switches are diamonds; on is filled, off is hollow, and a
/// question mark is what the drive does not report. So it can be read without its colour. To a screen reader
/// it is a text: its name.
class LedLight : public QLabel {
  Q_OBJECT

 public:
  explicit LedLight(QWidget* parent);
  /// `name` says what the light is and shows.
  void Show(Led led, const QString& name);
  [[nodiscard]] Led Shown() const { return led_; }
  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  Led led_ = Led::GreenOff;
};

/// "Input/Output Status" in both run windows: a column of lights for each axis.
class LedPanel : public QGroupBox {
  Q_OBJECT

 public:
  explicit LedPanel(QWidget* parent);
  /// Shows the lights that this hub and its drives have.
  void Arrange(const Program& program);
  /// Repaints the lights of an axis.
  void ShowAxis(const Source& source, int axis);
  [[nodiscard]] LedLight* Light(LedRow row, int axis, int bit) const;

 private:
  std::vector<QLabel*> headings_;
  /// By `LedRow`: the title of the row, and the captions to the left of its bits.
  std::array<QLabel*, kLedRows.size()> titles_{};
  std::array<std::vector<QLabel*>, kLedRows.size()> captions_;
  /// By `LedRow`, axis and bit.
  std::array<std::array<std::vector<LedLight*>, kAxes>, kLedRows.size()> lights_;
};

}  // namespace tavlo
