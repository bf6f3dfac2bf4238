// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/desk/settle.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "link/polled.h"
#include "model/program.h"
#include "platform/serial_port.h"
#include "platform/stopwatch.h"

namespace tavlo::cli {
namespace {

/// A hub that talks does so again within this time, also through an adapter that holds bytes back.
constexpr double kListens = 0.025;
/// Longer than the gaps in what a hub sends on by itself.
constexpr double kSilent = 0.15;
/// A hub's memory takes 4.3 s at the line's speed.
constexpr double kLongestTalk = 6;
/// A longer wait is reported, because an operator would notice it.
constexpr double kWorthTelling = 0.5;
/// After so long without a byte a hub gives up a download, and any late answer has come.
constexpr double kGivesUp = 1;
/// For what a hub that still did not answer may say late.
constexpr double kLateAnswer = 0.5;

/// Ends the passthrough, and is harmless if there is none: then the first "H" opens it and the rest goes to
/// the drives. On a hub that does not know the passthrough, "M" would start the program; but a program does
/// nothing before its first line is acknowledged, and the stop follows at once.
constexpr std::string_view kLeavePassthrough = "H\r0HM\rS";

/// Throws away what arrives until nothing has arrived for `silent` seconds. Returns false after `limit`
/// seconds.
bool AwaitSilence(Desk& desk, double silent, double limit) {
  Stopwatch total(desk.clock);
  Stopwatch since_byte(desk.clock);
  static_cast<void>(desk.Comm1.Input());
  while (since_byte.Seconds() < silent) {
    if (total.Seconds() > limit || !desk.Comm1.PortOpen()) return false;
    desk.Comm1.WaitForInput(std::max(silent - since_byte.Seconds(), SerialPort::kShortestWait));
    if (!desk.Comm1.Input().empty()) since_byte.Restart();
  }
  return true;
}

bool SomethingComes(Desk& desk) {
  Stopwatch listens(desk.clock);
  while (desk.Comm1.PortOpen() && desk.Comm1.Input().empty()) {
    const double left = kListens - listens.Seconds();
    // Clocks and waits are not exact to the last bit.
    if (left < SerialPort::kShortestWait / 2) return false;
    desk.Comm1.WaitForInput(std::max(left, SerialPort::kShortestWait));
  }
  return true;
}

/// Reports nothing if there is no answer.
bool AnswersAsHub(Desk& desk) {
  std::string reply;
  const double start = SendCommand(desk.link(), "C");
  static_cast<void>(AwaitUntil(desk.link(), start, kReplyLimit, [&] {
    reply += desk.Comm1.Input();
    return reply.size() >= 2;
  }));
  return reply.size() == 2 && HubOfCode(static_cast<unsigned char>(reply[1]));
}

}  // namespace

bool AwaitQuietLine(Console& console, Desk& desk) {
  const EventsOff events(desk.Comm1);
  if (!SomethingComes(desk)) return true;
  desk.Comm1.Output("S");
  if (AwaitSilence(desk, kSilent, kWorthTelling)) return true;
  console.Inform("the hub is sending, as after an interrupted upload; waiting until it is silent");
  if (AwaitSilence(desk, kSilent, kLongestTalk)) return true;
  if (desk.Comm1.PortOpen()) console.Note("the hub does not stop sending; power it off and on");
  return false;
}

bool StopTalk(Desk& desk) {
  const EventsOff events(desk.Comm1);
  desk.Comm1.Output("S");
  if (AwaitSilence(desk, kSilent, kWorthTelling)) return true;
  desk.Comm1.Output("S");
  return AwaitSilence(desk, kSilent, kWorthTelling);
}

bool SettleHub(Console& console, Desk& desk) {
  if (!desk.Comm1.PortOpen()) return false;
  const EventsOff events(desk.Comm1);
  console.Inform(
      "the hub does not answer; an interrupted command may have left it waiting for more: giving it time");
  if (!AwaitSilence(desk, kGivesUp, kLongestTalk)) return false;
  desk.Comm1.Output("S");
  if (!AwaitSilence(desk, kListens, kWorthTelling)) return false;
  if (AnswersAsHub(desk)) return true;
  if (!AwaitSilence(desk, kLateAnswer, kLongestTalk)) return false;
  console.Inform("taking the hub out of the drives' passthrough, in case it is still in it");
  desk.Comm1.Output(kLeavePassthrough);
  return AwaitSilence(desk, kListens * 2, kWorthTelling) && AnswersAsHub(desk);
}

}  // namespace tavlo::cli
