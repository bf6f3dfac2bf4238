// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

#include "session/desk.h"

namespace tavlo {

/// How long the hub may take to answer anything, in seconds.
inline constexpr double kReplyLimit = 1.0;

/// Keeps the receive event away for as long as it lives: an event during an exchange would eat the reply.
/// Puts back what `RThreshold` was, or what RestoreTo() says.
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

/// Waits until `done` holds or the clock has run more than `limit` seconds past `start`; false if it
/// ran out. Blocks in the port between looks and never yields. A wait across midnight sees a negative time
/// and lasts until the reply comes; a port that is gone ends it at once.
template <class Done>
[[nodiscard]] bool AwaitUntil(const Link& link, double start, double limit, Done done) {
  for (;;) {
    if (done()) return true;
    const double elapsed = link.clock.Timer() - start;
    if (elapsed > limit || !link.Comm1.PortOpen()) return false;
    link.Comm1.WaitForInput(std::clamp(limit - elapsed, 0.001, limit));
  }
}

/// Throws away everything that has come from the hub, half a message too.
void DropInput(const Link& link);

/// Sends the command to stop. What the hub still says of its run counts no more.
void SayStop(const Link& link);
/// Stops what the hub is doing and waits until it has said its last: what is still on its way would be taken
/// for the answer to the next question. Then throws it away. Takes 25 ms if nothing comes; else it lasts
/// until the line has been silent for 50 ms, half a second at most. Never yields.
void StopHub(const Link& link);

/// Throws away what waits and sends the command. Returns the time from which its reply is awaited.
[[nodiscard]] double SendCommand(const Link& link, std::string_view command);

/// The port has gone and nobody has told it yet.
[[nodiscard]] bool PortHasGone(const Link& link);
/// Tells that an exchange has failed. Shows nothing when the port has gone: that is the one cause, and it is
/// told by itself.
void TellFailedExchange(const Link& link, Box box);

/// Waits until one read gives exactly this; any other read is thrown away.
[[nodiscard]] bool AwaitExactly(const Link& link, std::string_view reply, double start,
                                double limit = kReplyLimit);

}  // namespace tavlo
