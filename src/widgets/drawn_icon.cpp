// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "widgets/drawn_icon.h"

#include <QIconEngine>
#include <QPainter>
#include <QPixmap>
#include <utility>

namespace tavlo {
namespace {

class DrawnIconEngine : public QIconEngine {
 public:
  explicit DrawnIconEngine(DrawPicture draw) : draw_(std::move(draw)) {}

  void paint(QPainter* painter, const QRect& place, QIcon::Mode mode, QIcon::State) override {
    draw_(*painter, place, mode);
  }
  /// `size` is in dots: what asks for it has taken the screen's scale into it.
  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State) override {
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    draw_(painter, QRectF(QPointF(0, 0), QSizeF(size)), mode);
    return pixmap;
  }
  [[nodiscard]] QIconEngine* clone() const override { return new DrawnIconEngine(draw_); }

 private:
  DrawPicture draw_;
};

}  // namespace

QIcon DrawnIcon(DrawPicture draw) {
  return QIcon(new DrawnIconEngine(std::move(draw)));
}

}  // namespace tavlo
