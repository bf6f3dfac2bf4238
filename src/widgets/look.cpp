// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "widgets/look.h"

#include <QApplication>
#include <QFont>
#include <QStringList>

namespace tavlo {
namespace {

constexpr qreal kPointSize = 10;

/// What the toolkit falls back on when it finds no desktop to ask.
const QStringList kFallbackFamilies = {QStringLiteral("Sans Serif"), QStringLiteral("DejaVu Sans"),
                                       QString()};

}  // namespace

void SetLook(QApplication& application) {
  if (!kFallbackFamilies.contains(application.font().family())) return;
  QFont font;
  font.setFamilies({QStringLiteral("Liberation Sans"), QStringLiteral("Arial"), QStringLiteral("Helvetica")});
  font.setPointSizeF(kPointSize);
  QApplication::setFont(font);
}

}  // namespace tavlo
