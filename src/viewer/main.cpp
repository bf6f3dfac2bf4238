// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <QApplication>
#include <QFileInfo>
#include <algorithm>
#include <cstdio>
#include <span>

#include "viewer/help_window.h"
#include "viewer/one_window.h"
#include "viewer/viewer_options.h"
#include "widgets/icon_images.h"
#include "widgets/look.h"

namespace {

/// The document that is shown first if none is named.
QString Manual() {
  return QCoreApplication::applicationDirPath() + QStringLiteral("/Help/Hub Composer.pdf");
}

}  // namespace

int main(int argc, char** argv) {
  // Before anything asks for a display: who starts the viewer learns so whether it can run at all.
  const std::span<const char* const> arguments(argv, static_cast<std::size_t>(argc));
  if (const auto answer = tavlo::viewer::AnswerOptions(arguments.subspan(std::min<std::size_t>(argc, 1)))) {
    const bool written = std::fputs(answer->text.c_str(), stdout) >= 0 && std::fflush(stdout) == 0;
    return written ? answer->exit_code : 1;
  }

  const QApplication application(argc, argv);
  tavlo::SetLook(*qApp);
  QApplication::setWindowIcon(tavlo::ApplicationIcon());
  const QString named = QApplication::arguments().value(1);
  const QString document = QFileInfo(named.isEmpty() ? Manual() : named).absoluteFilePath();

  tavlo::viewer::OneWindow one(tavlo::viewer::FolderOfThisUser());
  if (one.HandOver(document)) return 0;
  tavlo::viewer::HelpWindow window;
  one.OnDocument = [&window](const QString& later) {
    window.Open(later);
    window.ComeToFront();
  };
  window.Open(document);
  window.show();
  return QApplication::exec();
}
