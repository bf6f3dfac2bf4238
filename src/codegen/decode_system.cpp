// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "codegen/axis_layout.h"
#include "codegen/decode.h"

namespace tavlo {
namespace {

int Number(std::string_view bytes) {
  int number = 0;
  for (const char byte : bytes) number = number * 256 + static_cast<unsigned char>(byte);
  return number;
}

float Amps(std::string_view bytes) {
  return static_cast<float>(Number(bytes.substr(0, 1)) + Number(bytes.substr(1)) / 100.0);
}

std::int16_t LimDecode(char c) {
  if (c == '5') return 0;
  return c == '6' ? 1 : 2;
}

std::string WithoutBlanksAtTheEnd(std::string_view text) {
  return std::string(text.substr(0, text.find_last_not_of(' ') + 1));
}

void TakeHubSetting(Program& program, HubSetting setting, int value) {
  switch (setting) {
    case HubSetting::SameUnits: program.Axis.SameUnits = value != 0; break;
    case HubSetting::SameLimits: program.Axis.SameLimits = value != 0; break;
    case HubSetting::SameSpare: program.Axis.SameSpare = value != 0; break;
    case HubSetting::LimitAction:
      // The list has no further entry; what it showed is better than a guess at what a limit should do.
      if (value <= ContinueProgram) program.LimitList = static_cast<std::int16_t>(value);
      break;
    case HubSetting::LimitLine: program.LimitBranch = value + 1; break;
    case HubSetting::TerminalUsed:  // follows from the lines
    case HubSetting::SpareBits: break;
  }
}

void TakeHubSettings(Program& program, int axis, int byte) {
  for (const HubSettingRow& row : kHubSettings) {
    if (row.axis == axis) TakeHubSetting(program, row.setting, (byte & row.mask) >> row.shift);
  }
}

/// Never reads past the block, whatever length the bytes claim. A longer name runs on into the next field.
std::string UnitName(std::string_view block, std::size_t at) {
  return std::string(block.substr(at + 1, static_cast<unsigned char>(block[at])));
}

void TakeField(Program& program, std::size_t axis, std::string_view block, const AxisFieldRow& row) {
  AxisConfig& axes = program.Axis;
  const std::string_view bytes = block.substr(row.at, row.width);
  switch (row.field) {
    case AxisField::Current:
      axes.DriveCurrent[axis] = axes.ContCurrent[axis] = axes.RunCurrent[axis] = Amps(bytes);
      break;
    case AxisField::IdleSetting: axes.IdleCode[axis] = static_cast<std::int16_t>(Number(bytes)); break;
    case AxisField::LimitSwitches: axes.LimitKind[axis] = LimDecode(bytes[0]); break;
    case AxisField::DriveModel: axes.DriveModel[axis] = static_cast<std::int16_t>(Number(bytes)); break;
    case AxisField::StepsPerRev: axes.StepsPerRev[axis] = Number(bytes); break;
    case AxisField::StepsPerUnit: axes.StepsPerUnit[axis] = Number(bytes); break;
    case AxisField::UnitName:
      axes.UnitName[axis] = UnitName(block, row.at);
      axes.UseUnits[axis] = true;
      break;
    case AxisField::AxisName: axes.AxisName[axis] = WithoutBlanksAtTheEnd(bytes); break;
    case AxisField::SecondCurrent: axes.PeakCurrent[axis] = axes.IdleCurrent[axis] = Amps(bytes); break;
    case AxisField::ThirdCurrent: axes.AccelCurrent[axis] = Amps(bytes); break;
    case AxisField::HubSettings: TakeHubSettings(program, static_cast<int>(axis), Number(bytes)); break;
    case AxisField::DriveKind:  // both follow from the rest
    case AxisField::SpeedFactor: break;
  }
}

}  // namespace

void DecodeSystem(Program& program, std::string_view system) {
  std::string bytes(system.substr(0, kSystemBytes));
  bytes.resize(kSystemBytes, '\0');
  for (std::size_t axis = 0; axis < kAxes; ++axis) {
    const auto block = std::string_view(bytes).substr(axis * kAxisBlockBytes, kAxisBlockBytes);
    for (const AxisFieldRow& row : kAxisLayout) TakeField(program, axis, block, row);
  }
}

}  // namespace tavlo
