// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "qt/gui/gui_printer.h"

#include <QPageRanges>
#include <QPrintDialog>
#include <QPrinter>
#include <utility>

#include "qt/gui/owner_window.h"
#include "qt/gui/shown_text.h"
#include "qt/paper/paper_painter.h"

namespace tavlo {
namespace {

QPageRanges ChosenPages(const QPrinter& printer) {
  return printer.printRange() == QPrinter::PageRange ? printer.pageRanges() : QPageRanges();
}

Outcome PrintOn(QPrinter& printer, const PaperDocument& document) {
  printer.setDocName(QString::fromStdString(document.title + " - " + document.file_name));
  Outcome painted = PaintOn(printer, document, ChosenPages(printer), [&printer] { printer.abort(); });
  if (!painted) return painted;
  return printer.printerState() == QPrinter::Error ? Outcome::Failed("the printer reports an error")
                                                   : Outcome();
}

Outcome PrintToFile(const QPrinter& printer, const PaperDocument& document, FileStore& files) {
  if (printer.outputFileName().isEmpty()) return Outcome::Failed("the file has no name");
  std::string pdf;
  if (Outcome made = MakePdf(document, printer.pageLayout(), ChosenPages(printer), pdf); !made) return made;
  return files.Replace(ToPath(printer.outputFileName()), pdf);
}

}  // namespace

GuiPrinter::GuiPrinter(FileStore& files) : files_(files) {}
GuiPrinter::~GuiPrinter() = default;

bool GuiPrinter::AskPrinter() {
  if (!printer_) printer_ = std::make_unique<QPrinter>(QPrinter::HighResolution);
  if (answers_.empty()) return QPrintDialog(printer_.get(), OwnerWindow()).exec() == QDialog::Accepted;
  const auto answer = std::move(answers_.front());
  answers_.pop_front();
  if (!answer) return false;
  printer_->setOutputFormat(QPrinter::PdfFormat);
  printer_->setOutputFileName(FromPath(*answer));
  return true;
}

Outcome GuiPrinter::Print(const PaperDocument& document) {
  if (!printer_) return Outcome::Failed("no printer has been chosen");
  return printer_->outputFormat() == QPrinter::PdfFormat ? PrintToFile(*printer_, document, files_)
                                                         : PrintOn(*printer_, document);
}

}  // namespace tavlo
