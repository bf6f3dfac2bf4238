// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "link/polled.h"

#include <algorithm>
#include <utility>

namespace tavlo {
namespace {

/// A quiet line proves itself in the first time, one that talks in the second. The second outlasts the pauses
/// that an adapter makes between the lots it hands over.
constexpr double kQuiet = 0.025;
constexpr double kQuietAgain = 0.050;
/// A hub that does not stop talking is asked all the same.
constexpr double kLongestSettling = 0.5;
/// Less would be lost in the rounding of the clock, and the wait never end.
constexpr double kShortestWait = 0.001;

void AwaitSilence(Desk& desk) {
  const double start = desk.clock.Timer();
  double last = start;
  double quiet = kQuiet;
  int seen = 0;
  while (desk.Comm1.PortOpen()) {
    const double now = desk.clock.Timer();
    const double left = std::min(last + quiet, start + kLongestSettling) - now;
    // At midnight the clock begins anew; what is left of so short a wait is not worth a thought.
    if (left <= 0 || now < start) return;
    desk.Comm1.WaitForInput(std::max(left, kShortestWait));
    if (const int count = desk.Comm1.InBufferCount(); count > seen) {
      seen = count;
      last = desk.clock.Timer();
      quiet = kQuietAgain;
    }
  }
}

}  // namespace

void DropInput(Desk& desk) {
  static_cast<void>(desk.Comm1.Input());
  desk.source.received.clear();
  desk.source.InMsg = false;
  desk.source.MsgBuf.clear();
}

void SayStop(Desk& desk) {
  desk.Comm1.Output("S");
  desk.source.Stopped = true;
  desk.source.HubRuns = false;
}

void StopHub(Desk& desk) {
  const EventsOff events(desk.Comm1);
  DropInput(desk);
  SayStop(desk);
  AwaitSilence(desk);
  DropInput(desk);
}

double SendCommand(Desk& desk, std::string_view command) {
  DropInput(desk);
  desk.Comm1.Output(command);
  return desk.clock.Timer();
}

bool PortHasGone(const Desk& desk) {
  return desk.source.ComNum != 0 && !desk.Comm1.PortOpen();
}

void TellFailedExchange(Desk& desk, Box box) {
  if (!PortHasGone(desk)) MsgBox(desk, std::move(box));
}

bool AwaitExactly(Desk& desk, std::string_view reply, double start, double limit) {
  return AwaitUntil(desk, start, limit, [&] { return desk.Comm1.Input() == reply; });
}

}  // namespace tavlo
