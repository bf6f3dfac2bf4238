// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <QWidget>

namespace tavlo::hubsim {

/// A motor's shaft: a hand that turns clockwise with the position and points up at 0. It is pale while the
/// motor has no current.
class Dial : public QWidget {
 public:
  /// `owner` is whose shaft it is, as "axis 3".
  Dial(const QString& owner, QWidget* parent);
  void Show(double revolutions, bool powered);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  double angle_ = 0;  ///< degrees, 0..360
  bool powered_ = false;
};

}  // namespace tavlo::hubsim
