// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "link/execution.h"
#include "link/hub_messages.h"
#include "session/desk.h"

namespace tavlo {

// What passes in a run, put into its log, if the desk has one. None of these sends, shows or changes anything
// else.

/// A message of four bytes has come and is about to be handled. `meaning` is the first header of its kind;
/// nothing for a message that means nothing.
void RecordMessage(Desk& desk, std::optional<HubHeader> meaning, std::string_view message);
/// A status of axis 0..7 has been shown.
void RecordLights(Desk& desk, HubHeader meaning, int axis);
/// A character for the display has come and has not been shown yet.
void RecordText(Desk& desk);
/// A key of the operator terminal was sent.
void RecordKey(Desk& desk, MmiKey key);

/// What the operator tells a run, apart from keys.
enum class RunOrderSent : std::uint8_t { Play, Pause, SingleStep, Reset, Stop, ResetHub };
/// The order was sent.
void RecordControl(Desk& desk, RunOrderSent order);

/// Why a run is over.
enum class RunOver : std::uint8_t {
  Stopped,
  ClosedAndStopped,
  ClosedUnstopped,
  Halted,
  HubSwitchedOn,
  PortGone
};
void RecordEnd(Desk& desk, RunOver why);

}  // namespace tavlo
