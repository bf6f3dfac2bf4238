// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include <nlohmann/json.hpp>

#include "hubsim/mount/console.h"

namespace tavlo::hubsim {
namespace {

std::string_view NameOf(HubState state) {
  switch (state) {
    case HubState::kIdle: return "idle";
    case HubState::kDownloading: return "downloading";
    case HubState::kPassthrough: return "passthrough";
    case HubState::kRunning: return "running";
    case HubState::kPaused: return "paused";
    case HubState::kEnded: return "ended";
    case HubState::kHalted: return "halted";
  }
  return "";
}

/// Empty for nothing.
std::string_view NameOf(WaitsFor waits) {
  switch (waits) {
    case WaitsFor::kNothing: return "";
    case WaitsFor::kAcknowledge: return "acknowledge";
    case WaitsFor::kResume: return "resume";
    case WaitsFor::kMotion: return "motion";
    case WaitsFor::kTime: return "time";
    case WaitsFor::kInput: return "input";
    case WaitsFor::kValue: return "value";
    case WaitsFor::kEnter: return "enter";
    case WaitsFor::kYesOrNo: return "yes or no";
    case WaitsFor::kMenuKey: return "menu key";
  }
  return "";
}

/// By their numbers on the wire, those that are not 0.
nlohmann::ordered_json DescribeVariables(const Hub& hub) {
  auto variables = nlohmann::ordered_json::object();
  for (int number = 0; number < kVariableCount; ++number) {
    const int value = hub.Variable(number);
    if (value != 0) variables[std::to_string(number)] = value;
  }
  return variables;
}

nlohmann::ordered_json Describe(const AxisView& axis, int number) {
  return {{"axis", number},        {"position", axis.position_steps}, {"speed", axis.speed_steps_s},
          {"moving", axis.moving}, {"motorOn", axis.motor_on},        {"amps", axis.amps},
          {"inputs", axis.inputs}, {"xInputs", axis.x_inputs},        {"outputs", axis.outputs}};
}

}  // namespace

std::string DescribeState(const Hub& hub) {
  nlohmann::ordered_json state;
  state["state"] = NameOf(hub.State());
  const auto line = hub.RunningLine();
  state["line"] = line ? nlohmann::ordered_json(*line + 1) : nlohmann::ordered_json(nullptr);
  state["plugged"] = !hub.Unplugged();
  state["terminalRun"] = hub.TerminalRun();
  state["callDepth"] = hub.CallDepth();
  const std::string_view waits = NameOf(hub.Waits());
  state["waitsFor"] = waits.empty() ? nlohmann::ordered_json(nullptr) : nlohmann::ordered_json(waits);
  state["display"] = hub.Display();
  state["variables"] = DescribeVariables(hub);
  state["model"] = static_cast<int>(hub.Options().model);
  state["firmware"] = (100 + hub.Options().firmware) / 100.0;
  state["fail"] = RowOf(hub.Options().failure.mode).name;
  auto& axes = state["axes"] = nlohmann::ordered_json::array();
  for (int axis = 0; axis < kAxisCount; ++axis) axes.push_back(Describe(hub.Axis(axis), axis + 1));
  return state.dump();
}

}  // namespace tavlo::hubsim
