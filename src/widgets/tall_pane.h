// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QScrollArea>

namespace tavlo {

/// Shows a pane at its own width or wider, and scrolls it vertically if there is too little height for it.
class TallPane : public QScrollArea {
  Q_OBJECT

 public:
  /// Takes ownership of the pane. `name` is what a screen reader says for the whole.
  TallPane(QWidget* pane, const QString& name, QWidget* parent);
  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  [[nodiscard]] int Width() const;
};

}  // namespace tavlo
