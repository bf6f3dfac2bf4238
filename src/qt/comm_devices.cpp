// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "qt/comm_devices.h"

#include <QDir>
#include <QFileInfo>
#include <QStringList>
#ifndef Q_OS_WIN
#include <unistd.h>
#endif

namespace tavlo {
namespace {

/// The serial devices of a machine, in the order in which they get numbers.
QStringList SerialDevices() {
  QStringList devices;
  const auto add = [&devices](const char* pattern, int count) {
    for (int i = 0; i < count; ++i) {
      const QString path = QString::fromLatin1(pattern) + QString::number(i);
      if (QFileInfo::exists(path)) devices += path;
    }
  };
  add("/dev/ttyUSB", 4);
  add("/dev/ttyACM", 4);
  add("/dev/ttyS", 8);
  return devices;
}

}  // namespace

std::string CommFolder() {
  const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
  if (!runtime.isEmpty() && QFileInfo(runtime).isDir()) return (runtime + "/tavlo-composer").toStdString();
#ifdef Q_OS_WIN
  return QDir::tempPath().toStdString();
#else
  return "/tmp/tavlo-composer-" + std::to_string(getuid());
#endif
}

std::string CommDeviceFor(int number) {
#ifdef Q_OS_WIN
  return "COM" + std::to_string(number);
#else
  const std::string link = CommFolder() + "/comm" + std::to_string(number);
  const QString made = "/dev/tavlo-comm" + QString::number(number);
  if (QFileInfo::exists(QString::fromStdString(link))) return link;
  if (QFileInfo::exists(made)) return made.toStdString();
  const QStringList devices = SerialDevices();
  return number >= 1 && number <= devices.size() ? devices[number - 1].toStdString() : link;
#endif
}

}  // namespace tavlo
