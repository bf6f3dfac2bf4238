// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <cstdint>
#include <functional>
#include <optional>

#include "hubsim/drive_bay.h"
#include "hubsim/flow.h"
#include "hubsim/machine.h"
#include "hubsim/statement.h"

namespace tavlo::hubsim {

enum class HaltKind : std::uint8_t {
  kLimit,
  kStopButton,
  kStackOverflow,
  kStackUnderflow,
  kFault,
  kDriveDisabled,
  kDriveLost,
};

/// Why a program was halted. `axis` and `code` are 0 where they mean nothing.
struct Halt {
  HaltKind kind = HaltKind::kStopButton;
  int axis = 0;
  int code = 0;
};

/// What became of a line that was let go.
struct LineOutcome {
  int next = 0;                ///< the line to go on with; 200 and above end the program
  std::function<bool()> over;  ///< tells when the line is over
  std::optional<double> wake;  ///< machine time at which it is over; with neither it is over at once
  bool concurrent = false;     ///< its move goes on beside the next lines
  std::optional<Halt> halt;
};

/// What a line works on. The references outlive the outcome's `over`.
struct LineContext {
  Machine& machine;
  Flow& flow;
  const DriveBay& bay;
  int line;    ///< 0-based
  double now;  ///< machine seconds
};

/// Whether a line may be let go now, or must wait for moves that it waits for or whose axis it wants. Brings
/// an axis that turns with no end to rest where a move wants it.
[[nodiscard]] bool MayGo(const Statement& statement, const LineContext& context);

/// Carries one line out as far as it goes at once.
[[nodiscard]] LineOutcome RunLine(const Statement& statement, const LineContext& context);

}  // namespace tavlo::hubsim
