// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "qt/gui/gui_printer.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPrintDialog>
#include <QTimer>

#include "support/fake_desk.h"
#include "support/temp_folder.h"

namespace tavlo::testing {
namespace {

PaperDocument Document() {
  return {.title = "Listing", .file_name = "a.TVH", .blocks = {{{.text = "Go To Line 1", .number = "1"}}}};
}

/// Works the dialog that comes up.
void WhenTheDialogComes(const std::function<void(QPrintDialog&)>& act) {
  QTimer::singleShot(0, qApp, [act] {
    auto* dialog = qobject_cast<QPrintDialog*>(QApplication::activeModalWidget());
    ASSERT_NE(dialog, nullptr);
    act(*dialog);
  });
}

TEST(GuiPrinter, ACancelledDialogChoosesNothing) {
  FakeFiles files;
  GuiPrinter printer(files);
  WhenTheDialogComes([](QPrintDialog& dialog) { dialog.reject(); });
  EXPECT_FALSE(printer.AskPrinter());
  EXPECT_TRUE(files.files.empty());
}

TEST(GuiPrinter, PrintsToAFileThatTheDialogNames) {
  FakeFiles files;
  GuiPrinter printer(files);
  const TempFolder folder;
  const std::string path = folder.Path("listing.pdf");
  WhenTheDialogComes([&path](QPrintDialog& dialog) {
    auto* printers = dialog.findChild<QComboBox*>(QStringLiteral("printers"));
    ASSERT_NE(printers, nullptr);
    printers->setCurrentIndex(printers->findText(QStringLiteral("PDF"), Qt::MatchContains));
    dialog.findChild<QLineEdit*>(QStringLiteral("filename"))->setText(QString::fromStdString(path));
    dialog.accept();
  });
  ASSERT_TRUE(printer.AskPrinter());
  EXPECT_TRUE(printer.Print(Document()));
  ASSERT_TRUE(files.files.contains(path));
  EXPECT_TRUE(files.files[path].starts_with("%PDF-1."));
  EXPECT_TRUE(files.files[path].ends_with("%%EOF\n"));
}

TEST(GuiPrinter, AFullDiskIsToldAndNothingIsWritten) {
  FakeFiles files;
  files.files["/a.pdf"] = "what is there";
  files.room = 100;
  GuiPrinter printer(files);
  printer.setNextFile("/a.pdf");
  ASSERT_TRUE(printer.AskPrinter());
  EXPECT_EQ(printer.Print(Document()).Why(), "No space left on device");
  EXPECT_EQ(files.files["/a.pdf"], "what is there");
}

TEST(GuiPrinter, AnswersSetBeforehandAreGivenInTurnWithoutADialog) {
  FakeFiles files;
  GuiPrinter printer(files);
  printer.setNextFile(std::nullopt);
  printer.setNextFile("/b.pdf");
  EXPECT_FALSE(printer.AskPrinter());
  ASSERT_TRUE(printer.AskPrinter());
  EXPECT_TRUE(printer.Print(Document()));
  EXPECT_EQ(files.files.size(), 1U);
}

TEST(GuiPrinter, PrintsNothingBeforeAPrinterWasChosen) {
  FakeFiles files;
  GuiPrinter printer(files);
  EXPECT_EQ(printer.Print(Document()).Why(), "no printer has been chosen");
}

}  // namespace
}  // namespace tavlo::testing
