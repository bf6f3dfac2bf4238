// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QString>
#include <QStringList>

namespace tavlo::testing {

/// Writes a document whose pages show these texts, each from 72 points below and beside the upper left corner
/// on; a line feed begins a line.
inline void WriteDocument(const QString& path, const QString& title, const QStringList& pages,
                          const QPageSize& size = QPageSize(QPageSize::A4)) {
  constexpr int kDotsPerPoint = 10;
  QPdfWriter writer(path);
  writer.setTitle(title);
  writer.setResolution(72 * kDotsPerPoint);
  writer.setPageSize(size);
  writer.setPageMargins({});
  QPainter painter(&writer);
  QFont font(QStringLiteral("Liberation Sans"));
  font.setPointSizeF(18);
  painter.setFont(font);
  for (qsizetype page = 0; page < pages.size(); ++page) {
    if (page > 0) writer.newPage();
    painter.drawText(QRect(QPoint(72, 72) * kDotsPerPoint, QSize(450, 700) * kDotsPerPoint),
                     Qt::AlignLeft | Qt::AlignTop, pages[page]);
  }
}

}  // namespace tavlo::testing
