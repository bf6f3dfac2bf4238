// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/run/run_input.h"

#include <algorithm>
#include <utility>

#include "platform/encoding.h"
#include "platform/serial_port.h"

namespace tavlo::cli {
namespace {

/// A hub that has taken an answer says so well within this time, or asks again.
constexpr double kQuiet = 0.2;
/// How often a process in the background looks whether it is back.
constexpr double kBackgroundWait = 1;
constexpr std::size_t kLongestLine = 200;

}  // namespace

void RunInput::Begin(Desk& desk, RunWindow window) {
  desk_ = &desk;
  window_ = window;
  quiet_.Restart();
  if (!IsTerminal()) return;
  keys_.On();
  TellKeys();
}

void RunInput::TellKeys() {
  const std::string controls = "p pause, r resume, t one line, z first line, s stop";
  const std::string keypad = "0-9 . Enter Backspace arrows, y or + yes, n or - no; ";
  console_.Inform("keys: " + (window_ == RunWindow::fakeMMI ? keypad + controls : controls));
}

bool RunInput::Work() {
  if (feed_ == nullptr) return true;
  return IsTerminal() ? WorkOnKeys() : WorkOnLines();
}

bool RunInput::WorkOnKeys() {
  if (ended_ || !keys_.InForeground()) return true;
  const auto bytes = feed_->Read();
  ended_ = !bytes.has_value();
  for (const char c : bytes.value_or("")) {
    const auto order = typed_keys_.Take(c);
    if (order && !Do(*order)) return false;
  }
  return true;
}

bool RunInput::WorkOnLines() {
  TakeLines();
  while (!waiting_.empty() && IsDue(waiting_.front())) {
    const Orders orders = std::move(waiting_.front());
    waiting_.pop_front();
    for (const RunOrder& order : orders) {
      if (!Do(order)) return false;
    }
    TakeLines();
  }
  return true;
}

/// Takes no more lines than can be handled now, so that the writer of the script waits as long as the machine
/// does.
void RunInput::TakeLines() {
  if (ended_ || !waiting_.empty()) return;
  const auto bytes = feed_->Read();
  if (!bytes) {
    ended_ = true;
    if (!line_.empty()) TakeLine(std::exchange(line_, {}));
    return;
  }
  for (const char c : *bytes) {
    if (c == '\n') {
      TakeLine(std::exchange(line_, {}));
    } else if (line_.size() <= kLongestLine) {
      line_ += c;
    }
  }
}

void RunInput::TakeLine(const std::string& line) {
  auto orders = line.size() <= kLongestLine ? OrdersOfLine(line) : std::nullopt;
  if (orders) {
    waiting_.push_back(std::move(*orders));
  } else if (line.size() <= kLongestLine) {
    console_.Note("'" + ShownMessage(line) + "' is neither an entry nor a word; nothing was sent");
  } else {
    console_.Note("a line of more than 200 characters was not sent");
  }
}

bool RunInput::IsDue(const Orders& orders) {
  switch (orders.front().act) {
    case RunAct::SingleStep: return desk_->source.run.panel.SingleStep != Picture::StepYellow;
    case RunAct::Key:
      if (window_ != RunWindow::fakeMMI) return true;
      return asks_ && quiet_.Seconds() >= kQuiet - SerialPort::kShortestWait / 2;
    case RunAct::Pause:
    case RunAct::Play:
    case RunAct::Reset:
    case RunAct::Stop: return true;
  }
  return true;
}

const Feed* RunInput::Awaited() const {
  const bool takes = IsTerminal() ? keys_.InForeground() : waiting_.empty();
  return takes && !ended_ ? feed_ : nullptr;
}

std::optional<double> RunInput::DueIn() {
  if (IsTerminal()) return keys_.InForeground() ? std::nullopt : std::optional(kBackgroundWait);
  const bool waits_for_quiet = !waiting_.empty() && waiting_.front().front().act == RunAct::Key && asks_;
  if (!waits_for_quiet) return std::nullopt;
  return std::max(kQuiet - quiet_.Seconds(), SerialPort::kShortestWait);
}

void RunInput::LineStarted(int line, bool is_prompt) {
  running_line_ = line;
  asks_ = is_prompt;
  quiet_.Restart();
}

void RunInput::LineOver(int line) {
  if (line != running_line_) return;
  running_line_ = -1;
  asks_ = false;
}

void RunInput::TextCame() {
  asks_ = running_line_ >= 0;
  quiet_.Restart();
}

bool RunInput::Do(const RunOrder& order) {
  switch (order.act) {
    case RunAct::Key: Press(order.key); return true;
    case RunAct::Pause: Pause(); return true;
    case RunAct::Play: Play(); return true;
    case RunAct::SingleStep: SingleStep(); return true;
    case RunAct::Reset:
      ClickReset(*desk_);
      console_.Inform("the program goes back to its first line");
      return true;
    case RunAct::Stop: return false;
  }
  return true;
}

void RunInput::Press(MmiKey key) {
  if (window_ == RunWindow::fakeMMI) {
    PressKey(*desk_, key);
    quiet_.Restart();
  } else if (!std::exchange(told_of_no_terminal_, true)) {
    console_.Note("this program does not use the operator terminal; its keys are not sent");
  }
}

void RunInput::Pause() {
  const bool was_running = desk_->source.run.panel.Running;
  ClickPause(*desk_);
  if (was_running) console_.Inform("paused");
}

void RunInput::Play() {
  const bool was_running = desk_->source.run.panel.Running;
  ClickPlay(*desk_);
  if (!was_running) console_.Inform("the program goes on");
}

void RunInput::SingleStep() {
  if (desk_->source.run.panel.Running) console_.Note("a single step needs a program that is paused");
  ClickSingleStep(*desk_);
}

}  // namespace tavlo::cli
