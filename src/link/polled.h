// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

#include "session/desk.h"
#include "session/hub_runs.h"

namespace tavlo {

/// How long the hub may take to answer a question, in seconds.
inline constexpr double kReplyLimit = 1.0;

/// Turns receive events off for as long as it lives: an event during an exchange would take the reply. Its
/// end restores `RThreshold` to its former value, or to that of RestoreTo().
class EventsOff {
 public:
  explicit EventsOff(SerialPort& port) : port_(port), restore_(port.RThreshold()) { port_.RThreshold(0); }
  ~EventsOff() { port_.RThreshold(restore_); }
  EventsOff(const EventsOff&) = delete;
  EventsOff& operator=(const EventsOff&) = delete;

  void RestoreTo(int threshold) { restore_ = threshold; }

 private:
  SerialPort& port_;
  int restore_;
};

/// Waits until `done` holds or the clock is more than `limit` seconds past `start`. Returns false if the time
/// ran out. Blocks in the port between looks and never yields. A wait across midnight sees a negative time
/// and lasts until the reply comes. If the port has vanished, the wait ends at once.
template <class Done>
[[nodiscard]] bool AwaitUntil(const Link& link, double start, double limit, Done done) {
  for (;;) {
    if (done()) return true;
    const double elapsed = link.clock.Timer() - start;
    if (elapsed > limit || !link.Comm1.PortOpen()) return false;
    link.Comm1.WaitForInput(std::clamp(limit - elapsed, 0.001, limit));
  }
}

/// Throws away everything received from the hub, including half a message.
void DropInput(const Link& link);

/// Keeps every stop away from a transfer for as long as it lives.
class TransferUnderWay {
 public:
  explicit TransferUnderWay(const Link& link) : link_(link) { Note(true); }
  ~TransferUnderWay() { Note(false); }
  TransferUnderWay(const TransferUnderWay&) = delete;
  TransferUnderWay& operator=(const TransferUnderWay&) = delete;

 private:
  void Note(bool under_way);

  Link link_;
};

/// Sends the command to stop. From then on, what the hub still says about its run is ignored.
void SayStop(const Link& link);
/// Stops what the hub is doing, waits until it has fallen silent and throws away what it sent: late bytes
/// would be taken for the answer to the next question. Takes 25 ms if nothing arrives; otherwise it ends when
/// the line has been silent for 50 ms, or after half a second. Never yields.
void StopHub(const Link& link);

/// Throws away what has arrived and sends the command. Returns the time at which the wait for the reply
/// starts.
[[nodiscard]] double SendCommand(const Link& link, std::string_view command);

/// Whether the port has vanished and this has not been reported yet.
[[nodiscard]] bool PortHasGone(const Link& link);
/// Reports that an exchange has failed. Shows nothing if the port has vanished: that is the cause, and it is
/// reported separately.
void TellFailedExchange(const Link& link, Box box);

/// Waits until a single read returns exactly `reply`; any other read is thrown away.
[[nodiscard]] bool AwaitExactly(const Link& link, std::string_view reply, double start,
                                double limit = kReplyLimit);

}  // namespace tavlo
