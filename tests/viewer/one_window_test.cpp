// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "viewer/one_window.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QFileInfo>
#include <QLocalServer>
#include <QLocalSocket>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include "viewer/made_document.h"

namespace tavlo::testing {
namespace {

using viewer::OneWindow;

/// Another viewer hands its document over while this thread serves.
bool LaterHandsOver(const QString& folder, const QString& document) {
  bool handed = false;
  const auto later = std::unique_ptr<QThread>(QThread::create([&] {
    OneWindow one(folder);
    handed = one.HandOver(document);
  }));
  later->start();
  EXPECT_TRUE(QTest::qWaitFor([&] { return later->isFinished(); }, 20000));
  return handed;
}

TEST(OneWindow, TheFirstViewerIsHandedWhatLaterOnesAreStartedWith) {
  QTemporaryDir dir;
  const QString folder = dir.filePath("tavlo-composer");
  OneWindow first(folder);
  QStringList shown;
  first.OnDocument = [&](const QString& document) { shown += document; };
  EXPECT_FALSE(first.HandOver("/a.pdf")) << "there is nobody to take it";
  const QStringList documents = {"/b.pdf", "/Hub Composer.pdf", QStringLiteral("/caf\u00e9\n.pdf"), ""};
  for (const QString& document : documents) EXPECT_TRUE(LaterHandsOver(folder, document));
  EXPECT_EQ(shown, documents);
}

TEST(OneWindow, NobodyElseReachesTheFolder) {
  QTemporaryDir dir;
  const QString folder = dir.filePath("tavlo-composer");
  OneWindow first(folder);
  EXPECT_FALSE(first.HandOver("/a.pdf"));
  const auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup | QFile::ReadOther |
                      QFile::WriteOther | QFile::ExeOther;
  EXPECT_EQ(QFile::permissions(folder) & others, QFile::Permissions());
}

TEST(OneWindow, TakesOverFromAViewerThatWasKilled) {
  QTemporaryDir dir;
  const QString folder = dir.filePath("tavlo-composer");
  QDir().mkpath(folder);
  {
    // A server that ends without a word leaves the file of its socket.
    QLocalServer killed;
    ASSERT_TRUE(killed.listen(dir.filePath("elsewhere")));
    ASSERT_TRUE(QFile::rename(dir.filePath("elsewhere"), folder + "/help"));
  }
  OneWindow first(folder);
  QStringList shown;
  first.OnDocument = [&](const QString& document) { shown += document; };
  EXPECT_FALSE(first.HandOver("/a.pdf"));
  EXPECT_TRUE(LaterHandsOver(folder, "/b.pdf"));
  EXPECT_EQ(shown, QStringList{"/b.pdf"});
}

TEST(OneWindow, OpensAWindowOfItsOwnBesideAViewerThatDoesNotAnswer) {
  QTemporaryDir dir;
  const QString folder = dir.filePath("tavlo-composer");
  QDir().mkpath(folder);
  QLocalServer hung;
  ASSERT_TRUE(hung.listen(folder + "/help"));
  OneWindow one(folder);
  EXPECT_FALSE(one.HandOver("/a.pdf"));
}

TEST(OneWindow, OpensAWindowOfItsOwnWhereTheFolderCannotBeUsed) {
  QTemporaryDir dir;
  QFile file(dir.filePath("file"));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  for (const QString& folder : {QString(), dir.filePath("file/below"), QStringLiteral("/proc/none")}) {
    OneWindow one(folder);
    EXPECT_FALSE(one.HandOver("/a.pdf")) << folder.toStdString();
  }
}

TEST(OneWindow, IsNotDisturbedByWhatIsNoDocument) {
  QTemporaryDir dir;
  const QString folder = dir.filePath("tavlo-composer");
  OneWindow first(folder);
  int shown = 0;
  first.OnDocument = [&](const QString&) { ++shown; };
  EXPECT_FALSE(first.HandOver("/a.pdf"));
  for (const QByteArray& bytes : {QByteArray(), QByteArray("half a path"), QByteArray(1 << 20, 'x')}) {
    QLocalSocket socket;
    socket.connectToServer(folder + "/help");
    ASSERT_TRUE(socket.waitForConnected());
    socket.write(bytes);
    socket.flush();
    QTest::qWait(0);
    socket.abort();
    QTest::qWait(0);
  }
  EXPECT_EQ(shown, 0);
  EXPECT_TRUE(LaterHandsOver(folder, "/b.pdf"));
  EXPECT_EQ(shown, 1);
}

/// Starts the real viewer without a screen.
struct Started {
  explicit Started(const QStringList& arguments, const QString& runtime) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_QPA_PLATFORM", "offscreen");
    environment.insert("XDG_RUNTIME_DIR", runtime);
    process.setProcessEnvironment(environment);
    process.start(TAVLO_VIEWER, arguments);
  }
  ~Started() {
    process.kill();
    process.waitForFinished();
  }
  QProcess process;
};

TEST(ViewerProgram, ASecondStartHandsItsDocumentOverAndEnds) {
  QTemporaryDir dir;
  const QString document = dir.filePath("a.pdf");
  WriteDocument(document, "A", {"x"});
  Started first({document}, dir.path());
  ASSERT_TRUE(QTest::qWaitFor([&] { return QFileInfo::exists(dir.filePath("tavlo-composer/help")); }, 20000));
  Started second({document}, dir.path());
  ASSERT_TRUE(second.process.waitForFinished(20000));
  EXPECT_EQ(second.process.exitCode(), 0);
  EXPECT_EQ(first.process.state(), QProcess::Running);
}

TEST(ViewerProgram, TellsItsVersionAndItsUseWithoutADisplay) {
  struct Asked {
    const char* option;
    const char* answer;
  };
  for (const auto& [option, answer] :
       {Asked{"--version", "OskelHelp 1."}, Asked{"--help", "Usage: OskelHelp"}, Asked{"-h", "Usage: "}}) {
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_QPA_PLATFORM", "xcb");
    environment.remove("DISPLAY");
    process.setProcessEnvironment(environment);
    process.start(TAVLO_VIEWER, {option});
    ASSERT_TRUE(process.waitForFinished(20000));
    EXPECT_EQ(process.exitCode(), 0) << option;
    EXPECT_TRUE(process.readAllStandardOutput().startsWith(answer)) << option;
  }
}

}  // namespace
}  // namespace tavlo::testing
