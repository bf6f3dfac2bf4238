// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "link/polled.h"

#include <algorithm>
#include <utility>

#include "platform/serial_port.h"

namespace tavlo {
namespace {

/// The line is quiet if nothing arrives in the first time. Once something has arrived, the second applies: it
/// is longer than the pauses of an adapter that hands bytes over in portions.
constexpr double kQuiet = 0.025;
constexpr double kQuietAgain = 0.050;
/// A hub that does not stop sending is asked all the same.
constexpr double kLongestSettling = 0.5;

void AwaitSilence(const Link& link) {
  const double start = link.clock.Timer();
  double last = start;
  double quiet = kQuiet;
  int seen = 0;
  while (link.Comm1.PortOpen()) {
    const double now = link.clock.Timer();
    const double left = std::min(last + quiet, start + kLongestSettling) - now;
    // At midnight the clock restarts; the rest of so short a wait does not matter.
    if (left <= 0 || now < start) return;
    link.Comm1.WaitForInput(std::max(left, SerialPort::kShortestWait));
    if (const int count = link.Comm1.InBufferCount(); count > seen) {
      seen = count;
      last = link.clock.Timer();
      quiet = kQuietAgain;
    }
  }
}

}  // namespace

void DropInput(const Link& link) {
  static_cast<void>(link.Comm1.Input());
  link.state.received.clear();
  link.state.InMsg = false;
  link.state.MsgBuf.clear();
}

void TransferUnderWay::Note(bool under_way) {
  link_.state.Transfer = under_way;
  link_.view.StopChanged();
}

void SayStop(const Link& link) {
  link.Comm1.Output("S");
  link.state.Stopped = true;
  NoteHubRuns(link, false);
}

void StopHub(const Link& link) {
  const EventsOff events(link.Comm1);
  DropInput(link);
  SayStop(link);
  AwaitSilence(link);
  DropInput(link);
}

double SendCommand(const Link& link, std::string_view command) {
  DropInput(link);
  link.Comm1.Output(command);
  return link.clock.Timer();
}

bool PortHasGone(const Link& link) {
  return link.state.ComNum != 0 && !link.Comm1.PortOpen();
}

void TellFailedExchange(const Link& link, Box box) {
  if (!PortHasGone(link)) link.boxes.MsgBox(std::move(box));
}

bool AwaitExactly(const Link& link, std::string_view reply, double start, double limit) {
  return AwaitUntil(link, start, limit, [&] { return link.Comm1.Input() == reply; });
}

}  // namespace tavlo
