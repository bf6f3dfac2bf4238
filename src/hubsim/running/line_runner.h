// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

#include "hubsim/machine/drive_bay.h"
#include "hubsim/machine/machine.h"
#include "hubsim/program/halt.h"
#include "hubsim/program/memory.h"
#include "hubsim/program/statement.h"
#include "hubsim/running/flow.h"
#include "hubsim/terminal/display.h"
#include "hubsim/terminal/interaction.h"

namespace tavlo::hubsim {

/// What has become of a line that began.
struct LineOutcome {
  int next = 0;                ///< the line to go on with; 200 and above end the program
  std::function<bool()> over;  ///< returns whether the line is over
  std::optional<double> wake;  ///< machine time at which it is over; with neither it is over at once
  bool concurrent = false;     ///< its move goes on beside the next lines
  std::optional<Halt> halt;
  /// Decides instead when the line is over and where the program goes on.
  std::unique_ptr<Interaction> interaction;
};

/// What a line works on. The references outlive the outcome.
struct LineContext {
  Machine& machine;
  Flow& flow;
  const DriveBay& bay;
  const Memory& memory;
  TerminalDisplay* display;  ///< null in a run without the operator terminal
  int line;                  ///< 0-based
  double now;                ///< machine seconds
};

/// Whether a line may begin now: the moves that it waits for are over, and the axis that it wants is free.
/// Brakes an axis that turns with no end if a move wants it.
[[nodiscard]] bool MayGo(const Statement& statement, const LineContext& context);

/// Begins a line and carries out the part of it that takes no time.
[[nodiscard]] LineOutcome RunLine(const Statement& statement, const LineContext& context);

}  // namespace tavlo::hubsim
