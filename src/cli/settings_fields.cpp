// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/settings_fields.h"

#include <algorithm>
#include <array>

#include "cli/encoding.h"
#include "model/axis_config.h"
#include "platform/number_format.h"

namespace tavlo::cli {
namespace {

constexpr std::size_t kBlockBytes = 32;
constexpr std::size_t kUnitNameBytes = 4;

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

/// A field of an axis's block.
struct Field {
  std::size_t at;
  std::size_t width;
  std::string_view name;
  std::string (*words)(std::string_view bytes);
};

constexpr std::array<Field, 13> kFields = {{{0, 2, "current", Amps},
                                            {2, 1, "idle setting", Number},
                                            {3, 1, "limit switches", LimitSwitch},
                                            {4, 1, "drive model", Model},
                                            {5, 2, "steps per revolution", Number},
                                            {7, 1, "drive kind", Number},
                                            {8, 3, "steps per unit", Number},
                                            {11, 5, "unit name", UnitName},
                                            {16, 8, "axis name", Name},
                                            {24, 3, "speed factor", Number},
                                            {27, 2, "second current", Amps},
                                            {29, 2, "third current", Amps},
                                            {31, 1, "spare byte", Number}}};

constexpr bool FieldsFillTheBlock() {
  std::size_t end = 0;
  for (const Field& field : kFields) {
    if (field.at != end) return false;
    end += field.width;
  }
  return end == kBlockBytes;
}
static_assert(FieldsFillTheBlock(), "every byte belongs to one field");

/// Settings of the whole hub ride in the last byte of chosen axes, some by bits.
struct HubField {
  std::size_t axis;
  int mask;
  int shift;
  std::string_view name;
  std::string (*words)(std::string_view bytes);
};

constexpr std::array<HubField, 7> kHubFields = {{{0, 255, 0, "operator terminal used", YesNo},
                                                 {2, 1, 0, "same units for all axes", YesNo},
                                                 {2, 2, 1, "same limits for all axes", YesNo},
                                                 {2, 4, 2, "same spare setting for all axes", YesNo},
                                                 {2, 248, 3, "spare bits", Number},
                                                 {3, 255, 0, "limit action", LimitAction},
                                                 {4, 255, 0, "limit line", LineNumber}}};

bool CarriesHubFields(std::size_t axis) {
  return std::ranges::any_of(kHubFields, [=](const HubField& field) { return field.axis == axis; });
}

void Compare(std::vector<SettingDifference>& found, std::optional<int> axis, std::string_view name,
             std::string (*words)(std::string_view), std::string_view file, std::string_view hub) {
  if (file == hub) return;
  SettingDifference difference{axis, std::string(name), words(file), words(hub)};
  if (difference.file == difference.hub) {
    difference.file += " (bytes " + HexOf(file) + ")";
    difference.hub += " (bytes " + HexOf(hub) + ")";
  }
  found.push_back(std::move(difference));
}

std::string Bits(std::string_view system, const HubField& field) {
  const int byte = ByteAt(system, field.axis * kBlockBytes + kBlockBytes - 1);
  return {static_cast<char>((byte & field.mask) >> field.shift)};
}

}  // namespace

std::vector<SettingDifference> CompareSettings(std::string_view file, std::string_view hub) {
  std::vector<SettingDifference> found;
  for (std::size_t axis = 0; axis < kAxes; ++axis) {
    for (const Field& field : kFields) {
      if (field.at + 1 == kBlockBytes && CarriesHubFields(axis)) continue;
      const std::size_t at = axis * kBlockBytes + field.at;
      Compare(found, static_cast<int>(axis) + 1, field.name, field.words, file.substr(at, field.width),
              hub.substr(at, field.width));
    }
  }
  for (const HubField& field : kHubFields) {
    Compare(found, std::nullopt, field.name, field.words, Bits(file, field), Bits(hub, field));
  }
  return found;
}

}  // namespace tavlo::cli
