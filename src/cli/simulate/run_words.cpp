// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/simulate/run_words.h"

#include <algorithm>
#include <cmath>

#include "hubsim/program/io.h"
#include "platform/number_format.h"

namespace tavlo::cli {
namespace {

std::string Numbers(std::vector<int> lines) {
  std::ranges::sort(lines);
  lines.erase(std::unique(lines.begin(), lines.end()), lines.end());
  std::string text = lines.size() == 1 ? "line " : "lines ";
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (i > 0) text += i + 1 < lines.size() ? ", " : " and ";
    text += Joined(lines[i] + 1);
  }
  return text;
}

std::string WaitsText(const std::vector<Wait>& waits) {
  std::string text;
  for (const Wait& wait : waits) {
    text += (text.empty() ? "line " : "; line ") + Joined(wait.line + 1) +
            " waits for ever: " + wait.freed_by + " would set it free";
  }
  return text;
}

std::string StuckText(const std::vector<int>& round) {
  if (round.empty()) return "the program runs on and on, and no time passes";
  return Numbers(round) + (round.size() == 1 ? " goes" : " go") + " round for ever, and no time passes";
}

}  // namespace

std::string_view NameOf(Ending ending) {
  switch (ending) {
    case Ending::End: return "end";
    case Ending::Halt: return "halt";
    case Ending::Waits: return "waits";
    case Ending::Stuck: return "stuck";
    case Ending::TimeLimit: return "limit";
    case Ending::Stopped: return "stopped";
  }
  return "";
}

ExitCode ExitOf(Ending ending) {
  switch (ending) {
    case Ending::End:
    case Ending::TimeLimit: return ExitCode::Done;
    case Ending::Halt: return ExitCode::Halted;
    case Ending::Waits:
    case Ending::Stuck: return ExitCode::Waits;
    case Ending::Stopped: return ExitCode::Other;
  }
  return ExitCode::Other;
}

std::string EndingText(const RunSummary& summary, double limit) {
  switch (summary.ending) {
    case Ending::End: return "the program came to its end";
    case Ending::Halt:
      return "the program was halted at line " + Joined(summary.halt->line + 1) + ": " + summary.halt->text;
    case Ending::Waits: return WaitsText(summary.waits);
    case Ending::Stuck: return StuckText(summary.round);
    case Ending::TimeLimit: return "the program still runs after the limit of " + Joined(limit) + " seconds";
    case Ending::Stopped: return "nobody takes the results";
  }
  return "";
}

std::vector<int> NeverRan(const Program& program, const RunSummary& summary) {
  std::vector<int> lines;
  for (int line = 0; line < kLines; ++line) {
    const int type = program.Prog[line].Type;
    // The hub passes over empty lines and comments without a word.
    if (type != NO && type != CM && !summary.ran[static_cast<std::size_t>(line)]) lines.push_back(line);
  }
  return lines;
}

std::string NameOfAxis(const Program& program, int axis) {
  return IsHubIO(program, axis) ? "hub" : AxisNameOf(program, axis);
}

std::string NameOfOutput(int output) {
  if (output < hubsim::kFirstYOutput) return Joined(output + 1);
  return "Y" + Joined(output - hubsim::kFirstYOutput + 1);
}

std::string_view NameOfLevel(bool high) {
  return high ? "high" : "low";
}

double RoundedSeconds(double seconds) {
  constexpr double kMicroseconds = 1e6;
  return std::round(seconds * kMicroseconds) / kMicroseconds;
}

}  // namespace tavlo::cli
