// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "link/drive_check.h"

#include "link/polled.h"
#include "model/program_queries.h"
#include "platform/number_format.h"
#include "session/main_window.h"

namespace tavlo {
namespace {

constexpr const char* kErrorTitle = "Communication Error";
constexpr const char* kOneCharacter =
    "The Tavlo Hub is responding to the CheckDrive command with only one character.";

int Code(char c) {
  return static_cast<unsigned char>(c);
}

/// Reads until there are `count` bytes. False if the time ran out first.
bool ReadUpTo(Desk& desk, std::string& reply, std::size_t count) {
  const double start = desk.clock.Timer();
  return AwaitUntil(desk, start, kReplyLimit, [&] {
    reply += desk.Comm1.Input();
    return reply.size() >= count;
  });
}

/// A reply of one byte gets another second for the rest.
std::string CompleteReply(Desk& desk, std::string reply) {
  if (reply.size() >= 2) return reply;
  if (ReadUpTo(desk, reply, 2)) return reply;
  TellFailedExchange(desk, {.text = kOneCharacter, .icon = Icon::Exclamation});
  return {};
}

/// Drives that the hub sets up through text commands, and that can always change speed.
bool IsTextDrive(int model) {
  return ZenuRmsModel(model) || PelmarModel(model) || DreskModel(model) || MirelModel(model);
}

bool FirmwareOK(Desk& desk) {
  const Program& program = desk.program();
  for (int axis = 0; axis < HubAxes(program); ++axis) {
    const float needed = CSrevision(program, axis);
    if (desk.source.DriveRev[axis] >= needed || !ProgHasCS(program, axis)) continue;
    MsgBox(desk, {.text = "Your program uses a Start/Stop Change Speed instruction on " +
                          AxisNameOf(program, axis) + ". This instruction requires drive firmware version " +
                          Format(needed, "##0.00") + " or later. Your drive has version " +
                          Joined(desk.source.DriveRev[axis]) + ".",
                  .title = "Old Firmware",
                  .tells = Tells::DrivesRefused});
    return false;
  }
  return true;
}

bool NoneMissing(Desk& desk, const DriveList& drives) {
  for (int axis = 0; axis < HubAxes(desk.program()); ++axis) {
    if (drives.expected[axis] == 0 || drives.actual[axis] != 0) continue;
    const std::string n = Joined(axis + 1);
    MsgBox(desk,
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

bool WrongOnesAccepted(Desk& desk, const DriveList& drives) {
  for (int axis = 0; axis < HubAxes(desk.program()); ++axis) {
    const int expected = drives.expected[axis];
    const int actual = drives.actual[axis];
    // An integrated drive passes for any model.
    if (MirelModel(actual) || actual == expected || expected == 0) continue;
    const std::string n = Joined(axis + 1);
    const std::string question = "The drive connected to port " + n + " is a " +
                                 std::string(ModelName(actual)) + ".  Your program expects drive " + n +
                                 " to be a " + std::string(ModelName(expected)) +
                                 ".  Do you want to run anyway?";
    const Answer answer = MsgBox(
        desk,
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
  desk.source.DriveVersion = VersionText(desk.program().HubVersion);
  SelectModel(desk, *model);
  return true;
}

std::string CheckDrive(Desk& desk) {
  const EventsOff events(desk.Comm1);
  const double start = SendCommand(desk, "C");
  std::string reply;
  const bool answered = AwaitUntil(desk, start, kReplyLimit, [&] {
    reply += desk.Comm1.Input();
    return reply.size() >= 2;
  });
  if (!answered) {
    TellFailedExchange(
        desk, {.text = "The Tavlo Hub is not communicating.  Is it connected to the right port and turned "
                       "on?  Do you have the right comm port selected?  Perhaps cycling power will help.",
               .title = kErrorTitle,
               .icon = Icon::Question,
               .tells = Tells::HubSilent});
    return {};
  }
  desk.program().HubVersion = RevisionOf(static_cast<unsigned char>(reply[0]));
  ShowHub(desk, Code(reply[1]));
  return reply;
}

bool IsHub(Desk& desk, std::string_view identity) {
  if (HubOfCode(Code(identity[1]))) return true;
  TellUnknownDevice(desk);
  return false;
}

void TellUnknownDevice(Desk& desk) {
  MsgBox(desk, {.text = "Unknown device detected on comm port.", .title = "Unknown device"});
}

std::string SilentCheckDrive(Desk& desk) {
  const EventsOff events(desk.Comm1);
  const double start = SendCommand(desk, "C");
  std::string reply;
  const bool answered = AwaitUntil(desk, start, kReplyLimit, [&] {
    reply += desk.Comm1.Input();
    return !reply.empty();
  });
  if (!answered) {
    TellFailedExchange(
        desk, {.text = "The Tavlo Hub is not communicating.  Is it connected to the right port and turned "
                       "on?  Perhaps cycling power will help.",
               .title = kErrorTitle,
               .icon = Icon::Question,
               .tells = Tells::HubSilent});
    return {};
  }
  return CompleteReply(desk, std::move(reply));
}

void ScanDrivesRV(Desk& desk, std::array<float, kAxisSlots>& revisions) {
  EventsOff events(desk.Comm1);
  events.RestoreTo(1);
  const int axes = HubAxes(desk.program());
  const double start = SendCommand(desk, "R");
  if (!AwaitUntil(desk, start, kReplyLimit, [&] { return desk.Comm1.InBufferCount() >= 3 * axes; })) {
    TellFailedExchange(
        desk,
        {.text = "The Tavlo Hub is not responding (R).  Is it connected to the right port and turned on?",
         .icon = Icon::Question});
    return;
  }
  const std::string reply = desk.Comm1.Input();
  for (int axis = 0; axis < axes; ++axis) {
    const std::string digits = reply.substr(3 * axis, 3);
    revisions[axis] = static_cast<float>(Val(digits.substr(0, 1) + "." + digits.substr(1)));
  }
}

std::optional<DriveList> ReadDriveList(Desk& desk) {
  const int axes = HubAxes(desk.program());
  const double start = SendCommand(desk, "D");
  if (!AwaitUntil(desk, start, kReplyLimit, [&] { return desk.Comm1.InBufferCount() >= 2 * axes; })) {
    TellFailedExchange(
        desk, {.text = "The Tavlo Hub is not responding to the D command.  Is it connected to the right "
                       "port and turned on?",
               .icon = Icon::Question});
    return std::nullopt;
  }
  const std::string reply = desk.Comm1.Input();
  DriveList drives;
  for (int axis = 0; axis < axes; ++axis) {
    drives.expected[axis] = Code(reply[2 * axis]);
    drives.actual[axis] = DriveIdToModel(Code(reply[2 * axis + 1]));
  }
  return drives;
}

bool AllDrivesOK(Desk& desk) {
  EventsOff events(desk.Comm1);
  events.RestoreTo(1);
  const auto drives = ReadDriveList(desk);
  if (!drives) return false;
  std::ranges::copy(drives->expected, desk.source.HubDrives.begin());
  ScanDrivesRV(desk, desk.source.DriveRev);
  return FirmwareOK(desk) && NoneMissing(desk, *drives) && WrongOnesAccepted(desk, *drives);
}

float CSrevision(const Program& program, int axis) {
  return IsTextDrive(DriveModelOf(program, axis)) ? 1.0F : 1.89F;
}

void ConfigDSPdrives(Desk& desk) {
  constexpr std::array<std::string_view, 8> kCommands = {"PR1", "TD0", "AO3", "BO3",
                                                         "MO3", "AI3", "SI3", "SA"};
  const EventsOff events(desk.Comm1);
  desk.Comm1.Output("H");
  for (int axis = 0; axis < HubAxes(desk.program()); ++axis) {
    if (!IsTextDrive(DriveModelOf(desk.program(), axis))) continue;
    for (const std::string_view command : kCommands) {
      desk.Comm1.Output(Joined(axis + 1) + std::string(command) + "\r");
    }
  }
  desk.Comm1.Output("0HM\r");
  DropInput(desk);
}

}  // namespace tavlo
