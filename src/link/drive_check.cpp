// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "link/drive_check.h"

#include "link/held_program.h"
#include "link/polled.h"
#include "model/program_queries.h"
#include "platform/encoding.h"
#include "platform/number_format.h"
#include "session/grid.h"

namespace tavlo {
namespace {

constexpr const char* kErrorTitle = "Communication Error";
constexpr const char* kOneCharacter =
    "The Tavlo Hub is responding to the CheckDrive command with only one character.";

/// Reads until there are `count` bytes. Returns false if the time ran out first.
bool ReadUpTo(const Link& link, std::string& reply, std::size_t count) {
  const double start = link.clock.Timer();
  return AwaitUntil(link, start, kReplyLimit, [&] {
    reply += link.Comm1.Input();
    return reply.size() >= count;
  });
}

/// A reply of one byte gets another second for the rest.
std::string CompleteReply(const Link& link, std::string reply) {
  if (reply.size() >= 2) return reply;
  if (ReadUpTo(link, reply, 2)) return reply;
  TellFailedExchange(link, {.text = kOneCharacter, .icon = Icon::Exclamation});
  return {};
}

/// Drives that the hub sets up through text commands, and that can always change speed.
bool IsTextDrive(int model) {
  return ZenuRmsModel(model) || PelmarModel(model) || DreskModel(model) || MirelModel(model);
}

bool FirmwareOK(const Program& program, const Link& link) {
  for (int axis = 0; axis < HubAxes(program); ++axis) {
    const float needed = CSrevision(program, axis);
    if (link.state.DriveRev[axis] >= needed || !ProgHasCS(program, axis)) continue;
    link.boxes.MsgBox(
        {.text = "Your program uses a Start/Stop Change Speed instruction on " + AxisNameOf(program, axis) +
                 ". This instruction requires drive firmware version " + Format(needed, "##0.00") +
                 " or later. Your drive has version " + Joined(link.state.DriveRev[axis]) + ".",
         .title = "Old Firmware",
         .tells = Tells::DrivesRefused});
    return false;
  }
  return true;
}

bool NoneMissing(const Program& program, MessageBoxes& boxes, const DriveList& drives) {
  for (int axis = 0; axis < HubAxes(program); ++axis) {
    if (drives.expected[axis] == 0 || drives.actual[axis] != 0) continue;
    const std::string n = Joined(axis + 1);
    boxes.MsgBox(
        {.text = axis == 0
                     ? "The drive connected to port 1 is not responding.  You must have a drive on port 1."
                     : "The drive connected to port " + n +
                           " is not responding.  If you don't plan to use a drive on port " + n +
                           " then change the model of drive " + n + " to \"none\", and download.",
         .title = "Missing drive",
         .tells = Tells::DrivesRefused});
    return false;
  }
  return true;
}

bool WrongOnesAccepted(const Program& program, MessageBoxes& boxes, const DriveList& drives) {
  for (int axis = 0; axis < HubAxes(program); ++axis) {
    const int expected = drives.expected[axis];
    const int actual = drives.actual[axis];
    // An integrated drive passes for any model.
    if (MirelModel(actual) || actual == expected || expected == 0) continue;
    const std::string n = Joined(axis + 1);
    const std::string question = "The drive connected to port " + n + " is a " +
                                 std::string(ModelName(actual)) + ".  Your program expects drive " + n +
                                 " to be a " + std::string(ModelName(expected)) +
                                 ".  Do you want to run anyway?";
    const Answer answer = boxes.MsgBox(
        {.text = question, .title = "Wrong drive", .buttons = Buttons::YesNo, .tells = Tells::DrivesRefused});
    if (answer != Answer::Yes) return false;
  }
  return true;
}

}  // namespace

float RevisionOf(unsigned char byte) {
  return static_cast<float>(byte / 100.0 + 1.0);
}

std::string VersionText(float version) {
  return Format(version, "0.00");
}

bool ShowHub(Desk& desk, int hub_code) {
  const auto model = HubOfCode(hub_code);
  if (!model) return false;
  desk.source.link.DriveVersion = VersionText(desk.program().HubVersion);
  SelectModel(desk, *model);
  return true;
}

std::string CheckDrive(Desk& desk) {
  const Link link = desk.link();
  const EventsOff events(link.Comm1);
  const double start = SendCommand(link, "C");
  std::string reply;
  const bool answered = AwaitUntil(link, start, kReplyLimit, [&] {
    reply += link.Comm1.Input();
    return reply.size() >= 2;
  });
  if (!answered) {
    TellFailedExchange(
        link, {.text = "The Tavlo Hub is not communicating.  Is it connected to the right port and turned "
                       "on?  Do you have the right comm port selected?  Perhaps cycling power will help.",
               .title = kErrorTitle,
               .icon = Icon::Question,
               .tells = Tells::HubSilent});
    ForgetHub(link);
    return {};
  }
  NoteIdentity(link, std::string_view(reply).substr(0, 2));
  desk.program().HubVersion = RevisionOf(static_cast<unsigned char>(reply[0]));
  ShowHub(desk, CodeOf(reply[1]));
  return reply;
}

bool IsHub(MessageBoxes& boxes, std::string_view identity) {
  if (HubOfCode(CodeOf(identity[1]))) return true;
  TellUnknownDevice(boxes);
  return false;
}

void TellUnknownDevice(MessageBoxes& boxes) {
  boxes.MsgBox({.text = "Unknown device detected on comm port.", .title = "Unknown device"});
}

std::string SilentCheckDrive(const Link& link) {
  const EventsOff events(link.Comm1);
  const double start = SendCommand(link, "C");
  std::string reply;
  const bool answered = AwaitUntil(link, start, kReplyLimit, [&] {
    reply += link.Comm1.Input();
    return !reply.empty();
  });
  if (!answered) {
    TellFailedExchange(
        link, {.text = "The Tavlo Hub is not communicating.  Is it connected to the right port and turned "
                       "on?  Perhaps cycling power will help.",
               .title = kErrorTitle,
               .icon = Icon::Question,
               .tells = Tells::HubSilent});
    return {};
  }
  return CompleteReply(link, std::move(reply));
}

void ScanDrivesRV(const Link& link, int axes, std::array<float, kAxisSlots>& revisions) {
  EventsOff events(link.Comm1);
  events.RestoreTo(1);
  const double start = SendCommand(link, "R");
  if (!AwaitUntil(link, start, kReplyLimit, [&] { return link.Comm1.InBufferCount() >= 3 * axes; })) {
    TellFailedExchange(
        link,
        {.text = "The Tavlo Hub is not responding (R).  Is it connected to the right port and turned on?",
         .icon = Icon::Question});
    return;
  }
  const std::string reply = link.Comm1.Input();
  for (int axis = 0; axis < axes; ++axis) {
    const std::string digits = reply.substr(3 * axis, 3);
    revisions[axis] = static_cast<float>(Val(digits.substr(0, 1) + "." + digits.substr(1)));
  }
}

std::optional<DriveList> ReadDriveList(const Link& link, int axes) {
  const double start = SendCommand(link, "D");
  if (!AwaitUntil(link, start, kReplyLimit, [&] { return link.Comm1.InBufferCount() >= 2 * axes; })) {
    TellFailedExchange(
        link, {.text = "The Tavlo Hub is not responding to the D command.  Is it connected to the right "
                       "port and turned on?",
               .icon = Icon::Question});
    return std::nullopt;
  }
  const std::string reply = link.Comm1.Input();
  DriveList drives;
  for (int axis = 0; axis < axes; ++axis) {
    drives.expected[axis] = CodeOf(reply[2 * axis]);
    drives.actual[axis] = DriveIdToModel(CodeOf(reply[2 * axis + 1]));
  }
  return drives;
}

bool AllDrivesOK(const Program& program, const Link& link) {
  EventsOff events(link.Comm1);
  events.RestoreTo(1);
  const auto drives = ReadDriveList(link, HubAxes(program));
  if (!drives) return false;
  std::ranges::copy(drives->expected, link.state.HubDrives.begin());
  ScanDrivesRV(link, HubAxes(program), link.state.DriveRev);
  return FirmwareOK(program, link) && NoneMissing(program, link.boxes, *drives) &&
         WrongOnesAccepted(program, link.boxes, *drives);
}

float CSrevision(const Program& program, int axis) {
  return IsTextDrive(DriveModelOf(program, axis)) ? 1.0F : 1.89F;
}

void ConfigDSPdrives(const Program& program, const Link& link) {
  constexpr std::array<std::string_view, 8> kCommands = {"PR1", "TD0", "AO3", "BO3",
                                                         "MO3", "AI3", "SI3", "SA"};
  const EventsOff events(link.Comm1);
  link.Comm1.Output("H");
  for (int axis = 0; axis < HubAxes(program); ++axis) {
    if (!IsTextDrive(DriveModelOf(program, axis))) continue;
    for (const std::string_view command : kCommands) {
      link.Comm1.Output(Joined(axis + 1) + std::string(command) + "\r");
    }
  }
  link.Comm1.Output("0HM\r");
  DropInput(link);
}

}  // namespace tavlo
