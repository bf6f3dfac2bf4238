// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "session/desk.h"

namespace tavlo {

/// The firmware version of a revision byte: byte / 100 + 1.
[[nodiscard]] float RevisionOf(unsigned char byte);
/// In the form "0.00".
[[nodiscard]] std::string VersionText(float version);

/// Asks the hub for its identity and shows firmware and model. Returns the raw reply, revision byte and model
/// byte; empty if it failed, which has been reported to the operator.
[[nodiscard]] std::string CheckDrive(Desk& desk);
/// Whether the reply to that question names a known hub model. If it does not, reports an unknown device to
/// the operator; nothing may be started with that.
[[nodiscard]] bool IsHub(MessageBoxes& boxes, std::string_view identity);
void TellUnknownDevice(MessageBoxes& boxes);
/// Does what CheckDrive() does, but shows nothing.
[[nodiscard]] std::string SilentCheckDrive(const Link& link);

/// Model codes of the drives, by axis: the one that the hub's program expects, and the one that is plugged
/// in.
struct DriveList {
  std::array<int, kAxes> expected{};
  std::array<int, kAxes> actual{};
};
/// Asks the hub for that list. Returns nothing if it failed, which has been reported to the operator. Receive
/// events must be off.
[[nodiscard]] std::optional<DriveList> ReadDriveList(const Link& link, int axes);

/// Asks the hub which drives are plugged in, and compares them and their firmware with the program that the
/// hub holds. Returns false if it failed, which has been reported, or if the operator answered No.
[[nodiscard]] bool AllDrivesOK(const Program& program, const Link& link);

/// Asks for the firmware of each drive. `revisions` keeps its values if the hub does not answer.
void ScanDrivesRV(const Link& link, int axes, std::array<float, kAxisSlots>& revisions);

/// The lowest drive firmware that can change the speed of a motion under way on this axis.
[[nodiscard]] float CSrevision(const Program& program, int axis);

/// Sends the fixed set of text commands to every drive that is set up by text commands. Waits for no reply.
void ConfigDSPdrives(const Program& program, const Link& link);

/// Selects the hub model with this code and shows the firmware. For an unknown code it changes nothing and
/// returns false.
bool ShowHub(Desk& desk, int hub_code);

}  // namespace tavlo
