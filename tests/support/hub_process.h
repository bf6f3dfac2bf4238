// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <sys/prctl.h>

#include <QElapsedTimer>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>
#include <csignal>
#include <string>

namespace tavlo::testing {

/// The real simulated hub as a process of its own, on a link in a folder of its own.
class HubProcess {
 public:
  explicit HubProcess(const QStringList& options = {}) {
    // A test that is killed takes its hub with it.
    process_.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGTERM); });
    process_.start(QStringLiteral(TAVLO_HUBSIM), QStringList{"--link", Link()} + options);
    QElapsedTimer waited;
    waited.start();
    while (!process_.canReadLine() && waited.elapsed() < 10000) process_.waitForReadyRead(100);
    ready_ = process_.readLine().startsWith("Hub ready");
  }
  ~HubProcess() {
    process_.terminate();
    process_.waitForFinished(5000);
  }
  HubProcess(const HubProcess&) = delete;
  HubProcess& operator=(const HubProcess&) = delete;

  [[nodiscard]] bool Ready() const { return ready_; }
  [[nodiscard]] QString Link() const { return folder_.filePath("hub"); }
  /// A line to its standard input, such as "limit 1".
  void Command(const QByteArray& line) {
    process_.write(line + '\n');
    process_.waitForBytesWritten(1000);
  }
  /// The hub as its line of JSON tells it.
  [[nodiscard]] QByteArray State() {
    process_.readAllStandardOutput();
    Command("state");
    QElapsedTimer waited;
    waited.start();
    QByteArray line;
    while (waited.elapsed() < 5000 && !line.startsWith('{')) {
      if (process_.canReadLine() || process_.waitForReadyRead(100)) line = process_.readLine();
    }
    return line;
  }
  void Kill() {
    process_.kill();
    process_.waitForFinished(5000);
  }

 private:
  QTemporaryDir folder_;
  QProcess process_;
  bool ready_ = false;
};

}  // namespace tavlo::testing
