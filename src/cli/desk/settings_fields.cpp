// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/desk/settings_fields.h"

#include <algorithm>
#include <array>

#include "codegen/axis_layout.h"
#include "model/axis_config.h"
#include "platform/encoding.h"
#include "platform/number_format.h"

namespace tavlo::cli {
namespace {

int ByteAt(std::string_view bytes, std::size_t at) {
  return static_cast<unsigned char>(bytes[at]);
}

std::string Number(std::string_view bytes) {
  int value = 0;
  for (std::size_t at = 0; at < bytes.size(); ++at) value = value * 256 + ByteAt(bytes, at);
  return Joined(value);
}

std::string Amps(std::string_view bytes) {
  return Format(ByteAt(bytes, 0) + ByteAt(bytes, 1) / 100.0, "0.00") + " A";
}

std::string LimitSwitch(std::string_view bytes) {
  switch (bytes[0]) {
    case '5': return "closed";
    case '6': return "open";
    case '3': return "not used";
    default: return Number(bytes);
  }
}

std::string Model(std::string_view bytes) {
  const int code = ByteAt(bytes, 0);
  const std::string name(ModelName(code));
  return code == 0 ? name : name + " (" + Joined(code) + ")";
}

/// A length and the name that it counts.
std::string UnitName(std::string_view bytes) {
  return std::string(bytes.substr(1, std::min<std::size_t>(ByteAt(bytes, 0), kUnitNameBytes)));
}

std::string Name(std::string_view bytes) {
  std::string name(bytes);
  name.erase(name.find_last_not_of(' ') + 1);
  return name;
}

std::string YesNo(std::string_view bytes) {
  if (ByteAt(bytes, 0) > 1) return Number(bytes);
  return bytes[0] == 0 ? "no" : "yes";
}

std::string LimitAction(std::string_view bytes) {
  constexpr std::array<std::string_view, 3> kActions = {"halt program", "branch to line number",
                                                        "continue program"};
  const auto action = static_cast<std::size_t>(ByteAt(bytes, 0));
  return action < kActions.size() ? std::string(kActions[action]) : Number(bytes);
}

std::string LineNumber(std::string_view bytes) {
  return Joined(ByteAt(bytes, 0) + 1);
}

using Words = std::string (*)(std::string_view bytes);

Words WordsOf(AxisField field) {
  switch (field) {
    case AxisField::Current:
    case AxisField::SecondCurrent:
    case AxisField::ThirdCurrent: return Amps;
    case AxisField::LimitSwitches: return LimitSwitch;
    case AxisField::DriveModel: return Model;
    case AxisField::UnitName: return UnitName;
    case AxisField::AxisName: return Name;
    case AxisField::IdleSetting:
    case AxisField::StepsPerRev:
    case AxisField::DriveKind:
    case AxisField::StepsPerUnit:
    case AxisField::SpeedFactor:
    case AxisField::HubSettings: return Number;
  }
  return Number;
}

Words WordsOf(HubSetting setting) {
  switch (setting) {
    case HubSetting::TerminalUsed:
    case HubSetting::SameUnits:
    case HubSetting::SameLimits:
    case HubSetting::SameSpare: return YesNo;
    case HubSetting::SpareBits: return Number;
    case HubSetting::LimitAction: return LimitAction;
    case HubSetting::LimitLine: return LineNumber;
  }
  return Number;
}

bool CarriesHubSettings(int axis) {
  return std::ranges::any_of(kHubSettings, [=](const HubSettingRow& row) { return row.axis == axis; });
}

void Compare(std::vector<SettingDifference>& found, std::optional<int> axis, std::string_view name,
             Words words, std::string_view file, std::string_view hub) {
  if (file == hub) return;
  SettingDifference difference{axis, std::string(name), words(file), words(hub)};
  if (difference.file == difference.hub) {
    difference.file += " (bytes " + HexOf(file) + ")";
    difference.hub += " (bytes " + HexOf(hub) + ")";
  }
  found.push_back(std::move(difference));
}

std::string Bits(std::string_view system, const HubSettingRow& row) {
  const int byte = ByteAt(system, row.axis * kAxisBlockBytes + kAxisLayout.back().at);
  return {static_cast<char>((byte & row.mask) >> row.shift)};
}

}  // namespace

std::vector<SettingDifference> CompareSettings(std::string_view file, std::string_view hub) {
  std::vector<SettingDifference> found;
  for (int axis = 0; axis < kAxes; ++axis) {
    for (const AxisFieldRow& row : kAxisLayout) {
      if (row.field == AxisField::HubSettings && CarriesHubSettings(axis)) continue;
      const std::size_t at = axis * kAxisBlockBytes + row.at;
      Compare(found, axis + 1, row.name, WordsOf(row.field), file.substr(at, row.width),
              hub.substr(at, row.width));
    }
  }
  for (const HubSettingRow& row : kHubSettings) {
    Compare(found, std::nullopt, row.name, WordsOf(row.setting), Bits(file, row), Bits(hub, row));
  }
  return found;
}

}  // namespace tavlo::cli
