// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <QGuiApplication>
#include <QLocale>
#include <QPageSize>
#include <memory>

#include "platform/pdf_maker.h"
#include "qt/paper/paper_painter.h"

namespace {

QPageSize PaperOfTheCountry() {
  const bool letter = QLocale::system().measurementSystem() == QLocale::ImperialUSSystem;
  return QPageSize(letter ? QPageSize::Letter : QPageSize::A4);
}

/// Fonts are there only while an application lives. This one needs no display.
std::unique_ptr<QGuiApplication> MakeApplication() {
  static int argc = 1;
  static char name[] = "tavlo";
  static char* argv[] = {name, nullptr};
  qputenv("QT_QPA_PLATFORM", "offscreen");
  return std::make_unique<QGuiApplication>(argc, argv);
}

}  // namespace

extern "C" Q_DECL_EXPORT void TavloMakePdf(const tavlo::PaperDocument& document, std::string& pdf,
                                           tavlo::Outcome& outcome) {
  // What the toolkit has to remark is nothing for an operator.
  const QtMessageHandler remarks =
      qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
  {
    const auto application = MakeApplication();
    const QPageLayout layout(PaperOfTheCountry(), QPageLayout::Portrait, QMarginsF());
    outcome = tavlo::MakePdf(document, layout, {}, pdf);
  }
  qInstallMessageHandler(remarks);
}
