// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <optional>
#include <type_traits>

#include "cli/console/console.h"
#include "cli/desk/settling_boxes.h"
#include "session/desk.h"

namespace tavlo::cli {

// A command that was killed leaves the hub where it was: sending its memory, taking what comes for a program,
// or passing it to the drives. Nothing tells the next command, so it listens, and looks at what comes.

/// Listens before anything is said. A hub that talks is told to stop and waited for until it is silent, which
/// ends an upload that somebody broke off. False after the message that it does not fall silent.
[[nodiscard]] bool AwaitQuietLine(Console& console, Desk& desk);

/// Sends the stop and waits until the line is silent; sends it once more to a hub that talks on. False if it
/// talks even then.
[[nodiscard]] bool StopTalk(Desk& desk);

/// The hub did not say who it is: waits out what an interrupted command may have left behind, and takes the
/// hub out of the drives' passthrough. True once it answers; it is idle then.
[[nodiscard]] bool SettleHub(Console& console, Desk& desk);

/// Does something that begins with the question who the hub is. If nobody answers that and the hub can be
/// brought round, does it once more. Nothing after the message of a line that does not fall silent.
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
