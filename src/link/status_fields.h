// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string>

#include "session/source.h"

namespace tavlo {

/// One of the three fields of the main window's status line.
struct StatusField {
  std::string text;
  /// What the tool tip says besides, in lines.
  std::string more;
  /// The machine may not do what the operator takes it to do.
  bool warning = false;
};

/// What the hub holds or runs. `now` is HubHolds() of the program that is shown. What a run began with stays
/// for as long as it may go on.
[[nodiscard]] StatusField HubField(const Source& source, Holds now);
/// The port and who answers there. `open`: the port is open; `device` is the one behind it.
[[nodiscard]] StatusField PortField(const Source& source, bool open, const std::string& device);
/// What happened last, and before.
[[nodiscard]] StatusField EventField(const Source& source);

}  // namespace tavlo
