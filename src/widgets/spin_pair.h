// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QWidget>

namespace tavlo {

/// Two small buttons beside a box of a number, for one more and one less. The arrow keys
/// in the box do the same, so the buttons need no focus.
class SpinPair : public QWidget {
  Q_OBJECT

 public:
  /// `spoken` is what the number is: "line".
  SpinPair(const QString& spoken, QWidget* box);

 signals:
  /// 1 for one more, -1 for one less.
  void Pressed(int way);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace tavlo
