// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/run/terminal_session.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

#include "cli/console/json_text.h"
#include "cli/desk/last_word.h"
#include "link/drive_terminal.h"
#include "link/receive.h"
#include "platform/number_format.h"
#include "platform/stopwatch.h"

namespace tavlo::cli {
namespace {

/// What a crash still sends, so that the hub listens again.
constexpr std::string_view kBackToHub = "0HM\r";
/// What the window's entry box holds.
constexpr std::size_t kLongestCommand = 2000;
constexpr unsigned char kDelete = 127;

/// The passthrough, for as long as it lives: a hub that stayed in it would take the next command for a
/// drive's.
class Passthrough {
 public:
  explicit Passthrough(Desk& desk) : desk_(desk) { ActivateTerminal(desk_); }
  ~Passthrough() { LeaveTerminal(desk_); }
  Passthrough(const Passthrough&) = delete;
  Passthrough& operator=(const Passthrough&) = delete;

 private:
  Desk& desk_;
};

std::string_view ReasonOf(TerminalEnd end) {
  switch (end) {
    case TerminalEnd::EndOfInput: return "endOfInput";
    case TerminalEnd::Interrupted: return "interrupted";
    case TerminalEnd::PortLost: return "portLost";
    case TerminalEnd::OutputLost: return "outputLost";
  }
  return "";
}

}  // namespace

TerminalSession::TerminalSession(Environment& environment, HubLine& line, Desk& desk, Options options)
    : environment_(environment),
      console_(environment),
      line_(line),
      desk_(desk),
      options_(options),
      feed_(*environment.feed),
      since_start_(line.Time()),
      since_sent_(line.Time()) {}

TerminalEnd TerminalSession::Run() {
  LoadTerminal(desk_);
  TerminalEnd end = TerminalEnd::Interrupted;
  try {
    const LastWord last_word(line_, kBackToHub);
    const Passthrough passthrough(desk_);
    since_start_.Restart();
    end = Converse();
  } catch (const Interrupted&) {
    end = TerminalEnd::Interrupted;
  }
  FlushReceived();
  if (options_.json) PrintEvent("ended", "reason", ReasonOf(end), line_.opened);
  return end;
}

TerminalEnd TerminalSession::Converse() {
  for (;;) {
    if (line_.IsInterrupted()) return TerminalEnd::Interrupted;
    if (!console_.ResultsArrive()) return TerminalEnd::OutputLost;
    if (desk_.Comm1.InBufferCount() > 0) {
      NewOnComm(desk_);
      continue;
    }
    if (!desk_.Comm1.PortOpen()) return TerminalEnd::PortLost;
    if (MaySend()) {
      TakeFeed();
      if (!lines_.empty()) {
        Send(lines_.front());
        lines_.pop_front();
        continue;
      }
      if (fed_out_) return TerminalEnd::EndOfInput;
    }
    WaitForSomething();
  }
}

/// An operator sees the answer before typing on; a script cannot wait for it by itself.
bool TerminalSession::MaySend() {
  if (!answered_) answered_ = feed_.IsTerminal() || since_sent_.Seconds() >= options_.wait_seconds;
  return answered_;
}

void TerminalSession::TakeFeed() {
  if (fed_out_ || !lines_.empty()) return;
  const auto bytes = feed_.Read();
  if (!bytes) {
    fed_out_ = true;
    if (!typed_.empty()) TakeLine(std::exchange(typed_, {}));
    return;
  }
  for (const char c : *bytes) {
    if (c == '\n') {
      TakeLine(std::exchange(typed_, {}));
    } else if (typed_.size() <= kLongestCommand) {
      // One character more than allowed is enough to recognise a line that is too long.
      typed_ += c;
    }
  }
}

void TerminalSession::TakeLine(std::string line) {
  if (line.ends_with('\r')) line.pop_back();
  if (line.size() <= kLongestCommand) {
    lines_.push_back(std::move(line));
  } else {
    console_.Note("a command of more than 2000 characters was not sent");
  }
}

void TerminalSession::Send(const std::string& command) {
  FlushReceived();
  if (options_.json) PrintEvent("sent", "text", command);
  sending_ = true;
  SendCommandText(desk_, command + "\r\n");
  sending_ = false;
  since_sent_.Restart();
  answered_ = false;
}

void TerminalSession::WaitForSomething() {
  console_.SendOn();
  const double longest = console_.OutputWaits() ? Console::kReaderLook : Stopwatch::kLongestWait;
  if (answered_) {
    line_.Wait(longest, &feed_);
  } else {
    line_.Wait(std::clamp(options_.wait_seconds - since_sent_.Seconds(), 0.001, longest));
  }
}

void TerminalSession::HistoryGrew(std::string_view added) {
  if (!options_.json) return PrintReceived(added);
  if (sending_) return;
  for (const char c : added) {
    if (c == '\n') {
      FlushReceived();
    } else if (c != '\r') {
      received_ += c;
    }
  }
}

/// Prints as the log does, with this system's line ends. Control characters are spelled only in what drives
/// send.
void TerminalSession::PrintReceived(std::string_view text) {
  for (const char c : text) {
    if (c == '\r') continue;
    const auto code = static_cast<unsigned char>(c);
    if (c != '\n' && (code < ' ' || code == kDelete)) {
      environment_.out << '[' << Format(code, "000") << ']';
    } else {
      environment_.out << c;
    }
  }
  environment_.out << std::flush;
}

void TerminalSession::FlushReceived() {
  if (!received_.empty()) PrintEvent("received", "text", std::exchange(received_, {}));
}

void TerminalSession::PrintEvent(std::string_view event, std::string_view key, std::string_view value,
                                 const OpenedPort& opened) {
  const double seconds = std::round(since_start_.Seconds() * 1000) / 1000;
  console_.Result(
      JsonLine(WithPort({{"event", event}, {"seconds", seconds}, {std::string(key), value}}, opened)));
}

}  // namespace tavlo::cli
