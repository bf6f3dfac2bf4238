// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "platform/outcome.h"

namespace tavlo {

/// What CommEvent() says while a receive event is being delivered.
inline constexpr int kCommEventReceive = 2;

/// The one line between the computer and the hub. Bytes travel as text, one character a byte.
///
/// Two ways of reading live side by side. While RThreshold() is above 0 the event loop, and nothing
/// else, calls the receive handler when bytes are there. While it is 0 nobody is called and a polled
/// exchange looks for itself; Input() and InBufferCount() see bytes that have arrived even though the
/// event loop does not run.
class SerialPort {
 public:
  virtual ~SerialPort() = default;

  /// Number of the port to open, 1 to 8. Set only while the port is closed.
  virtual void CommPort(int number) = 0;
  [[nodiscard]] virtual int CommPort() const = 0;

  /// Line parameters, always "19200,N,8,1" here.
  virtual void Settings(std::string_view parameters) = 0;

  /// Opens or closes. What it says of a failure is its {error description}: a sentence that says what to
  /// do. Closing never fails.
  virtual Outcome PortOpen(bool open) = 0;
  [[nodiscard]] virtual bool PortOpen() const = 0;

  /// The device that the number led to when the port was opened last, as a path or a name; empty before
  /// that, and for a line that has none.
  [[nodiscard]] virtual std::string Device() const { return {}; }
  /// The number leads to another device by now than the one that is open: a link has been turned, or a
  /// device has come or gone before this one.
  [[nodiscard]] virtual bool LeadsElsewhere() const { return false; }

  /// 0 turns receive events off; any value above 0 turns them on. With events on, bytes are handed
  /// over as soon as they are there, so that a message is never held back for want of a third byte.
  virtual void RThreshold(int bytes) = 0;
  [[nodiscard]] virtual int RThreshold() const = 0;

  /// The empty string at every open: no received byte is ever replaced.
  virtual void ParityReplace(std::string_view replacement) = 0;

  /// Bytes waiting; drains the operating system's own buffer, which is small, into ours.
  [[nodiscard]] virtual int InBufferCount() = 0;
  /// Reads and removes everything that waits; may be empty.
  [[nodiscard]] virtual std::string Input() = 0;
  /// Sends and returns at once. Quietly does nothing when no port is open.
  virtual void Output(std::string_view bytes) = 0;

  /// Blocks in the operating system until bytes arrive that InBufferCount() has not yet counted, the
  /// port goes away or `seconds` have passed, whichever is first. Delivers no event, never spins.
  virtual void WaitForInput(double seconds) = 0;

  /// Kind of the event being delivered; kCommEventReceive for bytes.
  [[nodiscard]] virtual int CommEvent() const = 0;

  /// The receive event. Called from the event loop only, never from inside a polled read.
  std::function<void()> OnComm;
  /// The device vanished (cable pulled, other end closed). The port is closed already; called once,
  /// from the event loop.
  std::function<void()> OnLost;
};

}  // namespace tavlo
