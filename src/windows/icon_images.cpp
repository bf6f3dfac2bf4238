// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/icon_images.h"

#include <QImage>
#include <QPainter>
#include <QRectF>
#include <QString>
#include <QSvgRenderer>
#include <array>
#include <cmath>
#include <map>
#include <tuple>

#include "qt/gui/shown_text.h"

// The drawings are compiled into this library, which a linker would otherwise leave out. Outside the
// namespace, as Qt asks.
static void LoadDrawings() {
  Q_INIT_RESOURCE(tavlo_composer);
}

namespace tavlo {
namespace {

/// How a set is made from a glyph.
struct SetLook {
  Colour tile;
  Colour ink;
  std::string_view badge;
};
constexpr Colour kDarkInk = {31, 45, 61};
constexpr std::array<SetLook, kIconSets> kLooks = {{
    {{255, 255, 255}, kDarkInk, ""},
    {kDarkInk, {255, 255, 255}, "picked"},
    {{255, 255, 128}, kDarkInk, "yellow"},
    {{255, 192, 192}, kDarkInk, "red"},
    {{170, 255, 255}, kDarkInk, "cyan"},
}};

QColor ToQColor(Colour colour) {
  return {colour.red, colour.green, colour.blue};
}

QString DrawingPath(std::string_view folder, std::string_view name) {
  return QStringLiteral(":/") + FromText(folder) + QLatin1Char('/') + FromText(name) + QStringLiteral(".svg");
}

QImage Drawing(const QString& path, int dots) {
  static const bool loaded = (LoadDrawings(), true);
  static_cast<void>(loaded);
  QImage image(dots, dots, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  QSvgRenderer(path).render(&painter, QRectF(0, 0, dots, dots));
  return image;
}

QImage Inked(QImage drawing, const QColor& ink) {
  QPainter painter(&drawing);
  painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
  painter.fillRect(drawing.rect(), ink);
  return drawing;
}

int Dots(int size, qreal scale) {
  return static_cast<int>(std::ceil(size * scale));
}

QPixmap ToPixmap(const QImage& image, qreal scale) {
  QPixmap pixmap = QPixmap::fromImage(image);
  pixmap.setDevicePixelRatio(scale);
  return pixmap;
}

QImage DrawIcon(IconRef icon, qreal scale) {
  const SetLook& look = kLooks[static_cast<int>(icon.set)];
  const int dots = Dots(kIconSize, scale);
  QImage image(dots, dots, QImage::Format_ARGB32_Premultiplied);
  image.fill(ToQColor(look.tile));
  QPainter painter(&image);
  const QImage glyph = Drawing(DrawingPath("icons", kIcons[icon.row].glyph), dots);
  painter.drawImage(0, 0, icon.set == IconSet::Picked ? Inked(glyph, ToQColor(look.ink)) : glyph);
  if (!look.badge.empty()) painter.drawImage(0, 0, Drawing(DrawingPath("badges", look.badge), dots));
  painter.end();
  image.setDevicePixelRatio(scale);
  return image;
}

}  // namespace

const QImage& IconImage(IconRef icon, qreal scale) {
  static std::map<std::tuple<int, int, qreal>, QImage> drawn;
  QImage& image = drawn[{icon.row, static_cast<int>(icon.set), scale}];
  if (image.isNull()) image = DrawIcon(icon, scale);
  return image;
}

QPixmap CommandImage(std::string_view command, const QColor& ink, int size, qreal scale) {
  return ToPixmap(Inked(Drawing(DrawingPath("commands", command), Dots(size, scale)), ink), scale);
}

QPixmap ApplicationImage(int size, qreal scale) {
  return ToPixmap(Drawing(QStringLiteral(":/tavlo-composer.svg"), Dots(size, scale)), scale);
}

}  // namespace tavlo
