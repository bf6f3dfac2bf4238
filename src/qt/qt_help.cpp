// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "qt/qt_help.h"

#include <QFileInfo>
#include <QProcess>
#include <cerrno>

namespace tavlo {

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
  return viewer.isExecutable() ? 0 : EACCES;
}

bool QtHelp::SetIndex(std::string_view file) {
  const QString path = HelpPath() + QString::fromLatin1(file.data(), static_cast<qsizetype>(file.size()));
  return QFileInfo(path).isFile() && QProcess::startDetached(Viewer(), {path});
}

}  // namespace tavlo
