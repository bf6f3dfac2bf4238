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

/// The folder of the comm links, found as the simulated hub finds it: tavlo-composer in XDG_RUNTIME_DIR, else
/// in the folder of this user below `user_folders`, if that is a folder of this user's; else
/// tavlo-composer-{uid} in /tmp, whatever TMPDIR says, so that all programs agree on it.
[[nodiscard]] std::string CommFolder(const std::string& user_folders = kUserFolders);

/// What Comm `number` (1..8) stands for now.
///
/// On Windows COM1 to COM8. Elsewhere, first that exists: the link comm{N} in CommFolder(), where the
/// simulated hub puts its line, unless others can write there; /dev/tavlo-comm{N}, which the operator can
/// make; the N-th of the serial devices that are there. With none of them the link's path, so that a failure
/// names something.
[[nodiscard]] CommDevice LookAtComm(int number, const std::string& user_folders = kUserFolders);

/// The device of LookAtComm().
[[nodiscard]] std::string CommDeviceFor(int number);

/// Sees devices come and go by what the system tells of their folders; nothing is asked again and again.
/// Needs a QCoreApplication.
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
