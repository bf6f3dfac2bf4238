// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include <nlohmann/json.hpp>

#include "hubsim/mount/console.h"

namespace tavlo::hubsim {
namespace {

std::string_view NameOf(HubState state) {
  switch (state) {
    case HubState::Idle: return "idle";
    case HubState::Downloading: return "downloading";
    case HubState::Passthrough: return "passthrough";
    case HubState::Running: return "running";
    case HubState::Paused: return "paused";
    case HubState::Ended: return "ended";
    case HubState::Halted: return "halted";
  }
  return "";
}

/// Empty for nothing.
std::string_view NameOf(WaitsFor waits) {
  switch (waits) {
    case WaitsFor::Nothing: return "";
    case WaitsFor::Acknowledge: return "acknowledge";
    case WaitsFor::Resume: return "resume";
    case WaitsFor::Motion: return "motion";
    case WaitsFor::Time: return "time";
    case WaitsFor::Input: return "input";
    case WaitsFor::Value: return "value";
    case WaitsFor::Enter: return "enter";
    case WaitsFor::YesOrNo: return "yes or no";
    case WaitsFor::MenuKey: return "menu key";
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
