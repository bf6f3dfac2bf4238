// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <termios.h>

#include <csignal>

#include "cli/console/environment.h"

namespace tavlo::cli {

/// The operator's terminal while a program runs: it gives each key as it is pressed and shows none. Ctrl-C
/// stays what it is. Put back when this goes, whatever happens. A shell that halted this process and lets it
/// go on has put its own settings back meanwhile; they are changed anew. At most one is on at a time.
class KeyTerminal {
 public:
  /// Of a feed that is no terminal, and of none at all, nothing changes.
  explicit KeyTerminal(const Feed* feed)
      : descriptor_(feed != nullptr && feed->IsTerminal() ? feed->Descriptor() : -1) {}
  ~KeyTerminal() { Off(); }
  KeyTerminal(const KeyTerminal&) = delete;
  KeyTerminal& operator=(const KeyTerminal&) = delete;

  /// What was typed before is thrown away: it was not meant for the program.
  void On();
  void Off();
  [[nodiscard]] bool IsOn() const { return on_; }
  /// Throws away what was typed and has not been read.
  void DropTyped();
  /// The operator types at this process. In the background a read or a change would halt it while the
  /// machine moves.
  [[nodiscard]] bool InForeground() const;

 private:
  int descriptor_;
  bool on_ = false;
  struct termios before_ {};
  struct sigaction before_continue_ {};
};

/// Gives the terminal its lines and its echo back for as long as it lives, for a question. Keys that were
/// pressed for the program and not taken yet do not answer it.
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
