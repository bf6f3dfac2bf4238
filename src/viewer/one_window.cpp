// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "viewer/one_window.h"

#include <QDir>
#include <QFile>
#include <QLocalSocket>
#include <QLockFile>
#include <QStandardPaths>
#include <utility>

namespace tavlo::viewer {
namespace {

constexpr int kAnswerMs = 2000;
/// How long two viewers that are started at once wait for each other.
constexpr int kStartMs = 3000;
/// A path ends with it, for no path contains it.
constexpr char kEnd = '\0';
constexpr qsizetype kLongestPath = 64 * 1024;
constexpr char kShown = 'Y';
constexpr QFile::Permissions kForThisUserAlone = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner |
                                                 QFile::ReadUser | QFile::WriteUser | QFile::ExeUser;

/// Makes the folder if need be. Returns whether nobody else can reach what is in it.
bool IsOurs(const QString& folder) {
  if (folder.isEmpty() || !QDir().mkpath(folder)) return false;
#ifdef Q_OS_WIN
  return true;
#else
  // Only its owner can do that.
  return QFile::setPermissions(folder, kForThisUserAlone);
#endif
}

QString ServerIn(const QString& folder) {
#ifdef Q_OS_WIN
  return QStringLiteral("OskelHelp-") + QString::number(qHash(folder, 0));
#else
  return folder + QStringLiteral("/help");
#endif
}

}  // namespace

QString FolderOfThisUser() {
  const QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
  return folder.isEmpty() ? QString() : folder + QStringLiteral("/tavlo-composer");
}

OneWindow::OneWindow(QString folder) : folder_(std::move(folder)) {
  server_.setSocketOptions(QLocalServer::UserAccessOption);
  QObject::connect(&server_, &QLocalServer::newConnection, &server_, [this] {
    while (QLocalSocket* later = server_.nextPendingConnection()) Take(*later);
  });
}

bool OneWindow::HandOver(const QString& document) {
  if (!IsOurs(folder_)) return false;
  const QString server = ServerIn(folder_);
  // Of two that are started at once, the second finds the first one serving.
  QLockFile turn(folder_ + QStringLiteral("/help.lock"));
  const bool in_turn = turn.tryLock(kStartMs);
  if (HandedTo(server, document)) return true;
  if (in_turn) Serve(server);
  return false;
}

bool OneWindow::HandedTo(const QString& server, const QString& document) const {
  QLocalSocket socket;
  socket.connectToServer(server);
  if (!socket.waitForConnected(kAnswerMs)) return false;
  socket.write(document.toUtf8() + kEnd);
  char answer = 0;
  return socket.waitForBytesWritten(kAnswerMs) && socket.waitForReadyRead(kAnswerMs) &&
         socket.read(&answer, 1) == 1 && answer == kShown;
}

void OneWindow::Serve(const QString& server) {
  // A viewer that was killed leaves its socket behind.
  QLocalServer::removeServer(server);
  server_.listen(server);
}

void OneWindow::Take(QLocalSocket& later) {
  QObject::connect(&later, &QLocalSocket::disconnected, &later, &QObject::deleteLater);
  const auto read = [this, &later] {
    if (later.bytesAvailable() > kLongestPath) return later.abort();
    if (!later.peek(later.bytesAvailable()).contains(kEnd)) return;
    const QByteArray path = later.readAll();
    if (OnDocument) OnDocument(QString::fromUtf8(path.left(path.indexOf(kEnd))));
    later.write(&kShown, 1);
    later.flush();
    later.disconnectFromServer();
  };
  QObject::connect(&later, &QLocalSocket::readyRead, &later, read);
  read();
}

}  // namespace tavlo::viewer
