// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/simulate/simulation.h"

#include <algorithm>
#include <set>

#include "cli/simulate/freeing.h"

namespace tavlo::cli {
namespace {

/// A program that runs more lines than this without any time passing has none to pass: loops in loops may
/// take very long to count down.
constexpr int kMostLinesInAMoment = 1000000;
/// So does a script that answers again and again at once.
constexpr int kMostActsInAMoment = 10000;

bool Contains(const std::vector<int>& lines, int line) {
  return std::ranges::find(lines, line) != lines.end();
}

bool IsSame(const Wait& a, const Wait& b) {
  return a.line == b.line && a.polls == b.polls && (a.polls || a.run == b.run);
}

bool IsAmong(const Wait& wait, const std::vector<Wait>& waits) {
  return std::ranges::any_of(waits, [&](const Wait& other) { return IsSame(wait, other); });
}

}  // namespace

Simulation::Simulation(hubsim::Hub& hub, double now, const InputScript& script, Watcher& watcher)
    : hub_(hub), watcher_(watcher), player_(script), start_(now), now_(now) {
  for (int line = 0; line < hubsim::kLineCount; ++line) {
    statements_[static_cast<std::size_t>(line)] =
        StatementOf(hub.MemoryImage(), line, hub.Options().firmware);
  }
  for (int axis = 0; axis < hubsim::kAxisCount; ++axis) {
    const auto index = static_cast<std::size_t>(axis);
    outputs_[index] = hub.Axis(axis).outputs;
    places_[index] = hub.Axis(axis).position_steps;
  }
}

RunSummary Simulation::Run(double limit) {
  RunSummary summary;
  hub_.Receive("E", now_);
  // The hub answers with the command that starts its program.
  hub_.Receive(hub_.TakeOutput(), now_);
  for (;;) {
    Settle();
    const auto next = TooMuch() ? std::nullopt : NextMoment();
    summary.ending = next ? Ending::TimeLimit : EndingNow();
    if (!next) break;
    const double to = std::min(*next, start_ + limit);
    TellAll();
    const bool goes_on = watcher_.Passes(Seconds(), to - start_);
    now_ = to;
    if (!goes_on) summary.ending = Ending::Stopped;
    if (!goes_on || *next > to) break;
  }
  hub_.Advance(now_);
  TellAll();
  summary.total = Seconds();
  summary.halt = halt_;
  summary.waits = waits_;
  if (summary.ending == Ending::Stuck && !TooMuch()) summary.round = circling_.Round();
  for (int axis = 0; axis < hubsim::kAxisCount; ++axis) {
    if (hub_.Axis(axis).moving) summary.turning.push_back(axis);
  }
  for (std::size_t line = 0; line < runs_.size(); ++line) summary.ran[line] = runs_[line] > 0;
  return summary;
}

Happening& Simulation::Tell(Happened what, int line) {
  Happening& happening = moment_.emplace_back();
  happening.what = what;
  happening.seconds = Seconds();
  happening.line = line;
  return happening;
}

void Simulation::TellAll() {
  for (const Happening& happening : moment_) watcher_.Saw(happening);
  moment_.clear();
  starts_.clear();
}

/// Has everything happen that happens at this moment.
void Simulation::Settle() {
  LetGo();
  circling_.Restart();
  lines_in_moment_ = acts_in_moment_ = 0;
  bool fresh = true;
  for (;;) {
    if (!TooMuch() && CarryOutActs()) continue;
    hub_.Advance(now_);
    TakeMessages();
    if (std::exchange(fresh, false)) LookAtOutputs();
    if (TooMuch()) return;
    if (Acknowledge() || LookAtWaits()) continue;
    const auto next = hub_.NextEvent();
    if (!next || *next > now_) return;
  }
}

bool Simulation::TooMuch() const {
  return lines_in_moment_ > kMostLinesInAMoment || acts_in_moment_ > kMostActsInAMoment;
}

bool Simulation::CarryOutActs() {
  const Act* act = player_.Take(Seconds());
  if (act == nullptr) return false;
  ++acts_in_moment_;
  LetGo();
  circling_.Restart();
  Happening& happening = Tell(Happened::Act);
  happening.act = act;
  happening.had_effect = CarryOut(*act, hub_, now_);
  return true;
}

/// What the hub says goes over no line, so every message is whole.
void Simulation::TakeMessages() {
  constexpr std::size_t kMessage = 4;
  const std::string bytes = hub_.TakeOutput();
  const auto at = [&](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
  for (std::size_t i = 0; i < bytes.size();) {
    const bool is_message = at(i) >= 128 && i + kMessage <= bytes.size();
    if (is_message) {
      TakeMessage(at(i), at(i + 1), at(i + 2), at(i + 3));
    } else {
      text_came_ = true;
    }
    i += is_message ? kMessage : 1;
  }
  if (text_came_) LookAtDisplay();
}

bool Simulation::Acknowledge() {
  if (owed_ == 0 || held_) return false;
  if (started_ && circling_.Closes(hub_, *started_)) {
    Hold();
    return false;
  }
  --owed_;
  TellHeldStart();
  started_.reset();
  hub_.Receive("I", now_);
  return true;
}

/// Withholds the acknowledgement until something changes, so that time can pass. Of the rounds that the
/// program has gone, one is told.
void Simulation::Hold() {
  held_ = true;
  const std::size_t length = circling_.Round().size();
  std::size_t first = starts_.size() - 1;
  while (first >= length && starts_[first].first == starts_[first - length].first) --first;
  const std::size_t told = std::min(first + 1, starts_.size() - 1);
  moment_.resize(starts_[told].second);
  starts_.resize(told);
}

void Simulation::LetGo() {
  if (std::exchange(held_, false)) held_start_ = started_;
}

/// The start of a line that was held is told when it runs at last.
void Simulation::TellHeldStart() {
  const auto line = std::exchange(held_start_, std::nullopt);
  if (!line) return;
  starts_.emplace_back(*line, moment_.size());
  Tell(Happened::Started, *line);
}

/// Returns true if a wait began that something is to follow at once.
bool Simulation::LookAtWaits() {
  const std::vector<Wait> waits = CurrentWaits();
  const std::vector<Wait> before = std::exchange(waits_, {});
  for (const Wait& wait : before) {
    if (IsAmong(wait, waits)) {
      waits_.push_back(wait);
    } else {
      EndWait(wait);
    }
  }
  for (const Wait& wait : waits) {
    if (IsAmong(wait, before)) continue;
    waits_.push_back(wait);
    Tell(Happened::Waits, wait.line).text = wait.freed_by;
    const std::vector<int>& round = circling_.Round();
    for (const int line : wait.polls ? std::set(round.begin(), round.end()) : std::set{wait.line}) {
      if (!FreedBy(statements_[static_cast<std::size_t>(line)]).empty()) player_.LineWaits(line, Seconds());
    }
  }
  const auto due = player_.NextDue();
  return due && *due <= Seconds();
}

std::vector<Wait> Simulation::CurrentWaits() const {
  std::vector<Wait> waits;
  const auto add = [&](int line) {
    const auto index = static_cast<std::size_t>(line);
    waits.push_back({line, runs_[index], false, Seconds(), FreedBy(statements_[index])});
  };
  switch (hub_.Waits()) {
    case hubsim::WaitsFor::Input:
    case hubsim::WaitsFor::Value:
    case hubsim::WaitsFor::Enter:
    case hubsim::WaitsFor::YesOrNo:
    case hubsim::WaitsFor::MenuKey:
      if (const auto line = hub_.RunningLine()) add(*line);
      break;
    case hubsim::WaitsFor::Nothing:
    case hubsim::WaitsFor::Acknowledge:
    case hubsim::WaitsFor::Resume:
    case hubsim::WaitsFor::Motion:
    case hubsim::WaitsFor::Time: break;
  }
  for (int axis = 0; axis < hub_.AxisCount(); ++axis) {
    if (const auto line = hub_.Axis(axis).seeking) add(*line);
  }
  if (const auto wait = PollingWait()) waits.push_back(*wait);
  return waits;
}

/// The wait of a program that goes round and asks for inputs; empty if the lines of its round ask for none.
std::optional<Wait> Simulation::PollingWait() const {
  if (!held_) return std::nullopt;
  std::optional<Wait> wait;
  std::vector<int> asked;
  for (const int line : circling_.Round()) {
    const std::string freed_by = FreedBy(statements_[static_cast<std::size_t>(line)]);
    if (freed_by.empty() || Contains(asked, line)) continue;
    asked.push_back(line);
    if (!wait) wait = Wait{line, 0, true, Seconds(), {}};
    wait->line = std::min(wait->line, line);
    if (wait->freed_by.empty() || wait->freed_by == kNothing) {
      wait->freed_by = freed_by;
    } else if (freed_by != kNothing) {
      wait->freed_by += " or " + freed_by;
    }
  }
  return wait;
}

void Simulation::EndWait(const Wait& wait) {
  Tell(Happened::Waited, wait.line).waited = Seconds() - wait.since;
}

std::optional<double> Simulation::NextMoment() const {
  std::optional<double> next = hub_.NextEvent();
  // A program that is over is waited for only if it has left a move that looks for its sensor.
  if (hub_.State() != hubsim::HubState::Running && waits_.empty()) return next;
  const auto due = player_.NextDue();
  if (due && (!next || start_ + *due < *next)) next = std::max(start_ + *due, now_);
  return next;
}

Ending Simulation::EndingNow() const {
  if (halt_) return Ending::Halt;
  if (TooMuch()) return Ending::Stuck;
  if (!waits_.empty()) return Ending::Waits;
  return hub_.State() == hubsim::HubState::Running ? Ending::Stuck : Ending::End;
}

}  // namespace tavlo::cli
