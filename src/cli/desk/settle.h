// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <optional>
#include <type_traits>

#include "cli/console/console.h"
#include "cli/desk/settling_boxes.h"
#include "session/desk.h"

namespace tavlo::cli {

// A command that was killed leaves the hub as it was: sending its memory, taking what it receives for a
// program, or passing it to the drives. The next command cannot know this, so it listens first and looks at
// what arrives.

/// Listens before anything is sent. If the hub is sending, stops it and waits until it is silent; this also
/// ends an upload that was broken off. Returns false after a message if the hub does not fall silent.
[[nodiscard]] bool AwaitQuietLine(Console& console, Desk& desk);

/// Sends the stop and waits until the line is silent. If the hub goes on sending, sends the stop once more.
/// Returns false if it goes on even then.
[[nodiscard]] bool StopTalk(Desk& desk);

/// For a hub that did not identify itself: waits until what an interrupted command may have left behind is
/// over, and ends the passthrough to the drives. Returns true if the hub then answers; it is idle then.
[[nodiscard]] bool SettleHub(Console& console, Desk& desk);

/// Runs an operation that begins by asking the hub for its identity. If there is no answer and SettleHub()
/// succeeds, runs it once more. Returns nothing after a message if the line does not fall silent.
template <class Operation>
[[nodiscard]] std::optional<std::invoke_result_t<Operation>> OnSettledLine(Console& console, Desk& desk,
                                                                           SettlingBoxes& boxes,
                                                                           Operation operation) {
  if (!AwaitQuietLine(console, desk)) return std::nullopt;
  boxes.WithholdSilence();
  auto result = operation();
  if (!boxes.SilenceWithheld()) return result;
  if (!SettleHub(console, desk)) {
    boxes.ShowWithheld();
    return result;
  }
  return operation();
}

}  // namespace tavlo::cli
