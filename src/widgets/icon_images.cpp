// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "widgets/icon_images.h"

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
#include "widgets/drawn_icon.h"

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

/// In all the dots that the painter's screen has there.
int DotsOf(const QPainter& painter, const QRectF& place) {
  return Dots(static_cast<int>(place.width()), painter.device()->devicePixelRatioF());
}

QImage DrawIcon(IconRef icon, int size, qreal scale) {
  const SetLook& look = kLooks[static_cast<int>(icon.set)];
  const int dots = Dots(size, scale);
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

QColor IconTile(IconSet set) {
  return ToQColor(kLooks[static_cast<int>(set)].tile);
}

QColor IconInk(IconSet set) {
  return ToQColor(kLooks[static_cast<int>(set)].ink);
}

const QImage& IconImage(IconRef icon, int size, qreal scale) {
  static std::map<std::tuple<int, int, int, qreal>, QImage> drawn;
  QImage& image = drawn[{icon.row, static_cast<int>(icon.set), size, scale}];
  if (image.isNull()) image = DrawIcon(icon, size, scale);
  return image;
}

QIcon CommandIcon(std::string_view command, const QColor& ink, const QColor& disabled_ink) {
  const QString path = DrawingPath("commands", command);
  return DrawnIcon([=](QPainter& painter, const QRectF& place, QIcon::Mode mode) {
    const QImage drawing = Drawing(path, DotsOf(painter, place));
    painter.drawImage(place, Inked(drawing, mode == QIcon::Disabled ? disabled_ink : ink));
  });
}

QIcon LineIcon(IconRef icon) {
  return DrawnIcon([icon](QPainter& painter, const QRectF& place, QIcon::Mode) {
    const qreal scale = painter.device()->devicePixelRatioF();
    painter.drawImage(place, IconImage(icon, static_cast<int>(place.width()), scale));
  });
}

QIcon GlyphIcon(IconRef icon, const QColor& ink) {
  const QString path = DrawingPath("icons", kIcons[icon.row].glyph);
  return DrawnIcon([=](QPainter& painter, const QRectF& place, QIcon::Mode) {
    painter.drawImage(place, Inked(Drawing(path, DotsOf(painter, place)), ink));
  });
}

QIcon ApplicationIcon() {
  return DrawnIcon([](QPainter& painter, const QRectF& place, QIcon::Mode) {
    painter.drawImage(place, Drawing(QStringLiteral(":/tavlo-composer.svg"), DotsOf(painter, place)));
  });
}

}  // namespace tavlo
