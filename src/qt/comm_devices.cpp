// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "qt/comm_devices.h"

#include <QDir>
#include <QFileInfo>
#include <QStringList>
#ifdef Q_OS_WIN
#include <QSerialPortInfo>
#include <algorithm>
#else
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace tavlo {
namespace {

/// Changes come in bundles: a device, its links and their rights.
constexpr int kRestMs = 100;

#ifndef Q_OS_WIN

constexpr const char* kOwnFolder = "/tavlo-composer";
constexpr mode_t kOpenToOthers = S_IWGRP | S_IWOTH;

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

bool IsFolderOfThisUser(const std::string& path, mode_t open_to_others = 0) {
  struct stat status {};
  return path.starts_with('/') && stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode) &&
         status.st_uid == getuid() && (status.st_mode & open_to_others) == 0;
}

/// Why the link may stand where it was not looked for; empty when it was looked for in the right place.
std::string DoubtAbout(const std::string& link, const std::string& folder) {
  if (!folder.ends_with(kOwnFolder)) {
    const bool is_set = qEnvironmentVariableIsSet("XDG_RUNTIME_DIR");
    return std::string("XDG_RUNTIME_DIR ") + (is_set ? "names no folder of this user" : "is not set") +
           ", so the link " + link + " was looked for in " + folder + " alone";
  }
  if (!QFileInfo::exists(QString::fromStdString(folder)) || IsFolderOfThisUser(folder, kOpenToOthers))
    return {};
  return "others can write in " + folder + ", so its link " + link + " was not followed";
}

#endif

}  // namespace

std::string CommFolder(const std::string& user_folders) {
#ifdef Q_OS_WIN
  static_cast<void>(user_folders);
  return QDir::tempPath().toStdString();
#else
  const std::string uid = std::to_string(getuid());
  const std::string runtime = qgetenv("XDG_RUNTIME_DIR").toStdString();
  const std::string of_user = user_folders + "/" + uid;
  if (IsFolderOfThisUser(runtime)) return runtime + kOwnFolder;
  if (IsFolderOfThisUser(of_user)) return of_user + kOwnFolder;
  return "/tmp/tavlo-composer-" + uid;
#endif
}

CommDevice LookAtComm(int number, const std::string& user_folders) {
#ifdef Q_OS_WIN
  static_cast<void>(user_folders);
  const QString name = QStringLiteral("COM%1").arg(number);
  const auto ports = QSerialPortInfo::availablePorts();
  const bool there = std::any_of(ports.begin(), ports.end(),
                                 [&](const QSerialPortInfo& port) { return port.portName() == name; });
  return {name.toStdString(), there, ""};
#else
  const std::string folder = CommFolder(user_folders);
  const std::string link = folder + "/comm" + std::to_string(number);
  const bool followed = IsFolderOfThisUser(folder, kOpenToOthers);
  if (followed && QFileInfo::exists(QString::fromStdString(link))) return {link, true, ""};
  const std::string doubt = DoubtAbout("comm" + std::to_string(number), folder);
  const QString made = "/dev/tavlo-comm" + QString::number(number);
  if (QFileInfo::exists(made)) return {made.toStdString(), true, doubt};
  const QStringList devices = SerialDevices();
  const bool there = number >= 1 && number <= devices.size();
  return {there ? devices[number - 1].toStdString() : link, there, doubt};
#endif
}

std::string CommDeviceFor(int number) {
  return LookAtComm(number).device;
}

QtCommDevices::QtCommDevices() {
  rest_.setSingleShot(true);
  rest_.setInterval(kRestMs);
  connect(&watcher_, &QFileSystemWatcher::directoryChanged, &rest_, [this] {
    if (!rest_.isActive()) rest_.start();
  });
  connect(&rest_, &QTimer::timeout, this, [this] {
    Watch();
    if (OnChange) OnChange();
  });
  Watch();
}

/// A folder that is not there yet is awaited in the one above it.
void QtCommDevices::Watch() {
  const QString links = QString::fromStdString(CommFolder());
  const QString links_or_above = QFileInfo(links).isDir() ? links : QFileInfo(links).path();
  for (const QString& folder : {links_or_above, QStringLiteral("/dev"), QStringLiteral("/dev/pts")}) {
    if (QFileInfo(folder).isDir() && !watcher_.directories().contains(folder)) watcher_.addPath(folder);
  }
}

}  // namespace tavlo
