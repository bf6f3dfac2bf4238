// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string_view>

#include "platform/clipboard.h"
#include "platform/help.h"
#include "platform/printer.h"
#include "platform/serial_port.h"
#include "platform/services.h"
#include "session/source.h"
#include "session/views.h"

namespace tavlo {

class RunLog;

/// What an exchange with the hub works with.
struct Link {
  SerialPort& Comm1;
  Clock& clock;
  MessageBoxes& boxes;
  LinkState& state;
  ProgramView& view;
  /// For the keeper alone, which is null if nothing is kept.
  const Source& source;
  SessionKeeper* keeper;
};

/// What a transfer shows while it runs: its gauge, and the event loop's turns that keep the windows alive.
struct TransferGauge {
  ProgressForm& form;
  EventLoop& loop;
};

/// What the rows of the main window need: the program, what they show of it, and the view to paint in.
struct Grid {
  const Program& program;
  RowsState& shown;
  ProgramView& view;
};

/// What the lights of a run need.
struct Lights {
  const Program& program;
  /// Firmware of each drive.
  const std::array<float, kAxisSlots>& DriveRev;
  RunPanel& panel;
  RunView& view;
};

/// All that a handler of a window's control may use. What the handler calls is given only the part that it
/// needs. The command line and the tests fill a Desk with implementations of their own.
struct Desk {
  Source& source;
  SerialPort& Comm1;
  MessageBoxes& boxes;
  Clock& clock;
  EventLoop& loop;
  Beeper& beeper;
  ProgramView& view;
  RunView& run;
  ProgressForm& downbox;
  ProgressForm& upbox;
  SettingsStore& settings;
  FileDialogs& dialogs;
  FileStore& files;
  LoadingForm& loading;
  /// Null if there are no dialogs to edit with.
  EditorWindows* editors = nullptr;
  /// Null if there is no drive terminal.
  TerminalView* terminal = nullptr;
  /// Null if there is no help.
  Help* help = nullptr;
  /// Null if nothing can be printed.
  Printer* printer = nullptr;
  /// Null if nothing is kept.
  SessionKeeper* keeper = nullptr;
  /// Null if runs leave no log.
  RunLog* log = nullptr;
  /// Null if lines cannot be handed on.
  Clipboard* clipboard = nullptr;

  void OpenHelp(std::string_view file) const {
    if (help != nullptr) help->OpenHelp(file, boxes);
  }

  [[nodiscard]] Program& program() const { return source.program; }
  [[nodiscard]] Link link() const {
    return {.Comm1 = Comm1,
            .clock = clock,
            .boxes = boxes,
            .state = source.link,
            .view = view,
            .source = source,
            .keeper = keeper};
  }
  /// The gauges of the two transfers.
  [[nodiscard]] TransferGauge downloading() const { return {.form = downbox, .loop = loop}; }
  [[nodiscard]] TransferGauge uploading() const { return {.form = upbox, .loop = loop}; }
  [[nodiscard]] Grid grid() const { return {.program = source.program, .shown = source.shown, .view = view}; }
  [[nodiscard]] Lights lights() const {
    return {
        .program = source.program, .DriveRev = source.link.DriveRev, .panel = source.run.panel, .view = run};
  }
};

}  // namespace tavlo
