// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QTest>
#include <QTimer>
#include <functional>
#include <string>

#include "qt/gui/gui_services.h"
#include "qt/qt_serial_port.h"
#include "qt/qt_services.h"
#include "support/fake_clipboard.h"
#include "support/fake_desk.h"
#include "support/fake_help.h"
#include "support/fake_printer.h"
#include "support/fake_state_folder.h"
#include "support/hub_process.h"
#include "windows/composer_windows.h"

namespace tavlo::testing {

/// A desktop session on the line of one hub.
class Session {
 public:
  explicit Session(const QString& device)
      : port_([device](int number) { return number == 1 ? device.toStdString() : "/nowhere"; }),
        windows_({port_, boxes, clock_, loop_, beeper_, settings_, dialogs, files_, comms_, help_, printer_,
                  sessions_, clipboard_}) {
    windows_.Main().Begin(windows_.Handlers());
    windows_.Main().show();
    QCoreApplication::processEvents();
  }

  Source& State() { return windows_.Handlers().source; }
  LongForm& Main() { return windows_.Main(); }
  void Click(const char* button) {
    auto* found = windows_.Main().findChild<QAbstractButton*>(QString::fromLatin1(button));
    ASSERT_NE(found, nullptr) << button;
    ASSERT_TRUE(found->isEnabled()) << button;
    QTest::mouseClick(found, Qt::LeftButton);
  }
  void LoadExample(const char* name) {
    dialogs.setNextFileName(std::string(TAVLO_EXAMPLES_DIR) + "/" + name);
    Click("Load");
  }

  GuiMessageBoxes boxes;
  GuiFileDialogs dialogs;

 private:
  QtSerialPort port_;
  QtClock clock_;
  QtEventLoop loop_;
  FakeBeeper beeper_;
  FakeSettings settings_;
  QtFileStore files_;
  FakeComms comms_;
  FakeHelp help_;
  FakePrinter printer_;
  FakeStateDisk disk_;
  FakeStateFolder sessions_{disk_};
  FakeClipboard clipboard_;
  ComposerWindows windows_;
};

/// While a run window is up its ShowModal() does not return: what the operator does meanwhile is posted.
inline void WhileRunning(const std::function<void()>& act) {
  QTimer::singleShot(0, qApp, act);
}

inline QWidget* RunWindowShown() {
  for (QWidget* widget : QApplication::topLevelWidgets()) {
    const bool run_window = widget->windowTitle() == "Execute" || widget->windowTitle() == "MMI emulator";
    if (widget->isVisible() && run_window) return widget;
  }
  return nullptr;
}

inline void PressStop() {
  QWidget* window = RunWindowShown();
  ASSERT_NE(window, nullptr);
  auto* stop = window->findChild<QAbstractButton*>("btnStop");
  ASSERT_NE(stop, nullptr);
  QTest::mouseClick(stop, Qt::LeftButton);
}

inline bool WaitFor(const std::function<bool()>& condition, int ms = 10000) {
  return QTest::qWaitFor(condition, ms);
}

}  // namespace tavlo::testing
