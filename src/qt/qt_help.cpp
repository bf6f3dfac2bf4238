// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "qt/qt_help.h"

#include <QFileInfo>
#include <QProcess>
#include <cerrno>

namespace tavlo {
namespace {

/// A machine so slow that this does not suffice may still show the document.
constexpr int kVersionMs = 1000;
/// What shells add to the signal that ended a program.
constexpr int kSignal = 128;

/// Starts the viewer for its version alone. One that lacks a library dies at that, and a viewer that dies
/// after it was sent its document tells nobody.
int ErrorOf(const QString& viewer) {
  QProcess asked;
  asked.setStandardInputFile(QProcess::nullDevice());
  asked.start(viewer, {QStringLiteral("--version")});
  if (!asked.waitForStarted()) return ENOEXEC;
  if (!asked.waitForFinished(kVersionMs)) {
    asked.kill();
    asked.waitForFinished(kVersionMs);
    return 0;
  }
  return asked.exitStatus() == QProcess::NormalExit ? asked.exitCode() : kSignal + asked.exitCode();
}

}  // namespace

QString QtHelp::Viewer() const {
#ifdef Q_OS_WIN
  return folder_ + QStringLiteral("/OskelHelp.exe");
#else
  return folder_ + QStringLiteral("/OskelHelp");
#endif
}

QString QtHelp::HelpPath() const {
  return folder_ + QStringLiteral("/Help/");
}

int QtHelp::StartViewer() {
  // It comes up with its document; until then it is enough that it can.
  const QFileInfo viewer(Viewer());
  if (!viewer.isFile()) return ENOENT;
  if (!viewer.isExecutable()) return EACCES;
  if (!runs_) {
    if (const int error = ErrorOf(viewer.filePath()); error != 0) return error;
  }
  runs_ = true;
  return 0;
}

bool QtHelp::SetIndex(std::string_view file) {
  const QString path = HelpPath() + QString::fromLatin1(file.data(), static_cast<qsizetype>(file.size()));
  return QFileInfo(path).isFile() && QProcess::startDetached(Viewer(), {path});
}

}  // namespace tavlo
