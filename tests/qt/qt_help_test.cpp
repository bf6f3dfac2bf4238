// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "qt/qt_help.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <cerrno>

#include "support/fake_boxes.h"

namespace tavlo::testing {
namespace {

/// The folder of a program.
class ProgramFolder {
 public:
  /// A viewer that writes down which document it was started with.
  void PutViewer(bool may_run) {
    Write(QStringLiteral("OskelHelp"),
          "#!/bin/sh\nprintf %s \"$1\" >\"$0.new\"\nmv \"$0.new\" \"$0.shown\"\n");
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
  void Write(const QString& name, const char* bytes) const {
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

TEST(QtHelp, TellsOfADocumentThatIsNotThere) {
  ProgramFolder folder;
  folder.PutViewer(true);
  EXPECT_EQ(folder.BoxOfOpening("FL.pdf"), "Cannot set help index");
  QDir(folder.Path(QString())).mkpath(QStringLiteral("Help/FL.pdf"));
  EXPECT_EQ(folder.BoxOfOpening("FL.pdf"), "Cannot set help index") << "a folder is no document";
}

}  // namespace
}  // namespace tavlo::testing
