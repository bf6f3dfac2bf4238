// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QLabel>

namespace tavlo {

/// The text of a program line on one row of fixed length. A text that does not fit ends in an ellipsis, and
/// the tool tip shows it whole.
class LineText : public QLabel {
 public:
  /// `characters`: how much of a text it shows at least, of letters as they come on average.
  LineText(int characters, QWidget* parent);

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  [[nodiscard]] QString Fitting() const;

  int characters_;
};

}  // namespace tavlo
