// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <array>
#include <cmath>

#include "codegen/axis_layout.h"
#include "codegen/compile.h"
#include "motion/units.h"
#include "platform/number_format.h"

namespace tavlo {
namespace {

constexpr float kDriveKindFirmware = 1.10F;
constexpr int kServoOption = 16;

char LimChar(int kind) {
  constexpr std::array<char, 2> kKinds = {'5', '6'};
  return kind == 0 || kind == 1 ? kKinds[kind] : '3';
}

int DriveKind(float firmware, int model) {
  if (firmware < kDriveKindFirmware) return 1;
  if (ZenuRmsModel(model)) return 3;
  if (PelmarModel(model) || DreskModel(model)) return 1;
  return MirelModel(model) ? 5 : 0;
}

/// Whole amperes and hundredths, rounded; a line's own current is cut instead.
std::string Amps(float amps, std::string_view what) {
  const double whole = std::floor(amps);
  return {WholeByte(WholeLong(whole, what), what),
          WholeByte(WholeLong(RoundHalfEven((static_cast<double>(amps) - whole) * 100), what), what)};
}

std::string Padded(const std::string& text, std::size_t width) {
  return text.size() < width ? text + std::string(width - text.size(), ' ') : text;
}

std::string SpeedFactor(const Program& program, int axis, std::string_view what) {
  const std::int32_t r = GetStepsPerRev(program, axis);
  if (r == 0) throw EncodeError("the steps per revolution are 0");
  const double factor = static_cast<double>(program.Axis.StepsPerUnit[axis]) * kSpeedUnits / r;
  return Pack3(WholeLong(RoundHalfEven(factor), what), what);
}

std::int32_t ValueOf(const Program& program, HubSetting setting, std::string_view what) {
  switch (setting) {
    case HubSetting::TerminalUsed: return program.MMIused ? 1 : 0;
    case HubSetting::SameUnits: return program.Axis.SameUnits ? 1 : 0;
    case HubSetting::SameLimits: return program.Axis.SameLimits ? 1 : 0;
    case HubSetting::SameSpare: return program.Axis.SameSpare ? 1 : 0;
    case HubSetting::SpareBits: return 0;
    case HubSetting::LimitAction: return program.LimitList;
    case HubSetting::LimitLine: return WholeLong(RoundHalfEven(program.LimitBranch - 1), what);
  }
  return 0;
}

std::string HubSettings(const Program& program, int axis) {
  int byte = 0;
  for (const HubSettingRow& row : kHubSettings) {
    if (row.axis != axis) continue;
    const std::string what = "the " + std::string(row.name);
    byte |= static_cast<unsigned char>(WholeByte(ValueOf(program, row.setting, what), what)) << row.shift;
  }
  return {WholeByte(byte)};
}

/// The steppers' idle current goes out in the place of the peak current, and stays there.
void TakeIdleCurrent(AxisConfig& axes, int axis) {
  const int model = axes.DriveModel[axis];
  if (PelmarModel(model) || DreskModel(model)) {
    axes.PeakCurrent[axis] = static_cast<float>(static_cast<double>(axes.DriveCurrent[axis]) / 2);
  } else if (MirelModel(model)) {
    axes.PeakCurrent[axis] = axes.IdleCurrent[axis];
  }
}

std::string FieldOf(Program& program, int axis, AxisField field, std::string_view what) {
  AxisConfig& axes = program.Axis;
  const int model = axes.DriveModel[axis];
  switch (field) {
    case AxisField::Current: {
      const bool rms_servo = ServoModel(model) && ZenuRmsModel(model);
      return Amps(rms_servo ? axes.ContCurrent[axis] : axes.DriveCurrent[axis], what);
    }
    case AxisField::IdleSetting:
      return {WholeByte(ServoModel(model) ? kServoOption : axes.IdleCode[axis], what)};
    case AxisField::LimitSwitches: return {LimChar(axes.LimitKind[axis])};
    case AxisField::DriveModel: return {WholeByte(model, what)};
    case AxisField::StepsPerRev: return Pack2NZ(axes.StepsPerRev[axis], what);
    case AxisField::DriveKind: return {WholeByte(DriveKind(program.HubVersion, model))};
    case AxisField::StepsPerUnit: return Pack3(axes.StepsPerUnit[axis], what);
    case AxisField::UnitName: {
      const std::string& name = axes.UnitName[axis];
      return WholeByte(static_cast<std::int32_t>(name.size()), "the length of the unit name") +
             Padded(name, kUnitNameBytes);
    }
    case AxisField::AxisName: return Padded(axes.AxisName[axis], kAxisNameBytes);
    case AxisField::SpeedFactor: return SpeedFactor(program, axis, what);
    case AxisField::SecondCurrent: TakeIdleCurrent(axes, axis); return Amps(axes.PeakCurrent[axis], what);
    case AxisField::ThirdCurrent:
      return MirelModel(model) ? Amps(axes.AccelCurrent[axis], what) : std::string(2, '\0');
    case AxisField::HubSettings: return HubSettings(program, axis);
  }
  return {};
}

std::string Block(Program& program, int axis) {
  std::string block;
  for (const AxisFieldRow& row : kAxisLayout) {
    block += FieldOf(program, axis, row.field, "the " + std::string(row.name));
  }
  return block;
}

std::string AxisFailure(int axis, std::string_view reason) {
  return "The settings of axis " + Joined(axis + 1) + " cannot be compiled: " + std::string(reason) + ".";
}

}  // namespace

std::string SysString(Program& program) {
  std::string system;
  for (int axis = 0; axis < kAxes; ++axis) {
    try {
      system += Block(program, axis);
    } catch (const EncodeError& error) {
      throw EncodeError(AxisFailure(axis, error.what()));
    }
  }
  return system;
}

void RefuseLongNames(const Program& program) {
  for (int axis = 0; axis < kAxes; ++axis) {
    if (program.Axis.UnitName[axis].size() > kUnitNameBytes) {
      throw EncodeError(AxisFailure(axis, "its unit name is longer than 4 characters"));
    }
    if (program.Axis.AxisName[axis].size() > kAxisNameBytes) {
      throw EncodeError(AxisFailure(axis, "its name is longer than 8 characters"));
    }
  }
}

}  // namespace tavlo
