// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QImage>
#include <QMouseEvent>
#include <QTest>
#include <QWidget>
#include <memory>
#include <string>

#include "support/bytes.h"
#include "support/fake_clipboard.h"
#include "support/fake_desk.h"
#include "support/fake_help.h"
#include "support/fake_printer.h"
#include "support/fake_state_folder.h"
#include "windows/composer_windows.h"
#include "windows/prog_window.h"

namespace tavlo::testing {

/// The real windows of a session between fakes: port, boxes, dialogs, files, settings and clock.
struct WindowSession {
  WindowSession() {
    fakes.port.is_open = false;
    windows = std::make_unique<ComposerWindows>(Services());
    // No click opens a dialog by the way.
    Handlers().editors = nullptr;
  }

  [[nodiscard]] Outside Services() {
    return {fakes.port,  fakes.boxes, fakes.clock, fakes.loop, fakes.beeper, fakes.settings, fakes.dialogs,
            fakes.files, comms,       help,        printer,    sessions,     clipboard};
  }

  /// Loads and shows the main window.
  void Begin() {
    Main().Begin(Handlers());
    Main().show();
    Main().activateWindow();
    Settle();
  }
  /// Within an event that is handled a turn of the loop alone leaves what was posted before it.
  void Settle() {
    QApplication::sendPostedEvents();
    QApplication::processEvents();
  }

  [[nodiscard]] LongForm& Main() { return windows->Main(); }
  [[nodiscard]] Desk& Handlers() { return windows->Handlers(); }
  [[nodiscard]] Source& Session() { return windows->Handlers().source; }
  [[nodiscard]] Program& Lines() { return Session().program; }
  [[nodiscard]] ProgWindow& Pane() { return *Find<ProgWindow>("ProgWindow"); }

  template <class T>
  [[nodiscard]] T* Find(const char* name) {
    T* found = Main().findChild<T*>(QString::fromLatin1(name));
    EXPECT_NE(found, nullptr) << name;
    return found;
  }

  /// The pane as it is painted now.
  [[nodiscard]] QImage Painted() {
    Settle();
    return Pane().grab().toImage();
  }

  FakeDesk fakes;
  FakeComms comms;
  FakeHelp help;
  FakePrinter printer;
  FakeClipboard clipboard;
  FakeStateDisk disk;
  FakeStateFolder sessions{disk};
  std::unique_ptr<ComposerWindows> windows;
};

/// A session whose main window is up.
struct RunningSession : WindowSession {
  RunningSession() {
    Begin();
    fakes.port.sent.clear();
    fakes.boxes.shown.clear();
  }
};

/// Alt and the key.
inline void PressMnemonic(QWidget* widget, Qt::Key key) {
  QTest::keyClick(widget, key, Qt::AltModifier);
}

}  // namespace tavlo::testing
