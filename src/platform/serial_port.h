// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "platform/outcome.h"

namespace tavlo {

/// What CommEvent() returns while a receive event is being delivered.
inline constexpr int kCommEventReceive = 2;

/// The one line between the computer and the hub. Bytes travel as text, one character a byte.
///
/// There are two ways to read. While RThreshold() is above 0, the event loop, and nothing else, calls the
/// receive handler when bytes have arrived. While it is 0, nothing is called and a polled exchange looks for
/// itself: Input() and InBufferCount() see bytes that have arrived although the event loop does not run.
class SerialPort {
 public:
  virtual ~SerialPort() = default;

  /// Number of the port to open, 1 to 8. Must only be set while the port is closed.
  virtual void CommPort(int number) = 0;
  [[nodiscard]] virtual int CommPort() const = 0;

  /// Line parameters, always "19200,N,8,1" here.
  virtual void Settings(std::string_view parameters) = 0;

  /// Opens or closes. The text of a failure is its {error description}: a sentence that says what to do.
  /// Closing never fails.
  virtual Outcome PortOpen(bool open) = 0;
  [[nodiscard]] virtual bool PortOpen() const = 0;

  /// The device that the number led to when the port was last opened, as a path or a name. Empty before that,
  /// and for a line without a device.
  [[nodiscard]] virtual std::string Device() const { return {}; }
  /// Whether the number now leads to another device than the open one: a link has been changed, or a device
  /// that comes before this one has come or gone.
  [[nodiscard]] virtual bool LeadsElsewhere() const { return false; }

  /// 0 turns receive events off; any value above 0 turns them on. Then bytes are handed over as soon as they
  /// arrive, so that a message is never held back because a third byte is missing.
  virtual void RThreshold(int bytes) = 0;
  [[nodiscard]] virtual int RThreshold() const = 0;

  /// Always set to the empty string when the port is opened: no received byte is ever replaced.
  virtual void ParityReplace(std::string_view replacement) = 0;

  /// Returns the number of bytes that wait; moves them from the operating system's own buffer, which is
  /// small, into ours.
  [[nodiscard]] virtual int InBufferCount() = 0;
  /// Returns and removes all bytes that wait; may be empty.
  [[nodiscard]] virtual std::string Input() = 0;
  /// Sends and returns at once. Does nothing, and reports nothing, if no port is open.
  virtual void Output(std::string_view bytes) = 0;

  /// Blocks in the operating system until bytes arrive that InBufferCount() has not counted yet, the port
  /// vanishes or `seconds` have passed, whichever comes first. Delivers no event and never spins.
  virtual void WaitForInput(double seconds) = 0;
  /// A loop that waits for less may never end: clocks and waits are not exact to the last bit.
  static constexpr double kShortestWait = 0.001;

  /// The kind of the event that is being delivered; kCommEventReceive for bytes.
  [[nodiscard]] virtual int CommEvent() const = 0;

  /// The receive event. Called from the event loop only, never from inside a polled read.
  std::function<void()> OnComm;
  /// Called once, from the event loop, when the device has vanished (cable pulled, other end closed). The
  /// port is closed by then.
  std::function<void()> OnLost;
};

}  // namespace tavlo
