// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "qt/qt_services.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QSettings>
#include <QTime>
#include <QTimer>
#include <cmath>

namespace tavlo {
namespace {

QString Text(std::string_view bytes) {
  return QString::fromLatin1(bytes.data(), static_cast<qsizetype>(bytes.size()));
}

constexpr char kOrganization[] = "Tavlo";

}  // namespace

double QtClock::Timer() {
  return QTime::currentTime().msecsSinceStartOfDay() / 1000.0;
}

void QtEventLoop::Yield() {
  QCoreApplication::processEvents();
}

void QtEventLoop::YieldFor(double seconds) {
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

std::optional<std::string> QtFileStore::Replace(const std::string& path, std::string_view bytes) {
  const QString name = QFile::decodeName(path.c_str());
  // A rename over a device would take the device away.
  if (const QFileInfo info(name); info.exists() && !info.isFile()) return path + " is not a file";
  QSaveFile file(name);
  const auto size = static_cast<qint64>(bytes.size());
  const bool written =
      file.open(QIODevice::WriteOnly) && file.write(bytes.data(), size) == size && file.commit();
  if (written) return std::nullopt;
  return file.errorString().toStdString();
}

std::optional<std::string> QtFileStore::Read(const std::string& path, std::size_t limit) {
  const QString name = QFile::decodeName(path.c_str());
  QFile file(name);
  if (QFileInfo(name).isDir() || !file.open(QIODevice::ReadOnly)) return std::nullopt;
  return file.read(static_cast<qint64>(limit)).toStdString();
}

}  // namespace tavlo
