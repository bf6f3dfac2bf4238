// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <cstdint>
#include <string>

#include "hubsim/memory.h"
#include "hubsim/options.h"

namespace tavlo::hubsim {

/// What a drive calls itself on the wire; 0 for no drive, `kUnlistedIdentity` for a model that has none.
[[nodiscard]] std::uint8_t IdentityOf(int model);
inline constexpr std::uint8_t kUnlistedIdentity = 200;

/// Drives with the further inputs X0..X7 and outputs Y1..Y3 beside their main ones.
[[nodiscard]] bool HasExtendedIo(int model);

/// The sockets of the hub and the drives in them.
class DriveBay {
 public:
  DriveBay(const HubOptions& options, const Memory& memory) : options_(options), memory_(memory) {}

  [[nodiscard]] int AxisCount() const { return options_.model == HubModel::kQuad ? 4 : kAxisCount; }
  /// Model code of the drive in the socket of `axis` (0..7), 0 for an empty one. Sockets that the hub lacks
  /// are empty.
  [[nodiscard]] int PluggedModel(int axis) const;
  /// True where a status of inputs and outputs can come from: a drive, or the Hub Quad's own block behind its
  /// four axes.
  [[nodiscard]] bool HasIo(int axis) const;

  /// Two bytes an axis: the model that the program expects, the identity of what is plugged in.
  [[nodiscard]] std::string DriveList() const;
  /// Three digits an axis; "000" for an empty socket.
  [[nodiscard]] std::string Revisions() const;

 private:
  const HubOptions& options_;
  const Memory& memory_;
};

}  // namespace tavlo::hubsim
