// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "qt/qt_services.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QTimer>
#include <cmath>
#include <utility>

#ifdef Q_OS_UNIX
#include "qt/file_replacement.h"
#else
#include <QSaveFile>
#endif

namespace tavlo {
namespace {

QString Text(std::string_view bytes) {
  return QString::fromLatin1(bytes.data(), static_cast<qsizetype>(bytes.size()));
}

constexpr char kOrganization[] = "Tavlo";

}  // namespace

double QtClock::Timer() {
  constexpr std::int64_t kMinute = 60000;
  constexpr std::int64_t kDay = 24 * 60 * kMinute;
  const std::int64_t now = QDateTime::currentMSecsSinceEpoch();
  // Zones change their offset at the turn of a minute.
  if (now / kMinute != std::exchange(minute_, now / kMinute)) {
    offset_ms_ = QDateTime::fromMSecsSinceEpoch(now).offsetFromUtc() * std::int64_t{1000};
  }
  return static_cast<double>((now + offset_ms_ + kDay) % kDay) / 1000.0;
}

void QtEventLoop::Yield() {
  QCoreApplication::processEvents();
}

void QtEventLoop::WaitSecs(double seconds) {
  QEventLoop loop;
  QTimer::singleShot(static_cast<int>(std::ceil(seconds * 1000)), Qt::PreciseTimer, &loop, &QEventLoop::quit);
  loop.exec();
}

std::string QtSettingsStore::Get(std::string_view application, std::string_view section, std::string_view key,
                                 std::string_view fallback) {
  const QSettings settings(kOrganization, Text(application));
  return settings.value(Text(section) + '/' + Text(key), Text(fallback)).toString().toStdString();
}

void QtSettingsStore::Save(std::string_view application, std::string_view section, std::string_view key,
                           std::string_view value) {
  QSettings settings(kOrganization, Text(application));
  settings.setValue(Text(section) + '/' + Text(key), Text(value));
}

#ifdef Q_OS_UNIX
Outcome QtFileStore::Replace(const std::string& path, std::string_view bytes) {
  return ReplaceFile(path, bytes);
}
#else
Outcome QtFileStore::Replace(const std::string& path, std::string_view bytes) {
  const QString name = QFile::decodeName(path.c_str());
  if (const QFileInfo info(name); info.exists() && !info.isFile())
    return Outcome::Failed(path + " is not a file");
  QSaveFile file(name);
  const auto size = static_cast<qint64>(bytes.size());
  // Unbuffered: bytes that were still in a buffer at the commit could fail silently.
  const bool written = file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) &&
                       file.write(bytes.data(), size) == size && file.commit();
  return written ? Outcome() : Outcome::Failed(file.errorString().toStdString());
}
#endif

std::optional<std::string> QtFileStore::Read(const std::string& path, std::size_t limit) {
  const QString name = QFile::decodeName(path.c_str());
  QFile file(name);
  if (QFileInfo(name).isDir() || !file.open(QIODevice::ReadOnly)) return std::nullopt;
  const QByteArray bytes = file.read(static_cast<qint64>(limit));
  // A file of which only half was read must not pass for a damaged one.
  if (file.error() != QFileDevice::NoError) return std::nullopt;
  return bytes.toStdString();
}

}  // namespace tavlo
