// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "session/desk.h"

namespace tavlo {

/// The firmware that a revision byte stands for: byte / 100 + 1.
[[nodiscard]] float RevisionOf(unsigned char byte);
/// In the form "0.00".
[[nodiscard]] std::string VersionText(float version);

/// Asks the hub who it is, and shows firmware and model. The raw reply: revision byte, model byte;
/// empty after the operator has been told of a failure.
[[nodiscard]] std::string CheckDrive(Desk& desk);
/// A reply of that question names a model that a hub has. Otherwise the operator is told of an unknown
/// device, with which nothing is begun.
[[nodiscard]] bool IsHub(MessageBoxes& boxes, std::string_view identity);
void TellUnknownDevice(MessageBoxes& boxes);
/// The same as CheckDrive() without showing anything.
[[nodiscard]] std::string SilentCheckDrive(const Link& link);

/// Model codes of the drives, by axis: what the program in the hub expects and what is plugged in.
struct DriveList {
  std::array<int, kAxes> expected{};
  std::array<int, kAxes> actual{};
};
/// Asks the hub for it. Nothing after the operator has been told of a failure. Receive events must be off.
[[nodiscard]] std::optional<DriveList> ReadDriveList(const Link& link, int axes);

/// Asks the hub which drives are plugged in, and compares them and their firmware with the program that
/// it holds. False after the operator was told of a failure or answered No.
[[nodiscard]] bool AllDrivesOK(const Program& program, const Link& link);

/// Asks for the firmware of each drive. Left as it was when the hub does not answer.
void ScanDrivesRV(const Link& link, int axes, std::array<float, kAxisSlots>& revisions);

/// The lowest drive firmware that can change the speed of a started motion on this axis.
[[nodiscard]] float CSrevision(const Program& program, int axis);

/// Sends the fixed set of text commands to every drive that is set up by them. No reply is awaited.
void ConfigDSPdrives(const Program& program, const Link& link);

/// Selects the model that a hub code names and shows the firmware. False for any other code, which
/// changes nothing.
bool ShowHub(Desk& desk, int hub_code);

}  // namespace tavlo
