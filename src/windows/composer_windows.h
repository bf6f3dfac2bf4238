// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <functional>
#include <memory>

#include "commands/crash_keep.h"
#include "editors/line_dialogs.h"
#include "platform/comm_devices.h"
#include "platform/state_folder.h"
#include "session/desk.h"
#include "widgets/held_keys.h"
#include "widgets/mnemonics.h"
#include "widgets/wheel_focus.h"
#include "windows/long_form.h"
#include "windows/run_log_book.h"
#include "windows/run_watch.h"
#include "windows/run_windows.h"
#include "windows/small_forms.h"
#include "windows/vox_term.h"

namespace tavlo {

/// The services that the windows use.
struct Outside {
  SerialPort& Comm1;
  MessageBoxes& boxes;
  Clock& clock;
  EventLoop& loop;
  Beeper& beeper;
  SettingsStore& settings;
  FileDialogs& dialogs;
  FileStore& files;
  CommDevices& comms;
  Help& help;
  Printer& printer;
  /// Where what no file holds is kept for the case of a crash.
  StateFolder& sessions;
  Clipboard& clipboard;
  /// Where the logs of runs are kept; null if they are not.
  StateFolder* runs = nullptr;
};

/// A session of the desktop program: its state, its windows, and the desk that the handlers work with. The
/// services must outlive it.
class ComposerWindows {
 public:
  explicit ComposerWindows(const Outside& outside);
  ~ComposerWindows();

  [[nodiscard]] LongForm& Main() { return main_; }
  [[nodiscard]] Desk& Handlers() { return desk_; }
  /// Offers what a session left that was not ended. For when the main window is up.
  void OfferLeft() { tavlo::OfferLeft(desk_, keep_); }

 private:
  /// Returns a function that disables the commands while a transfer's gauge is shown.
  [[nodiscard]] std::function<void(bool)> HoldWhile();

  HeldKeys held_keys_;
  Mnemonics mnemonics_;
  WheelFocus wheel_;
  Source source_;
  LongForm main_;
  RunWindows run_;
  TerminalWindows terminal_;
  GaugeForm downbox_;
  GaugeForm upbox_;
  LoadingPane loading_;
  LineDialogs editors_;
  CrashKeep keep_;
  RunLogBook logs_;
  Desk desk_;
  RunWatch watch_;
};

/// Shows the splash, creates and loads the main window behind it, and shows the main window a moment later.
/// On return the receive event of the port is connected.
[[nodiscard]] std::unique_ptr<ComposerWindows> StartUp(const Outside& outside);

}  // namespace tavlo
