// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "qt/gui/shown_text.h"

#include <QFile>
#include <QStringDecoder>

namespace tavlo {
namespace {

QByteArrayView BytesOf(std::string_view text) {
  return {text.data(), static_cast<qsizetype>(text.size())};
}

}  // namespace

QString FromText(std::string_view text) {
  return QString::fromLatin1(BytesOf(text));
}

QString InOneLine(std::string_view text) {
  QString shown = FromText(text);
  for (QChar& c : shown) {
    if (c.unicode() < 0x20 || c.unicode() == 0x7f) c = QLatin1Char(' ');
  }
  return shown;
}

std::string ToText(const QString& text) {
  return text.toLatin1().toStdString();
}

QString FromPath(std::string_view path) {
  return QFile::decodeName(BytesOf(path).toByteArray());
}

std::string ToPath(const QString& path) {
  return QFile::encodeName(path).toStdString();
}

QString FromMessage(std::string_view message) {
  QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
  const QString text = decoder(BytesOf(message));
  return decoder.hasError() ? FromText(message) : text;
}

}  // namespace tavlo
