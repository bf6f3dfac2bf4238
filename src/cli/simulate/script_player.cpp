// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/simulate/script_player.h"

namespace tavlo::cli {
namespace {

/// Sums of times that are meant to be the same differ by less.
constexpr double kSameMoment = 1e-9;

/// To a program that does not wait for a key a "0" would be the command to start anew.
bool TakesKey(char key, const hubsim::Hub& hub) {
  if (!hub.TerminalRun()) return false;
  switch (hub.Waits()) {
    case hubsim::WaitsFor::Value:
    case hubsim::WaitsFor::MenuKey: return true;
    case hubsim::WaitsFor::Enter:
    case hubsim::WaitsFor::YesOrNo: return key != '0';
    case hubsim::WaitsFor::Nothing:
    case hubsim::WaitsFor::Acknowledge:
    case hubsim::WaitsFor::Resume:
    case hubsim::WaitsFor::Motion:
    case hubsim::WaitsFor::Time:
    case hubsim::WaitsFor::Input: break;
  }
  return false;
}

bool Press(const std::string& keys, hubsim::Hub& hub, double now) {
  bool pressed = false;
  for (const char key : keys) {
    if (!TakesKey(key, hub)) break;
    hub.Receive({&key, 1}, now);
    pressed = true;
  }
  return pressed;
}

}  // namespace

ScriptPlayer::ScriptPlayer(const InputScript& script) : script_(script), used_(script.cues.size()) {
  for (const Cue& cue : script.cues) {
    if (cue.at == CueAt::Time) Start(cue, cue.seconds);
  }
}

void ScriptPlayer::LineWaits(int line, double now) {
  for (std::size_t i = 0; i < script_.cues.size(); ++i) {
    const Cue& cue = script_.cues[i];
    if (cue.at != CueAt::OneWait || cue.line != line || used_[i]) continue;
    used_[i] = true;
    return Start(cue, now);
  }
  for (const Cue& cue : script_.cues) {
    if (cue.at == CueAt::EachWait && cue.line == line) Start(cue, now);
  }
}

void ScriptPlayer::Start(const Cue& cue, double now) {
  for (const Step& step : cue.steps) due_.emplace(now + step.delay, &step.act);
}

std::optional<double> ScriptPlayer::NextDue() const {
  return due_.empty() ? std::nullopt : std::optional(due_.begin()->first);
}

const Act* ScriptPlayer::Take(double now) {
  if (due_.empty() || due_.begin()->first > now + kSameMoment) return nullptr;
  return due_.extract(due_.begin()).mapped();
}

bool CarryOut(const Act& act, hubsim::Hub& hub, double now) {
  switch (act.doing) {
    case Doing::Input: return hub.SetInput(act.axis, act.input, act.high, now);
    case Doing::Limit: return hub.HitLimit(act.axis, now);
    case Doing::Fault: return hub.Fail(act.axis, act.code, now);
    case Doing::Wheel: return hub.TurnKnob(act.axis, act.counts, now);
    case Doing::StopButton: return hub.PressStop(now);
    case Doing::Keys: return Press(act.keys, hub, now);
  }
  return false;
}

}  // namespace tavlo::cli
