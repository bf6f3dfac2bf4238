// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "viewer/document_file.h"

#include <QDir>
#include <QFileInfo>
#include <QPdfDocument>

namespace tavlo::viewer {
namespace {

/// Far beyond every help document. What is larger would keep the operator waiting.
constexpr qint64 kLargestFile = 64 * 1024 * 1024;
constexpr int kMostPages = 2000;
/// In points, either way. The toolkit draws a page as a whole, however large it is: one of a kilometre, or of
/// a hair's width that is fitted to the window, would take all memory.
constexpr double kLeastSide = 100;
constexpr double kLongestSide = 1700;

QString WhyNot(QPdfDocument::Error error) {
  switch (error) {
    case QPdfDocument::Error::None: break;
    case QPdfDocument::Error::FileNotFound: return QStringLiteral("it cannot be read");
    case QPdfDocument::Error::IncorrectPassword:
    case QPdfDocument::Error::UnsupportedSecurityScheme: return QStringLiteral("it is locked by a password");
    case QPdfDocument::Error::Unknown:
    case QPdfDocument::Error::DataNotYetAvailable:
    case QPdfDocument::Error::InvalidFileFormat: return QStringLiteral("it is damaged, or it is no PDF file");
  }
  return {};
}

bool HasUsualPages(QPdfDocument& document) {
  const auto is_usual = [](double side) { return side >= kLeastSide && side <= kLongestSide; };
  for (int page = 0; page < document.pageCount(); ++page) {
    const QSizeF size = document.pagePointSize(page);
    if (!is_usual(size.width()) || !is_usual(size.height())) return false;
  }
  return true;
}

QString Refusal(QPdfDocument& document, const QFileInfo& file) {
  if (!file.exists()) return QStringLiteral("there is no such file");
  if (!file.isFile()) return QStringLiteral("it is no file");
  if (!file.isReadable()) return QStringLiteral("you may not read it");
  if (file.size() > kLargestFile) return QStringLiteral("it is too large for a help document");
  if (const QString why = WhyNot(document.load(file.filePath())); !why.isEmpty()) return why;
  if (document.pageCount() < 1) return QStringLiteral("it is damaged, or it is no PDF file");
  if (document.pageCount() > kMostPages) return QStringLiteral("it has too many pages for a help document");
  if (!HasUsualPages(document)) return QStringLiteral("a page of it is too large or too small");
  return {};
}

}  // namespace

QString OpenDocument(QPdfDocument& document, const QString& path) {
  document.close();
  const QString why = Refusal(document, QFileInfo(path));
  if (why.isEmpty()) return {};
  document.close();
  return QStringLiteral("%1 cannot be shown: %2.").arg(QDir::toNativeSeparators(path), why);
}

QString TitleOf(const QPdfDocument& document, const QString& path) {
  const QString title = document.metaData(QPdfDocument::MetaDataField::Title).toString().simplified();
  return title.isEmpty() ? QFileInfo(path).completeBaseName() : title;
}

}  // namespace tavlo::viewer
