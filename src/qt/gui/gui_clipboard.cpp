// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "qt/gui/gui_clipboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

namespace tavlo {

void GuiClipboard::Put(std::string_view kept, std::string_view plain) {
  auto* data = new QMimeData;
  data->setData(QLatin1String(kType), QByteArray(kept.data(), static_cast<qsizetype>(kept.size())));
  data->setText(QString::fromUtf8(plain.data(), static_cast<qsizetype>(plain.size())));
  // Takes it over.
  QGuiApplication::clipboard()->setMimeData(data);
}

std::optional<std::string> GuiClipboard::Kept() {
  const QMimeData* data = QGuiApplication::clipboard()->mimeData();
  if (data == nullptr || !data->hasFormat(QLatin1String(kType))) return std::nullopt;
  return data->data(QLatin1String(kType)).toStdString();
}

}  // namespace tavlo
