// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QToolButton>

namespace tavlo {

/// A tool button that shows a ring while it has the focus; most styles show nothing. The size of its picture
/// follows the font.
class RingedButton : public QToolButton {
  Q_OBJECT

 public:
  /// `picture_size` is the size of the picture beside text 16 high.
  RingedButton(int picture_size, QWidget* parent);

 protected:
  void paintEvent(QPaintEvent* event) override;
  /// Its arrow, if it has one, brings up the menu without an event loop of its own, which would go on under
  /// whatever an entry opens.
  void mousePressEvent(QMouseEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void Measure();

  int picture_size_;
};

}  // namespace tavlo
