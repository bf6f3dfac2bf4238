// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "session/run_panel.h"

#include "platform/number_format.h"
#include "session/desk.h"

namespace tavlo {
namespace {

/// From here on a drive reports its further inputs and outputs.
constexpr float kReportsExtended = 1.53F;
/// Limit switches: the last two of eight main inputs, the last two of X1 to X7.
constexpr int kFirstMainLimit = 6;
constexpr int kFirstXLimit = 5;
constexpr int kFourInputLeds = 3;
constexpr int kHubQuadInputs = 4;
constexpr int kPlainOutputs = 3;

bool IsOn(int bits, int bit) {
  return (bits >> bit & 1) == 0;
}

Led Green(int bits, int bit) {
  return IsOn(bits, bit) ? Led::Green : Led::GreenOff;
}

Led Red(int bits, int bit) {
  return IsOn(bits, bit) ? Led::Red : Led::RedOff;
}

/// The drive has no main inputs and outputs: its status tells of the X and Y ones.
bool IsCut(int model) {
  return PlainModel(model) || ProgModel(model);
}

bool HasYBesideMain(int model) {
  return OxModel(model) || PlainNetModel(model) || ProgNetModel(model);
}

bool IsHubColumn(const Program& program, int axis) {
  return program.HubIndex == HubQuad && axis == kHubQuadIO;
}

/// The model that the lights of a column go by. On a Hub Quad the fifth column is no drive, whatever an
/// earlier program has left in that slot.
int ColumnModel(const Program& program, int axis) {
  return IsHubColumn(program, axis) ? 0 : DriveModelOf(program, axis);
}

/// The limit switches of these stand among the inputs X1 to X7.
bool LimitsAmongX(int model) {
  return PlainModel(model) || ZenuACModel(model) || ProgModel(model) || ProgNetModel(model) ||
         PlainNetModel(model) || PelmarModel(model);
}

void PaintOutputs(const Lights& lights, int axis, int outputs) {
  RunPanel& panel = lights.panel;
  const int model = ColumnModel(lights.program, axis);
  if (IsCut(model)) {
    for (int i = 0; i < kYOutputs; ++i) panel.OUTY[axis][i] = Green(outputs, i);
    return;
  }
  for (int i = 0; i < kMainOutputs; ++i) panel.OUTlo[axis][i] = Green(outputs, i);
  if (!HasYBesideMain(model)) return;
  const bool reports = PelmarModel(model) || lights.DriveRev[axis] >= kReportsExtended;
  for (int i = 0; i < kYOutputs; ++i) {
    panel.OUTY[axis][i] = reports ? Green(outputs, kMainOutputs + i) : Led::Unknown;
  }
}

}  // namespace

std::string_view PhaseText(RunPhase phase) {
  switch (phase) {
    case RunPhase::Running: return "running";
    case RunPhase::Pausing: return "pausing";
    case RunPhase::Paused: return "paused";
    case RunPhase::Stepping: return "stepping";
    case RunPhase::Stopped: return "stopped";
  }
  return {};
}

int LedsOf(LedRow row) {
  switch (row) {
    case LedRow::INlo: return kMainInputs;
    case LedRow::INX: return kXInputs;
    case LedRow::OUTlo: return kMainOutputs;
    case LedRow::OUTY: return kYOutputs;
  }
  return 0;
}

Led RunPanel::At(LedRow row, int axis, int bit) const {
  switch (row) {
    case LedRow::INlo: return INlo[axis][bit];
    case LedRow::INX: return INX[axis][bit];
    case LedRow::OUTlo: return OUTlo[axis][bit];
    case LedRow::OUTY: return OUTY[axis][bit];
  }
  return Led::Unknown;
}

void MakeLimitsRed(RunPanel& panel, const Program& program) {
  for (int axis = 0; axis < kAxes; ++axis) {
    panel.INlo[axis].fill(Led::GreenOff);
    panel.INX[axis].fill(Led::GreenOff);
    panel.OUTlo[axis].fill(Led::GreenOff);
    panel.OUTY[axis].fill(Led::GreenOff);
    if (axis >= HubAxes(program)) continue;
    if (LimitsAmongX(ColumnModel(program, axis))) {
      for (int i = kFirstXLimit; i < kXInputs; ++i) panel.INX[axis][i] = Led::RedOff;
    } else {
      for (int i = kFirstMainLimit; i < kMainInputs; ++i) panel.INlo[axis][i] = Led::RedOff;
    }
  }
}

bool RedLED(const Program& program, int bit, int axis) {
  const int model = ColumnModel(program, axis);
  return bit >= kFirstMainLimit && !IsHubColumn(program, axis) && !ZenuACModel(model) &&
         program.Axis.LimitKind[axis] != kLimitsNotUsed && !PelmarModel(model);
}

void ShowStatus(const Lights& lights, int axis, int inputs, int outputs) {
  RunPanel& panel = lights.panel;
  const bool cut = IsCut(ColumnModel(lights.program, axis));
  for (int i = 0; i < kMainInputs; ++i) {
    const Led led = RedLED(lights.program, i, axis) ? Red(inputs, i) : Green(inputs, i);
    if (!cut) {
      panel.INlo[axis][i] = led;
    } else if (i < kXInputs) {
      panel.INX[axis][i] = led;
    }
  }
  PaintOutputs(lights, axis, outputs);
  lights.view.StatusChanged(axis);
}

void ShowXStatus(const Lights& lights, int axis, int inputs) {
  const int model = ColumnModel(lights.program, axis);
  const bool reports = IsCut(model) || PelmarModel(model) || lights.DriveRev[axis] >= kReportsExtended;
  const bool limits = lights.program.Axis.LimitKind[axis] != kLimitsNotUsed && !ZenuDCOxModel(model);
  for (int i = 0; i < kXInputs; ++i) {
    Led& led = lights.panel.INX[axis][i];
    if (!reports) {
      led = Led::Unknown;
    } else {
      led = limits && i >= kFirstXLimit ? Red(inputs, i) : Green(inputs, i);
    }
  }
  lights.view.StatusChanged(axis);
}

void ShowOutStatus(const Lights& lights, int axis, int outputs) {
  PaintOutputs(lights, axis, outputs);
  lights.view.StatusChanged(axis);
}

int PanelColumns(const Program& program) {
  return program.HubIndex == HubQuad ? kHubQuadIO + 1 : kAxes;
}

std::string ColumnCaption(const Program& program, int axis) {
  return IsHubColumn(program, axis) ? "Hub" : Joined(axis + 1);
}

bool ShowsLed(const Program& program, LedRow row, int axis, int bit) {
  if (axis < 0 || axis >= PanelColumns(program) || bit < 0 || bit >= LedsOf(row)) return false;
  const int model = ColumnModel(program, axis);
  switch (row) {
    case LedRow::INlo:
      if (IsHubColumn(program, axis)) return bit < kHubQuadInputs;
      if (FourInputModel(model)) return bit < kFourInputLeds;
      return model != 0 && !IsCut(model);
    case LedRow::INX:
    case LedRow::OUTY: return !IsHubColumn(program, axis) && (ZenuModel(model) || PelmarModel(model));
    case LedRow::OUTlo:
      if (IsHubColumn(program, axis)) return true;
      return model != 0 && !IsCut(model) && (bit < kPlainOutputs || FourOutputAxis(program, axis));
  }
  return false;
}

std::string LedCaption(LedRow row, int bit) {
  switch (row) {
    case LedRow::INlo:
    case LedRow::OUTlo: return Joined(bit + 1);
    case LedRow::INX: return "X" + Joined(bit + 1);
    case LedRow::OUTY: return "Y" + Joined(bit + 1);
  }
  return {};
}

std::string LedName(const Program& program, LedRow row, int axis, int bit, Led led) {
  const bool input = row == LedRow::INlo || row == LedRow::INX;
  const bool limit = led == Led::Red || led == Led::RedOff;
  std::string name = IsHubColumn(program, axis) ? "hub" : "axis " + Joined(axis + 1);
  name += (input ? " input " : " output ") + LedCaption(row, bit);
  if (limit) name += " (limit)";
  if (led == Led::Unknown) return name + ": unknown";
  return name + (led == Led::Green || led == Led::Red ? ": on" : ": off");
}

}  // namespace tavlo
