// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string>

#include "forms/entries.h"
#include "motion/move_profile.h"

namespace tavlo {

/// The second page of a move by a length: what the move will do. It is worked out when the page is turned to,
/// not while the operator types.
class AnalysisTab {
 public:
  /// What an output does on the way; its place is not known where it comes from a variable.
  struct Output {
    OutputChange change;
    bool known = true;
  };
  /// The move as it stands in the dialog; none while a variable holds its speed or its length.
  struct Planned {
    AxisUnits units;
    std::optional<PlannedMove> move = {};
    std::optional<Output> output = {};
    /// Beside the speeds.
    std::string y_caption = {};
  };

  /// `plan` tells what the dialog holds at this moment.
  void AddTo(ControlTable& controls, std::function<Planned()> plan);
  /// The controls of an output besides.
  void AddOutputTo(ControlTable& controls);
  /// The dialog has come up.
  void Activate();

  // The last analysis, for whoever shows it without a window.
  [[nodiscard]] const std::optional<MoveProfile>& Profile() const { return profile_; }
  [[nodiscard]] const std::optional<OutputTrace>& Trace() const { return trace_; }

 private:
  static constexpr int kRows = 6;

  void TurnPage();
  void UpdateAnalysis();
  void ShowHideStats(int rows);
  void GraphMove(const Planned& planned, const MoveProfile& profile);
  void GraphOutput(const Planned& planned, const OutputTrace& trace);
  [[nodiscard]] bool OverTime() const { return over_.Chosen() == 0; }

  std::function<Planned()> plan_;
  TabStrip tabs_;
  /// The first page has been left since the last analysis.
  bool left_first_ = false;
  Label cant_;
  std::array<Label, kRows> labels_;
  std::array<Label, kRows> times_;
  std::array<Label, kRows> dists_;
  Label peak_;
  Label out_time_;
  Label out_dist_;
  OptionGroup<2> over_;
  std::optional<MoveProfile> profile_;
  std::optional<OutputTrace> trace_;
  GraphBox graph_;
};

/// The text with a blank behind every character.
[[nodiscard]] std::string spaced(std::string_view text);
/// The caption of the speeds: the unit with its letters apart, or "R e v / s e c".
[[nodiscard]] std::string SpacedSpeedUnit(AxisUnits units);

}  // namespace tavlo
