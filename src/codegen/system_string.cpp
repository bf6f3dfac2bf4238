// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <array>
#include <cmath>

#include "codegen/compile.h"
#include "motion/units.h"
#include "platform/number_format.h"

namespace tavlo {
namespace {

constexpr float kDriveKindFirmware = 1.10F;
constexpr std::size_t kUnitNameBytes = 4;
constexpr std::size_t kAxisNameBytes = 8;
constexpr int kServoOption = 16;
constexpr int kSliderStepsPerRevS = 40;

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

std::string SpeedFactor(const Program& program, int axis) {
  const std::int32_t r = GetStepsPerRev(program, axis);
  if (r == 0) throw EncodeError("the steps per revolution are 0");
  const double factor = static_cast<double>(program.Axis.StepsPerUnit[axis]) * kSliderStepsPerRevS / r;
  return Pack3(WholeLong(RoundHalfEven(factor), "the speed factor"), "the speed factor");
}

/// Settings of the whole hub ride in the last byte of chosen axes.
char SettingsByte(const Program& program, int axis) {
  const AxisConfig& axes = program.Axis;
  switch (axis) {
    case 0: return WholeByte(program.MMIused ? 1 : 0);
    case 2: return WholeByte((axes.SameUnits ? 1 : 0) + (axes.SameLimits ? 2 : 0) + (axes.SameSpare ? 4 : 0));
    case 3: return WholeByte(program.LimitList, "the limit action");
    case 4:
      return WholeByte(WholeLong(RoundHalfEven(program.LimitBranch - 1), "the limit line"), "the limit line");
    default: return 0;
  }
}

std::string Block(Program& program, int axis) {
  AxisConfig& axes = program.Axis;
  const int model = axes.DriveModel[axis];
  const bool rms_servo = ServoModel(model) && ZenuRmsModel(model);
  std::string block = Amps(rms_servo ? axes.ContCurrent[axis] : axes.DriveCurrent[axis], "the current");
  block += WholeByte(ServoModel(model) ? kServoOption : axes.IdleCode[axis], "the idle setting");
  block += LimChar(axes.LimitKind[axis]);
  block += WholeByte(model, "the drive model");
  block += Pack2NZ(axes.StepsPerRev[axis], "the steps per revolution");
  block += WholeByte(DriveKind(program.HubVersion, model));
  block += Pack3(axes.StepsPerUnit[axis], "the steps per unit");
  block += WholeByte(static_cast<std::int32_t>(axes.UnitName[axis].size()), "the length of the unit name");
  block += Padded(axes.UnitName[axis], kUnitNameBytes);
  block += Padded(axes.AxisName[axis], kAxisNameBytes);
  block += SpeedFactor(program, axis);
  if (PelmarModel(model) || DreskModel(model)) {
    axes.PeakCurrent[axis] = static_cast<float>(static_cast<double>(axes.DriveCurrent[axis]) / 2);
  } else if (MirelModel(model)) {
    axes.PeakCurrent[axis] = axes.IdleCurrent[axis];
  }
  block += Amps(axes.PeakCurrent[axis], "the second current");
  block += MirelModel(model) ? Amps(axes.AccelCurrent[axis], "the third current") : std::string(2, '\0');
  block += SettingsByte(program, axis);
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
