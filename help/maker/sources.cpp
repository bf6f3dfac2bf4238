// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "maker/sources.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QRegularExpression>
#include <QUrl>

namespace tavlo::help {
namespace {

QString TitleOf(const QString& markdown) {
  static const QRegularExpression heading(QStringLiteral("^# +(.+?) *$"),
                                          QRegularExpression::MultilineOption);
  return heading.match(markdown).captured(1);
}

/// A file that a document names, and where it does.
struct Reference {
  bool is_picture;
  QString target;
  qsizetype line;
};

QList<Reference> ReferencesOf(const QString& markdown) {
  static const QRegularExpression reference(QStringLiteral(R"((!?)\[[^\]]*\]\(<?([^)>]*)>?\))"));
  QList<Reference> found;
  for (auto each = reference.globalMatch(markdown); each.hasNext();) {
    const QRegularExpressionMatch match = each.next();
    const qsizetype line = markdown.left(match.capturedStart()).count(QLatin1Char('\n')) + 1;
    found.append(
        {!match.capturedView(1).isEmpty(), QUrl::fromPercentEncoding(match.captured(2).toUtf8()), line});
  }
  return found;
}

/// Empty if it leads somewhere.
QString ComplaintAbout(const Reference& reference, const QDir& folder) {
  const QFileInfo target(folder.filePath(reference.target));
  if (reference.is_picture) {
    if (QImageReader(target.filePath()).canRead()) return {};
    return QStringLiteral("there is no picture %1").arg(reference.target);
  }
  // The documents stand side by side, before and after they are made.
  const bool beside = target.absoluteDir() == QDir(folder.absolutePath());
  if (beside && target.suffix() == QLatin1String("md") && target.isFile()) return {};
  return QStringLiteral("there is no document %1").arg(reference.target);
}

}  // namespace

Source ReadSource(const QString& path, QStringList& complaints) {
  Source source{.path = path, .name = QFileInfo(path).completeBaseName(), .markdown = {}, .title = {}};
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) {
    complaints += QStringLiteral("%1: %2").arg(path, file.errorString());
    return source;
  }
  source.markdown = QString::fromUtf8(file.readAll());
  source.title = TitleOf(source.markdown);
  complaints += ComplaintsAbout(source);
  return source;
}

QStringList ComplaintsAbout(const Source& source) {
  QStringList complaints;
  if (source.title.isEmpty()) {
    complaints +=
        QStringLiteral("%1:1: the document has no title: no line begins with \"# \"").arg(source.path);
  }
  const QDir folder = QFileInfo(source.path).dir();
  for (const Reference& reference : ReferencesOf(source.markdown)) {
    const QString complaint = ComplaintAbout(reference, folder);
    if (complaint.isEmpty()) continue;
    complaints += QStringLiteral("%1:%2: %3").arg(source.path).arg(reference.line).arg(complaint);
  }
  return complaints;
}

}  // namespace tavlo::help
