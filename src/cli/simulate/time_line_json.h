// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <deque>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "cli/console/json_text.h"
#include "cli/simulate/happening.h"
#include "session/source.h"

namespace tavlo::cli {

/// Keeps the time line of a simulated run and gives it as one JSON document.
class TimeLineJson {
 public:
  explicit TimeLineJson(const Source& source) : source_(source) {}

  void Saw(const Happening& happening);
  /// Returns the document as a line of text. `error` is added if it is not null.
  [[nodiscard]] std::string Document(const RunSummary& summary, double limit, const Json& error) const;

 private:
  /// An hour of a machine may be a million of these.
  struct LineRun {
    int line = 0;
    double start = 0;
    std::optional<double> went_on;
    std::optional<double> end;
    std::vector<AxisPlace> places;
  };
  struct WaitRun {
    int line = 0;
    double start = 0;
    std::optional<double> end;
    std::string freed_by;
  };

  void SawLine(const Happening& happening);
  [[nodiscard]] std::string Beginning(int line) const;
  [[nodiscard]] Json JsonOf(const std::vector<AxisPlace>& places) const;
  [[nodiscard]] std::string LinesText() const;

  const Source& source_;
  std::vector<LineRun> lines_;
  std::vector<WaitRun> waits_;
  Json outputs_ = Json::array();
  Json display_ = Json::array();
  Json acts_ = Json::array();
  /// By line, the runs of it and the wait that are not over yet, as indices. A line whose move goes on beside
  /// the program may have begun anew before that move is over.
  std::map<int, std::deque<std::size_t>> open_lines_;
  std::map<int, std::size_t> open_waits_;
};

}  // namespace tavlo::cli
