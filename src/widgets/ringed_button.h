// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QToolButton>

namespace tavlo {

/// A tool button that shows by a ring that it has the focus; most styles show nothing there. Its picture is
/// as large as the font asks for.
class RingedButton : public QToolButton {
  Q_OBJECT

 public:
  /// `picture_size` is that beside a text 16 high.
  RingedButton(int picture_size, QWidget* parent);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void Measure();

  int picture_size_;
};

}  // namespace tavlo
