// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "cli/console/console.h"
#include "cli/console/environment.h"
#include "cli/console/key_terminal.h"
#include "cli/run/run_orders.h"
#include "platform/stopwatch.h"
#include "session/desk.h"

namespace tavlo::cli {

/// What the operator tells a running program: keys of a terminal as they are pressed, or the lines of a
/// script. Each line of a script waits until the program asks.
///
/// A program asks if the line that runs has written to the operator terminal or is known to be a prompt, and
/// if no text, event or key has come for a moment.
class RunInput {
 public:
  /// Without a feed there is never any input. `keys` is the terminal of the feed.
  RunInput(Console& console, Feed* feed, KeyTerminal& keys, Clock& clock)
      : console_(console), feed_(feed), keys_(keys), quiet_(clock) {}

  /// The program is about to be started from this window.
  void Begin(Desk& desk, RunWindow window);
  /// The run is over: no more input is taken.
  void End() { keys_.Off(); }

  /// Handles the input that has arrived and what is due. Returns false once a stop was ordered.
  [[nodiscard]] bool Work();
  /// Returns the feed to wait for; null if no input is expected, or if something must be done first.
  [[nodiscard]] const Feed* Awaited() const;
  /// Returns in how many seconds there may be something to do even if nothing arrives.
  [[nodiscard]] std::optional<double> DueIn();

  // These report what the hub does. `line` is 0-based.
  void LineStarted(int line, bool is_prompt);
  void LineOver(int line);
  void TextCame();

 private:
  using Orders = std::vector<RunOrder>;

  [[nodiscard]] bool IsTerminal() const { return feed_ != nullptr && feed_->IsTerminal(); }
  [[nodiscard]] bool WorkOnKeys();
  [[nodiscard]] bool WorkOnLines();
  void TakeLines();
  void TakeLine(const std::string& line);
  [[nodiscard]] bool IsDue(const Orders& orders);
  [[nodiscard]] bool Do(const RunOrder& order);
  void Press(MmiKey key);
  void Pause();
  void Play();
  void SingleStep();
  void TellKeys();

  Console& console_;
  Feed* feed_;
  KeyTerminal& keys_;
  TypedKeys typed_keys_;
  Desk* desk_ = nullptr;
  RunWindow window_ = RunWindow::None;
  bool ended_ = false;
  bool told_of_no_terminal_ = false;
  std::string line_;
  std::deque<Orders> waiting_;
  int running_line_ = -1;
  bool asks_ = false;
  Stopwatch quiet_;
};

}  // namespace tavlo::cli
