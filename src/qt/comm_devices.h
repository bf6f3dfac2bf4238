// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QFileSystemWatcher>
#include <QObject>
#include <QTimer>
#include <string>

#include "platform/comm_devices.h"

namespace tavlo {

/// Where the system keeps a folder for each user who is signed in.
inline constexpr const char* kUserFolders = "/run/user";

/// Returns the folder of the comm links, which the simulated hub finds in the same way: tavlo-composer in
/// XDG_RUNTIME_DIR, or else in this user's folder below `user_folders` if that belongs to this user, or else
/// tavlo-composer-{uid} in /tmp. TMPDIR is ignored, so that all programs agree on the folder.
[[nodiscard]] std::string CommFolder(const std::string& user_folders = kUserFolders);

/// Returns what Comm `number` (1..8) stands for now.
///
/// On Windows: COM1 to COM8. Elsewhere the first of these that exists: the link comm{N} in CommFolder(),
/// where the simulated hub puts its line, unless others can write there; /dev/tavlo-comm{N}, which the
/// operator can create; the N-th of the serial devices. If none exists, the path of the link, so that a
/// failure can name something.
[[nodiscard]] CommDevice LookAtComm(int number, const std::string& user_folders = kUserFolders);

/// Returns the device of LookAtComm().
[[nodiscard]] std::string CommDeviceFor(int number);

/// Watches devices come and go by the system's notifications about their folders, without polling. Needs a
/// QCoreApplication.
class QtCommDevices : public QObject, public CommDevices {
 public:
  QtCommDevices();
  [[nodiscard]] CommDevice Look(int number) const override { return LookAtComm(number); }

 private:
  void Watch();

  QFileSystemWatcher watcher_;
  QTimer rest_;
};

}  // namespace tavlo
