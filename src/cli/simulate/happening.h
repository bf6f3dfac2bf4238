// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <bitset>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cli/simulate/input_script.h"
#include "hubsim/program/memory.h"

namespace tavlo::cli {

// What a simulated run consists of. Times are seconds since its start; lines and axes count from 0.

enum class Happened {
  Started,   ///< a line
  WentOn,    ///< a line, beside the next ones
  Finished,  ///< a line
  Output,    ///< got another level
  Display,   ///< a row of it shows something else
  Act,       ///< of the script was carried out
  Waits,     ///< a line, for the world
  Waited,    ///< a line, and does not any more
};

/// Where an axis stands.
struct AxisPlace {
  int axis = 0;
  double steps = 0;
};

struct Happening {
  Happened what = Happened::Started;
  double seconds = 0;
  int line = 0;
  int axis = 0;
  int output = 0;  ///< 0..3 for the outputs 1..4, 4..6 for Y1..Y3
  bool high = false;
  int row = 0;  ///< of the display, 0..3
  /// What the row shows, or what would let the line go on.
  std::string text;
  const Act* act = nullptr;
  bool had_effect = true;  ///< the act
  double waited = 0;       ///< seconds
  /// Axes that stand elsewhere than when a line finished before.
  std::vector<AxisPlace> places;
};

/// A line that waits for the world.
struct Wait {
  int line = 0;
  int run = 0;         ///< how many times the line has started
  bool polls = false;  ///< the program asks again and again, this line among others
  double since = 0;
  std::string freed_by;
};

/// How a simulated run ended.
enum class Ending {
  End,        ///< of the program
  Halt,       ///< the hub halted it
  Waits,      ///< for the world, which will do nothing more
  Stuck,      ///< it goes round in no time, and nothing can change that
  TimeLimit,  ///< it was not over
  Stopped,    ///< by who watched it
};

/// Why the hub halted.
struct HaltReport {
  std::string_view cause;
  std::string text;
  int line = 0;
  double seconds = 0;
};

struct RunSummary {
  Ending ending = Ending::End;
  double total = 0;
  std::optional<HaltReport> halt;
  std::vector<Wait> waits;   ///< that have not ended
  std::vector<int> round;    ///< the lines that a program goes round which is stuck
  std::vector<int> turning;  ///< the axes that still turn
  std::bitset<hubsim::kLineCount> ran;
};

/// Who watches a simulated run.
class Watcher {
 public:
  virtual ~Watcher() = default;
  virtual void Saw(const Happening& happening) = 0;
  /// Nothing will happen between these two times, which are about to pass. Returns false to end the run. May
  /// throw Interrupted.
  [[nodiscard]] virtual bool Passes(double from, double to) = 0;
};

}  // namespace tavlo::cli
