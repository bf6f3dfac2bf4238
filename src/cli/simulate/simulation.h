// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <array>
#include <string>
#include <utility>
#include <vector>

#include "cli/simulate/circling.h"
#include "cli/simulate/happening.h"
#include "cli/simulate/script_player.h"
#include "hubsim/hub.h"
#include "hubsim/program/statement.h"

namespace tavlo::cli {

/// Runs the program in a hub's memory from its first line, from event to event. The PC's side takes no time:
/// each line is acknowledged in the moment in which it is reported.
class Simulation {
 public:
  /// `now` is the hub's time; the run begins then. What it is given must outlive it.
  Simulation(hubsim::Hub& hub, double now, const InputScript& script, Watcher& watcher);

  /// Runs it, but not longer than `limit` seconds of the machine.
  [[nodiscard]] RunSummary Run(double limit);

 private:
  [[nodiscard]] double Seconds() const { return now_ - start_; }
  Happening& Tell(Happened what, int line = 0);
  void TellAll();

  void Settle();
  [[nodiscard]] bool TooMuch() const;
  [[nodiscard]] bool CarryOutActs();
  void TakeMessages();
  void TakeMessage(int header, int b2, int b3, int b4);
  void TakeHalt(int header, int b2, int b3, int b4);
  void LineStarted(int line);
  void LineFinished(int line);
  void LookAtOutputs();
  void LookAtDisplay();
  [[nodiscard]] std::vector<AxisPlace> NewPlaces();

  [[nodiscard]] bool Acknowledge();
  void Hold();
  void LetGo();
  void TellHeldStart();
  [[nodiscard]] bool LookAtWaits();
  [[nodiscard]] std::vector<Wait> CurrentWaits() const;
  [[nodiscard]] std::optional<Wait> PollingWait() const;
  void EndWait(const Wait& wait);

  [[nodiscard]] std::optional<double> NextMoment() const;
  [[nodiscard]] Ending EndingNow() const;

  hubsim::Hub& hub_;
  Watcher& watcher_;
  ScriptPlayer player_;
  double start_;
  double now_;
  std::array<hubsim::Statement, hubsim::kLineCount> statements_;

  /// What has happened in this moment, and which of it are starts of lines: a line and an index.
  std::vector<Happening> moment_;
  std::vector<std::pair<int, std::size_t>> starts_;

  int owed_ = 0;                ///< acknowledgements
  std::optional<int> started_;  ///< the line of the last one
  bool held_ = false;           ///< it is withheld, because the program goes round
  std::optional<int> held_start_;
  int last_line_ = 0;
  int lines_in_moment_ = 0;
  int acts_in_moment_ = 0;
  Circling circling_;
  std::vector<Wait> waits_;

  std::array<int, hubsim::kLineCount> runs_{};
  std::array<int, hubsim::kAxisCount> outputs_{};
  std::array<double, hubsim::kAxisCount> places_{};
  hubsim::DisplayLines display_;
  bool text_came_ = false;
  std::optional<HaltReport> halt_;
};

}  // namespace tavlo::cli
