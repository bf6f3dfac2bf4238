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
  /// Whether the operator's time limit interrupted the command, and not the operator by hand.
  bool time_over = false;
};

/// Where a command reads its input: a terminal at which the operator types, a pipe or a file.
class Feed {
 public:
  virtual ~Feed() = default;
  [[nodiscard]] virtual bool IsTerminal() const = 0;
  /// A descriptor that is readable when Read() has something to return.
  [[nodiscard]] virtual int Descriptor() const = 0;
  /// Returns what has arrived since the last call, without waiting; nothing once the input has ended.
  [[nodiscard]] virtual std::optional<std::string> Read() = 0;
};

/// How results and messages leave the process. Their reader may have stopped reading: a pipe may be full, a
/// terminal paused.
class Outlet {
 public:
  virtual ~Outlet() = default;
  /// While held, nothing waits for a reader: what cannot be sent at once is kept, and what is too much to
  /// keep is dropped.
  virtual void Hold(bool held) = 0;
  /// Whether something is kept.
  [[nodiscard]] virtual bool Waits() const = 0;
  /// Sends what the reader takes at once.
  virtual void SendOn() = 0;
  /// Sends what is kept, but waits at most `patience` seconds for a reader that takes nothing.
  virtual void Finish(double patience) = 0;
  /// Returns how many rows of results have been dropped.
  [[nodiscard]] virtual int DroppedRows() const = 0;
};

/// What `--port` names: one of the eight Comms, or a device.
struct PortName {
  /// 1..8, or 0 for a device.
  int comm = 0;
  std::string device;

  [[nodiscard]] std::string Label() const { return comm != 0 ? "Comm " + std::to_string(comm) : device; }
};

/// Where a line leads to.
struct OpenedPort {
  /// As the operator named it: "Comm 1", or a device.
  std::string port;
  /// The device behind that name; empty for a line without one.
  std::string device;

  /// Returns "Comm 1 (/dev/ttyUSB0)"; empty if the operator named the device, and for a line without one.
  [[nodiscard]] std::string Text() const {
    return device.empty() || device == port ? std::string() : port + " (" + device + ")";
  }
};

/// Returns " on Comm 1 (/dev/ttyUSB0)", for a sentence; empty if Text() is empty.
[[nodiscard]] inline std::string On(const OpenedPort& opened) {
  const std::string text = opened.Text();
  return text.empty() ? text : " on " + text;
}

/// The line to the hub and its clock. Once the operator has interrupted the command, waits of its port and
/// Yield() of its loop throw Interrupted.
class HubLine {
 public:
  virtual ~HubLine() = default;
  [[nodiscard]] virtual SerialPort& Port() = 0;
  [[nodiscard]] virtual Clock& Time() = 0;
  [[nodiscard]] virtual EventLoop& Loop() = 0;
  /// Sleeps until bytes have arrived, the device has vanished, the operator has interrupted, `feed` can be
  /// read or `seconds` have passed, whichever comes first. Handles no byte itself and does not throw.
  virtual void Wait(double seconds, const Feed* feed) = 0;
  void Wait(double seconds) { Wait(seconds, nullptr); }
  [[nodiscard]] virtual bool IsInterrupted() const = 0;
  /// Returns why the Comm may stand for another device in other programs; empty if there is no doubt.
  [[nodiscard]] virtual std::string Doubt() const { return {}; }
  /// Where the line has led to since it was opened.
  OpenedPort opened;
  /// After this many seconds everything is interrupted. Without a value there is no limit.
  virtual void LimitTo(std::optional<double>) {}
  /// Sets what is sent to the hub if the process crashes; an empty text sends nothing.
  virtual void SetLastWord(std::string_view) {}
  /// Called for every byte in both directions: `out` is true for what goes to the hub.
  std::function<void(bool out, std::string_view bytes)> OnTraffic;
};

/// What a command has around it. The streams take UTF-8.
struct Environment {
  /// Results.
  std::ostream& out;
  /// Messages and progress.
  std::ostream& err;
  bool err_is_terminal = false;
  /// Returns a line that the operator types, or nothing at the end of input. Empty if there is nobody to ask.
  std::function<std::optional<std::string>()> read_line;
  /// Makes the line of a port, without opening it.
  std::function<std::unique_ptr<HubLine>(const PortName&)> make_line;
  /// Standard input, for a command that reads it; null if there is none.
  Feed* feed = nullptr;
  /// Null if writing to the streams never blocks.
  Outlet* outlet = nullptr;
  /// Only results and failures are printed.
  bool quiet = false;
  /// The messages of failures so far, oldest first.
  std::vector<std::string> failures = {};
  /// A result already contains its failure.
  bool error_told = false;
};

/// Holds the output for as long as it lives, because the hub must be served whether anybody reads or not.
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
