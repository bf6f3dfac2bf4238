// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <map>
#include <optional>

#include "cli/simulate/input_script.h"
#include "hubsim/hub.h"

namespace tavlo::cli {

/// Knows which act of a script is due when. Times are seconds of the run.
class ScriptPlayer {
 public:
  /// The script must outlive the player.
  explicit ScriptPlayer(const InputScript& script);

  /// A line, 0-based, has begun to wait for the world.
  void LineWaits(int line, double now);
  /// When the next act is due; empty if none is, as things stand.
  [[nodiscard]] std::optional<double> NextDue() const;
  /// Takes the next act that is due by now; null if none is. Acts of the same moment come in the script's
  /// order.
  [[nodiscard]] const Act* Take(double now);

 private:
  void Start(const Cue& cue, double now);

  const InputScript& script_;
  std::vector<bool> used_;  ///< by cue: it was for one wait, which has been
  std::multimap<double, const Act*> due_;
};

/// Does an act to the hub. Returns false if nothing happens: no line waits for the key or follows the wheel,
/// or a limit, a fault or the stop button has nothing to stop.
bool CarryOut(const Act& act, hubsim::Hub& hub, double now);

}  // namespace tavlo::cli
