// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "platform/serial_port.h"
#include "platform/services.h"

namespace tavlo::cli {

/// Thrown out of a polled wait, a yield or a question when the operator has interrupted the command.
struct Interrupted {
  /// By the limit of time that the operator set, and not by hand.
  bool time_over = false;
};

/// Where commands read what they are fed: a terminal at which the operator types, a pipe or a file.
class Feed {
 public:
  virtual ~Feed() = default;
  [[nodiscard]] virtual bool IsTerminal() const = 0;
  /// Readable as soon as Read() gives something new.
  [[nodiscard]] virtual int Descriptor() const = 0;
  /// What has come since the last call, without waiting for more; nothing once it has come to its end.
  [[nodiscard]] virtual std::optional<std::string> Read() = 0;
};

/// How results and messages leave the process. Somebody may have stopped taking them: a pipe that is full, a
/// terminal that is held.
class Outlet {
 public:
  virtual ~Outlet() = default;
  /// While held, nothing waits for a reader: what cannot leave at once is kept, and what is too much to keep
  /// is dropped.
  virtual void Hold(bool held) = 0;
  /// Something is kept.
  [[nodiscard]] virtual bool Waits() const = 0;
  /// Sends what leaves at once.
  virtual void SendOn() = 0;
  /// Sends what is kept, but waits no longer than `patience` seconds for a reader that takes nothing.
  virtual void Finish(double patience) = 0;
  /// Rows of results that have been dropped.
  [[nodiscard]] virtual int DroppedRows() const = 0;
};

/// What `--port` names: one of the eight Comms, or a device.
struct PortName {
  /// 1..8, or 0 for a device.
  int comm = 0;
  std::string device;

  [[nodiscard]] std::string Label() const { return comm != 0 ? "Comm " + std::to_string(comm) : device; }
};

/// Where a line leads.
struct OpenedPort {
  /// As the operator named it: "Comm 1", or a device.
  std::string port;
  /// The device behind that; empty for a line that has none.
  std::string device;

  /// "Comm 1 (/dev/ttyUSB0)"; empty where the operator has named the device, and for a line without one.
  [[nodiscard]] std::string Text() const {
    return device.empty() || device == port ? std::string() : port + " (" + device + ")";
  }
};

/// " on Comm 1 (/dev/ttyUSB0)", for a sentence; empty where Text() is.
[[nodiscard]] inline std::string On(const OpenedPort& opened) {
  const std::string text = opened.Text();
  return text.empty() ? text : " on " + text;
}

/// The line to the hub and the time that goes with it. Waits of its port and Yield() of its loop throw
/// Interrupted once the operator has interrupted.
class HubLine {
 public:
  virtual ~HubLine() = default;
  [[nodiscard]] virtual SerialPort& Port() = 0;
  [[nodiscard]] virtual Clock& Time() = 0;
  [[nodiscard]] virtual EventLoop& Loop() = 0;
  /// Sleeps until bytes are there, the device has gone, the operator interrupts, `feed` can be read or
  /// `seconds` have passed, whichever is first. Handles no byte by itself and does not throw.
  virtual void Wait(double seconds, const Feed* feed) = 0;
  void Wait(double seconds) { Wait(seconds, nullptr); }
  [[nodiscard]] virtual bool IsInterrupted() const = 0;
  /// Why the Comm may stand for another device elsewhere; empty where it does not.
  [[nodiscard]] virtual std::string Doubt() const { return {}; }
  /// Where it leads since it was opened.
  OpenedPort opened;
  /// From so many seconds on everything is interrupted; without them nothing is.
  virtual void LimitTo(std::optional<double>) {}
  /// What the hub still gets if the process crashes; nothing for none.
  virtual void SetLastWord(std::string_view) {}
  /// Every byte both ways: `out` for what goes to the hub.
  std::function<void(bool out, std::string_view bytes)> OnTraffic;
};

/// What a command has around it. Streams take UTF-8.
struct Environment {
  /// Results.
  std::ostream& out;
  /// Messages and progress.
  std::ostream& err;
  bool err_is_terminal = false;
  /// A line that the operator types, nothing at the end of input; empty when there is nobody to ask.
  std::function<std::optional<std::string>()> read_line;
  /// Makes the line of a port, not opened.
  std::function<std::unique_ptr<HubLine>(const PortName&)> make_line;
  /// Standard input for a command that takes it; nothing if there is none.
  Feed* feed = nullptr;
  /// Nothing if the streams never make anybody wait.
  Outlet* outlet = nullptr;
  /// Only results and failures are told.
  bool quiet = false;
  /// What was told of failures, oldest first.
  std::vector<std::string> failures = {};
  /// A result carries its failure already.
  bool error_told = false;
};

/// Holds the output for as long as it lives: the hub has to be served whoever reads.
class HeldOutput {
 public:
  explicit HeldOutput(Outlet* outlet) : outlet_(outlet) {
    if (outlet_ != nullptr) outlet_->Hold(true);
  }
  ~HeldOutput() {
    if (outlet_ != nullptr) outlet_->Hold(false);
  }
  HeldOutput(const HeldOutput&) = delete;
  HeldOutput& operator=(const HeldOutput&) = delete;

 private:
  Outlet* outlet_;
};

}  // namespace tavlo::cli
