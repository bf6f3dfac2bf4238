// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <termios.h>

#include <csignal>

#include "cli/console/environment.h"

namespace tavlo::cli {

/// The operator's terminal while a program runs: it delivers each key as it is pressed and echoes none.
/// Ctrl-C keeps its meaning. The destructor restores the former settings, whatever happens. A shell that
/// stops and continues this process restores its own settings meanwhile; they are then changed again. At most
/// one may be on at a time.
class KeyTerminal {
 public:
  /// Does nothing for a feed that is not a terminal, and for none.
  explicit KeyTerminal(const Feed* feed)
      : descriptor_(feed != nullptr && feed->IsTerminal() ? feed->Descriptor() : -1) {}
  ~KeyTerminal() { Off(); }
  KeyTerminal(const KeyTerminal&) = delete;
  KeyTerminal& operator=(const KeyTerminal&) = delete;

  /// Throws away what was typed before: it was not meant for the program.
  void On();
  void Off();
  [[nodiscard]] bool IsOn() const { return on_; }
  /// Throws away what has been typed and not read.
  void DropTyped();
  /// Whether this process is in the foreground of the terminal. In the background, a read or a change of
  /// settings would stop it while the machine moves.
  [[nodiscard]] bool InForeground() const;

 private:
  int descriptor_;
  bool on_ = false;
  struct termios before_ {};
  struct sigaction before_continue_ {};
};

/// For as long as it lives, gives the terminal whole lines and echo back, for a question. Keys that were
/// pressed for the program and not yet read do not answer the question.
class LineTerminal {
 public:
  explicit LineTerminal(KeyTerminal& keys) : keys_(keys), was_on_(keys.IsOn()) {
    keys_.Off();
    if (was_on_) keys_.DropTyped();
  }
  ~LineTerminal() {
    if (was_on_) keys_.On();
  }
  LineTerminal(const LineTerminal&) = delete;
  LineTerminal& operator=(const LineTerminal&) = delete;

 private:
  KeyTerminal& keys_;
  bool was_on_;
};

}  // namespace tavlo::cli
