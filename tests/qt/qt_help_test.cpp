// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "qt/qt_help.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>
#include <cerrno>
#include <csignal>

#include "support/fake_boxes.h"

namespace tavlo::testing {
namespace {

/// The folder of a program.
class ProgramFolder {
 public:
  /// A viewer that writes down which document it was started with, and how often it was asked for its
  /// version. `asked` is what it does then.
  void PutViewer(bool may_run, const QByteArray& asked = "exit 0") {
    Write(QStringLiteral("OskelHelp"),
          "#!/bin/sh\nif [ \"$1\" = --version ]; then echo >>\"$0.asked\"; " + asked +
              "; fi\nprintf %s \"$1\" >\"$0.new\"\nmv \"$0.new\" \"$0.shown\"\n");
    const auto rights = QFile::ReadOwner | QFile::WriteOwner;
    QFile::setPermissions(Path(QStringLiteral("OskelHelp")), may_run ? rights | QFile::ExeOwner : rights);
  }
  void PutDocument(const QString& name) {
    QDir(dir_.path()).mkpath(QStringLiteral("Help"));
    Write(QStringLiteral("Help/") + name, "%PDF-1.4");
  }
  [[nodiscard]] QString Path(const QString& name) const { return dir_.filePath(name); }
  /// What the viewer was started with, once it has written it down.
  [[nodiscard]] QString Shown() const {
    QFile file(Path(QStringLiteral("OskelHelp.shown")));
    if (!QTest::qWaitFor([&] { return file.exists(); }, 20000) || !file.open(QIODevice::ReadOnly)) return {};
    return QString::fromUtf8(file.readAll());
  }
  [[nodiscard]] std::string BoxOfOpening(std::string_view document) {
    QtHelp help(dir_.path());
    FakeBoxes boxes;
    help.OpenHelp(document, boxes);
    return boxes.shown.empty() ? std::string() : boxes.shown.front().text;
  }

 private:
  void Write(const QString& name, const QByteArray& bytes) const {
    QFile file(Path(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
  }

  QTemporaryDir dir_;
};

TEST(QtHelp, StartsTheViewerBesideTheProgramWithTheDocumentInTheFolderHelp) {
  ProgramFolder folder;
  folder.PutViewer(true);
  folder.PutDocument(QStringLiteral("Hub Composer.pdf"));
  EXPECT_EQ(folder.BoxOfOpening("Hub Composer.pdf"), "");
  EXPECT_EQ(folder.Shown(), folder.Path(QStringLiteral("Help/Hub Composer.pdf")));
}

TEST(QtHelp, TellsWhyTheViewerDoesNotRun) {
  ProgramFolder folder;
  folder.PutDocument(QStringLiteral("FL.pdf"));
  EXPECT_EQ(folder.BoxOfOpening("FL.pdf"), "Error " + std::to_string(ENOENT));
  folder.PutViewer(false);
  EXPECT_EQ(folder.BoxOfOpening("FL.pdf"), "Error " + std::to_string(EACCES));
}

TEST(QtHelp, TellsOfAViewerThatDiesAtOnce) {
  struct Death {
    const char* of;
    int error;
  };
  for (const auto& [of, error] : {Death{"exit 127", 127}, Death{"kill -ABRT $$", 128 + SIGABRT}}) {
    ProgramFolder folder;
    folder.PutViewer(true, of);
    folder.PutDocument(QStringLiteral("FL.pdf"));
    EXPECT_EQ(folder.BoxOfOpening("FL.pdf"), "Error " + std::to_string(error)) << of;
    EXPECT_FALSE(QFile::exists(folder.Path(QStringLiteral("OskelHelp.shown")))) << of;
  }
}

TEST(QtHelp, AsksAViewerOnceWhetherItRuns) {
  ProgramFolder folder;
  folder.PutViewer(true);
  folder.PutDocument(QStringLiteral("FL.pdf"));
  QtHelp help(folder.Path(QString()));
  FakeBoxes boxes;
  for (int i = 0; i < 3; ++i) help.OpenHelp("FL.pdf", boxes);
  EXPECT_TRUE(boxes.shown.empty());
  EXPECT_EQ(QFileInfo(folder.Path(QStringLiteral("OskelHelp.asked"))).size(), 1) << "one line end";
}

TEST(QtHelp, ShowsTheDocumentOfAViewerThatIsSlowToAnswer) {
  ProgramFolder folder;
  folder.PutViewer(true, "exec sleep 60");
  folder.PutDocument(QStringLiteral("FL.pdf"));
  EXPECT_EQ(folder.BoxOfOpening("FL.pdf"), "");
  EXPECT_EQ(folder.Shown(), folder.Path(QStringLiteral("Help/FL.pdf")));
}

TEST(QtHelp, TellsOfADocumentThatIsNotThere) {
  ProgramFolder folder;
  folder.PutViewer(true);
  EXPECT_EQ(folder.BoxOfOpening("FL.pdf"), "Cannot set help index");
  QDir(folder.Path(QString())).mkpath(QStringLiteral("Help/FL.pdf"));
  EXPECT_EQ(folder.BoxOfOpening("FL.pdf"), "Cannot set help index") << "a folder is no document";
}

}  // namespace
}  // namespace tavlo::testing
