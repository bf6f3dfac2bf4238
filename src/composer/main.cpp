// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <QApplication>
#include <QFile>
#include <QFileInfo>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <span>

#include "composer/command_line.h"
#include "qt/comm_devices.h"
#include "qt/gui/gui_clipboard.h"
#include "qt/gui/gui_printer.h"
#include "qt/gui/gui_services.h"
#include "qt/qt_help.h"
#include "qt/qt_serial_port.h"
#include "qt/qt_services.h"
#include "qt/qt_state_folder.h"
#include "widgets/look.h"
#include "windows/composer_windows.h"

int main(int argc, char** argv) {
  // Before anything asks for a display.
  const std::span<const char* const> arguments(argv, static_cast<std::size_t>(argc));
  const auto told = arguments.subspan(std::min<std::size_t>(argc, 1));
  if (const auto answer = tavlo::AnswerCommandLine(told)) {
    std::FILE* out = answer->exit_code == 0 ? stdout : stderr;
    const bool written = std::fputs(answer->text.c_str(), out) >= 0 && std::fflush(out) == 0;
    return written ? answer->exit_code : std::max(answer->exit_code, 1);
  }

  const std::string file = tavlo::FileToOpen(told);
  QApplication application(argc, argv);
  // The display name stays unset: it would join itself to every title.
  QApplication::setDesktopFileName(QStringLiteral("tavlo-composer"));
  QApplication::setQuitOnLastWindowClosed(false);
  tavlo::SetLook(application);

  tavlo::QtSerialPort port(tavlo::CommDeviceFor);
  tavlo::GuiMessageBoxes boxes;
  tavlo::QtClock clock;
  tavlo::QtEventLoop loop;
  tavlo::GuiBeeper beeper;
  tavlo::QtSettingsStore settings;
  tavlo::GuiFileDialogs dialogs;
  tavlo::QtFileStore files;
  tavlo::QtCommDevices comms;
  tavlo::QtHelp help(QCoreApplication::applicationDirPath());
  tavlo::GuiPrinter printer(files);
  tavlo::GuiClipboard clipboard;
  tavlo::QtStateFolder sessions(tavlo::StateFolderOf("sessions"));
  tavlo::QtStateFolder runs(tavlo::StateFolderOf("runs"));
  const auto windows = tavlo::StartUp({port, boxes, clock, loop, beeper, settings, dialogs, files, comms,
                                       help, printer, sessions, clipboard, &runs});
  // Not quit(), which would ask every window once more whether it may be closed.
  QObject::connect(&windows->Main(), &tavlo::LongForm::Ended, &application,
                   [] { QCoreApplication::exit(0); });
  // When the window is up and takes what the operator does.
  QTimer::singleShot(0, &windows->Main(), [&windows, &file] {
    windows->OfferLeft();
    if (!file.empty()) windows->Main().Open(QFileInfo(QFile::decodeName(file.c_str())).absoluteFilePath());
  });
  return QApplication::exec();
}
