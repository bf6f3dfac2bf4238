// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "hubsim/program/memory.h"

namespace tavlo::hubsim {

/// Returns what a drive of a model calls itself on the wire: 0 for no drive, `kUnlistedIdentity` for a model
/// that no list knows.
[[nodiscard]] std::uint8_t IdentityOf(int model);
inline constexpr std::uint8_t kUnlistedIdentity = 200;

/// Whether a drive of a model has the inputs X0..X7 and the outputs Y1..Y3 beside its main ones.
[[nodiscard]] bool HasExtendedIo(int model);

/// The value is the model byte on the wire.
enum class HubModel : std::uint8_t { Octo = 8, Quad = 24 };

/// A plugged drive whose identity no list knows.
inline constexpr int kUnlistedDrive = 100;

/// Which hub it is, and what is plugged into its sockets.
struct Sockets {
  HubModel model = HubModel::Octo;
  /// Model code of the drive on each axis, 0 none, `kUnlistedDrive` an unknown one.
  /// Without it, each axis has the drive that the downloaded program expects.
  std::optional<std::array<int, kAxisCount>> drives;
  /// Revision of each drive in hundredths, 0..999.
  std::array<int, kAxisCount> drive_revisions{200, 200, 200, 200, 200, 200, 200, 200};
};

/// The sockets of the hub and the drives in them.
class DriveBay {
 public:
  DriveBay(const Sockets& sockets, const Memory& memory) : sockets_(sockets), memory_(memory) {}

  [[nodiscard]] int AxisCount() const { return sockets_.model == HubModel::Quad ? 4 : kAxisCount; }
  /// Model code of the drive in the socket of `axis` (0..7), 0 for an empty one. Sockets that the hub lacks
  /// are empty.
  [[nodiscard]] int PluggedModel(int axis) const;
  /// Whether there are inputs and outputs to report: those of a drive, or the Hub Quad's own, which count as
  /// the axis after its four.
  [[nodiscard]] bool HasIo(int axis) const;
  /// Revision of the drive on `axis` (0..7) in hundredths.
  [[nodiscard]] int Revision(int axis) const {
    return sockets_.drive_revisions[static_cast<std::size_t>(axis)];
  }

  /// Returns two bytes an axis: the model that the program expects, the identity of what is plugged in.
  [[nodiscard]] std::string DriveList() const;
  /// Returns three digits an axis; "000" for an empty socket.
  [[nodiscard]] std::string Revisions() const;

 private:
  const Sockets& sockets_;
  const Memory& memory_;
};

}  // namespace tavlo::hubsim
