// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QScrollArea>

namespace tavlo {

/// Shows a pane at its natural size, and scrolls it where the screen has too little room for the window.
class FittedPane : public QScrollArea {
  Q_OBJECT

 public:
  /// Takes ownership of the pane. `name` is what a screen reader says for the whole.
  FittedPane(QWidget* pane, const QString& name, QWidget* parent);
  /// Whether the screen has room for a window with the whole pane.
  [[nodiscard]] static bool HasRoomFor(const QWidget& pane);
  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace tavlo
