// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QStringList>
#include <QWidget>

namespace tavlo {

/// A picture of the operator terminal's display with a text on it. The lines that are kept free for an entry
/// are hatched.
class DisplayPicture : public QWidget {
  Q_OBJECT

 public:
  DisplayPicture(int columns, int lines, QWidget* parent);

  void Show(const QStringList& text, int lines_for_text);

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void changeEvent(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  [[nodiscard]] QRect Cell(int column, int line) const;

  int columns_;
  int lines_;
  QStringList text_;
  int lines_for_text_ = 0;
};

}  // namespace tavlo
