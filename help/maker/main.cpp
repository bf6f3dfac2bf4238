// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
//
// make-help FOLDER SOURCE.md...
// Makes FOLDER/SOURCE.pdf of each help document, or says what is wrong with them and makes none.
#include <QDir>
#include <QGuiApplication>
#include <QHashFunctions>
#include <QSaveFile>
#include <cstdio>

#include "maker/pdf.h"
#include "maker/sources.h"

namespace {

int Fail(const QString& sentence) {
  std::fputs(qPrintable(sentence + QLatin1Char('\n')), stderr);
  return 1;
}

}  // namespace

int main(int argc, char** argv) {
  // The order in which the toolkit walks its tables is that of what it writes.
  QHashSeed::setDeterministicGlobalSeed();
  const QGuiApplication application(argc, argv);
  const QStringList arguments = QGuiApplication::arguments();
  if (arguments.size() < 3) return Fail(QStringLiteral("usage: make-help FOLDER SOURCE.md..."));

  QStringList complaints;
  QList<tavlo::help::Source> sources;
  for (const QString& path : arguments.mid(2)) sources += tavlo::help::ReadSource(path, complaints);
  if (!complaints.isEmpty()) return Fail(complaints.join(QLatin1Char('\n')));

  const QDir folder(arguments.at(1));
  if (!folder.mkpath(QStringLiteral("."))) return Fail(folder.path() + QStringLiteral(" cannot be made"));
  for (const tavlo::help::Source& source : sources) {
    const QByteArray pdf = tavlo::help::MakePdf(source);
    QSaveFile file(folder.filePath(source.name + QStringLiteral(".pdf")));
    if (!file.open(QIODevice::WriteOnly) || file.write(pdf) != pdf.size() || !file.commit()) {
      return Fail(file.fileName() + QStringLiteral(": ") + file.errorString());
    }
  }
  return 0;
}
