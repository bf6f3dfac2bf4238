// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <gtest/gtest.h>
#include <signal.h>

#include <QByteArray>
#include <QDeadlineTimer>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>
#include <QThread>
#include <memory>
#include <ostream>
#include <string>

#include "model/program_file.h"
#include "support/hub_process.h"

namespace tavlo::testing {

/// What the real companion left behind.
struct Ended {
  int code = -1;
  std::string out;
  std::string err;
  bool operator==(const Ended&) const = default;
};

inline void PrintTo(const Ended& ended, std::ostream* out) {
  *out << "exit " << ended.code << "\nout: " << ended.out << "err: " << ended.err;
}

/// What is told while a hub that does not answer is given its time.
inline const std::string kGivesTime =
    "tavlo: the hub does not answer; an interrupted command may have left it waiting for more: giving it "
    "time\n"
    "tavlo: taking the hub out of the drives' passthrough, in case it is still in it\n";

inline const std::string kNotCommunicating =
    "Communication Error: The Tavlo Hub is not communicating.  Is it connected to the right port and turned "
    "on?  "
    "Do you have the right comm port selected?  Perhaps cycling power will help.";

/// A failure mode of the simulated hub, and what the companion makes of it.
struct FailureCase {
  const char* mode;
  int code;
  std::string message;
};

inline void PrintTo(const FailureCase& failure, std::ostream* out) {
  *out << failure.mode;
}

/// The mode as the name of a test.
inline std::string NameOfMode(const ::testing::TestParamInfo<FailureCase>& test) {
  std::string name = test.param.mode;
  for (char& c : name) {
    if (c == '-' || c == ':') c = '_';
  }
  return name;
}

/// The real companion as a process of its own.
class TavloProcess {
 public:
  /// Without `input`, a file, standard input is empty.
  explicit TavloProcess(const QStringList& arguments, const QString& input = QProcess::nullDevice()) {
    process_.setStandardInputFile(input);
    process_.start(QStringLiteral(TAVLO_CLI), arguments);
    process_.waitForStarted();
  }

  /// Waits until the standard error holds this; false after ten seconds or at the end.
  [[nodiscard]] bool Says(const char* text) {
    const QDeadlineTimer limit(10000);
    while (!Collect().contains(text) && process_.state() == QProcess::Running && !limit.hasExpired()) {
      process_.waitForReadyRead(50);
    }
    return Collect().contains(text);
  }
  void Signal(int signal) { ::kill(static_cast<pid_t>(process_.processId()), signal); }
  [[nodiscard]] Ended Wait() {
    if (!process_.waitForFinished(20000)) {
      process_.kill();
      process_.waitForFinished(5000);
      ADD_FAILURE() << "the companion did not come to its end";
    }
    const int code = process_.exitStatus() == QProcess::NormalExit ? process_.exitCode() : -1;
    Collect();
    return {code, process_.readAllStandardOutput().toStdString(), err_.toStdString()};
  }

 private:
  const QByteArray& Collect() {
    err_ += process_.readAllStandardError();
    return err_;
  }

  QProcess process_;
  QByteArray err_;
};

/// The real companion and the real simulated hub, a pty between them.
class CompanionRoad : public ::testing::Test {
 protected:
  CompanionRoad() {
    InitHardware(program.Axis);
    InitProg(program);
  }

  void StartHub(QStringList options = {}) {
    options += {"--journal", folder_.filePath("journal")};
    hub = std::make_unique<HubProcess>(options);
    ASSERT_TRUE(hub->Ready());
  }
  /// A move that takes about half a minute on axis 1, so that a run does not end by itself.
  void LongMove() {
    Line(1).Type = FL;
    Line(1).Dist = 2000000;
  }
  Instruction& Line(int number) { return program.Prog[number - 1]; }

  QString File() {
    const QString path = folder_.filePath("program.TVH");
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray::fromStdString(WriteHubProg(program, 0)));
    return path;
  }
  static Ended Tavlo(const QStringList& arguments) { return TavloProcess(arguments).Wait(); }
  Ended Download() { return Tavlo({"download", File(), "--port", hub->Link()}); }

  /// All that the hub has received so far.
  [[nodiscard]] QByteArray Received() const {
    QFile file(folder_.filePath("journal"));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    QByteArray bytes;
    while (!file.atEnd()) {
      const QJsonObject row = QJsonDocument::fromJson(file.readLine()).object();
      if (row["dir"].toString() == "rx") bytes += QByteArray::fromHex(row["bytes"].toString().toLatin1());
    }
    return bytes;
  }
  /// Waits until what the hub has received ends with this; its journal lags behind the wire.
  [[nodiscard]] bool HubGotLast(const QByteArray& bytes) const {
    return Eventually([&] { return Received().endsWith(bytes); });
  }
  [[nodiscard]] bool HubGotFirst(const QByteArray& bytes) const {
    return Eventually([&] { return Received().startsWith(bytes); });
  }
  template <class Condition>
  [[nodiscard]] static bool Eventually(Condition condition) {
    const QDeadlineTimer limit(5000);
    while (!condition()) {
      if (limit.hasExpired()) return false;
      QThread::msleep(20);
    }
    return true;
  }

  Program program;
  std::unique_ptr<HubProcess> hub;
  QTemporaryDir folder_;
};

}  // namespace tavlo::testing
