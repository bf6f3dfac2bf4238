// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "model/axis_config.h"

#include <algorithm>
#include <initializer_list>

namespace tavlo {
namespace {

/// A row of the drive table; its index is the model code. An id below 0 is never reported.
struct DriveRow {
  std::string_view name;
  int id;
  float max_current;
};

constexpr int kNoId = -1;

// Codes 14 and 15 run against the order of the pairs before them, small drive second.
constexpr std::array<DriveRow, 51> kDrives = {{
    {"none", 0, 2.0F},           {"Oskel-A", 5, 5.5F},         {"Tarn-A", 7, 7.0F},
    {"Oskel-B", 2, 5.5F},        {"Oskel-C", 3, 3.5F},         {"Tarn-B", 4, 3.5F},
    {"Oskel-D", 1, 4.5F},        {"Tarn-C", 6, 1.2F},          {"Zenu-D", 9, 7.0F},
    {"Zenu-E", 18, 7.0F},        {"Zenu-A-a", 31, 4.5F},       {"Zenu-A-x", 32, 4.5F},
    {"Zenu-B-a", 34, 9.0F},      {"Zenu-B-x", 35, 9.0F},       {"Zenu-B-p", 40, 9.0F},
    {"Zenu-A-p", 39, 4.5F},      {"Zenu-C-a", 36, 5.0F},       {"Zenu-C-x", 38, 5.0F},
    {"Zenu-C-p", 37, 5.0F},      {"Oskel-E", 10, 5.5F},        {"Zenu-A-ae", 63, 4.5F},
    {"Zenu-A-pe", 71, 4.5F},     {"Zenu-B-ae", 66, 9.0F},      {"Zenu-B-pe", 72, 9.0F},
    {"Zenu-C-ae", 68, 5.0F},     {"Zenu-C-pe", 69, 5.0F},      {"Pelmar-L-a", 41, 6.0F},
    {"Pelmar-L-ae", 73, 6.0F},   {"Pelmar-L-p", 42, 6.0F},     {"Pelmar-L-pe", 74, 6.0F},
    {"Pelmar-L-x", 43, 6.0F},    {"Pelmar-H-a", kNoId, 3.2F},  {"Pelmar-H-ae", kNoId, 3.2F},
    {"Pelmar-H-p", kNoId, 3.2F}, {"Pelmar-H-pe", kNoId, 3.2F}, {"Pelmar-H-x", kNoId, 3.2F},
    {"Dresk-L-a", 20, 5.0F},     {"Dresk-L-m", 26, 5.0F},      {"Dresk-L-p", 22, 5.0F},
    {"Dresk-L-x", 23, 5.0F},     {"Dresk-H-a", 21, 10.0F},     {"Dresk-H-m", 27, 10.0F},
    {"Dresk-H-p", 24, 10.0F},    {"Dresk-H-x", 25, 10.0F},     {"Mirel-p1", 50, 2.0F},
    {"Mirel-p2", 150, 2.0F},     {"Mirel-a1", 49, 2.0F},       {"Mirel-a2", 149, 2.0F},
    {"Vorn-a", 11, 7.0F},        {"Vorn-p", 12, 7.0F},         {"Vorn-x", 13, 7.0F},
}};
static_assert(kDrives.size() == 51 && kDrives[15].name == "Zenu-A-p" && kDrives[30].name == "Pelmar-L-x" &&
              kDrives[50].name == "Vorn-x");

constexpr std::array<std::int16_t, kAxes> kDefaultModels = {1, 4, 3, 2, 5, 7, 8, 0};

constexpr bool Between(int code, int first, int last) {
  return code >= first && code <= last;
}
bool AnyOf(int code, std::initializer_list<int> codes) {
  return std::ranges::find(codes, code) != codes.end();
}

}  // namespace

void InitHardware(AxisConfig& axes) {
  for (std::size_t axis = 0; axis < kAxes; ++axis) {
    axes.DriveModel[axis] = kDefaultModels[axis];
    axes.DriveCurrent[axis] = 1.0F;
    axes.IdleCode[axis] = 2;
    axes.StepResCode[axis] = 8;
    axes.StepsPerRev[axis] = 8000;
    axes.StepsPerUnit[axis] = 20000;
    axes.UnitName[axis] = "rev";
    axes.UseUnits[axis] = true;
    axes.LimitKind[axis] = 0;
    axes.AxisName[axis] = "Axis " + std::to_string(axis + 1);
    axes.ContCurrent[axis] = 1.0F;
    axes.PeakCurrent[axis] = 2.0F;
    axes.RunCurrent[axis] = 3.0F;
    axes.AccelCurrent[axis] = 5.0F;
    axes.IdleCurrent[axis] = 1.0F;
  }
  axes.StepsPerUnit[6] = 8000;
  axes.SameUnits = false;
  axes.SameLimits = true;
}

std::string_view ModelName(int code) {
  return Between(code, 0, 50) ? kDrives[code].name : "unknown type";
}

float MaxCurrent(int code) {
  return Between(code, 0, 50) ? kDrives[code].max_current : 2.0F;
}

int DriveIdToModel(int id) {
  const auto* const row = std::ranges::find(kDrives, id, &DriveRow::id);
  return id < 0 || row == kDrives.end() ? kUnknownModel : static_cast<int>(row - kDrives.begin());
}

bool ServoModel(int code) {
  return Between(code, 8, 18) || Between(code, 48, 50);
}
bool ZenuRmsModel(int code) {
  return Between(code, 10, 18) || Between(code, 20, 23) || Between(code, 48, 50);
}
bool ZenuModel(int code) {
  return ZenuRmsModel(code) && !VornModel(code);
}
bool ZenuACModel(int code) {
  return AnyOf(code, {16, 17, 18, 24, 25});
}
bool ZenuDCOxModel(int code) {
  return AnyOf(code, {11, 13});
}
bool PelmarModel(int code) {
  return Between(code, 26, 35);
}
bool DreskModel(int code) {
  return Between(code, 36, 43);
}
bool MirelModel(int code) {
  return Between(code, 44, 47);
}
bool VornModel(int code) {
  return Between(code, 48, 50);
}
bool OxModel(int code) {
  return AnyOf(code, {11, 13, 17, 30});
}
bool PlainModel(int code) {
  return AnyOf(code, {10, 12, 16, 26});
}
bool ProgModel(int code) {
  return AnyOf(code, {14, 15, 18, 28});
}
bool ProgNetModel(int code) {
  return AnyOf(code, {21, 23, 25, 29});
}
bool PlainNetModel(int code) {
  return AnyOf(code, {20, 22, 24, 27});
}
bool FourInputModel(int code) {
  return AnyOf(code, {36, 37, 40, 41, 44, 45, 46, 47});
}
bool ShowsTxtCurrent(int code) {
  return Between(code, 1, 9) || code == 19 || Between(code, 26, 43);
}

bool ZenuServo(int code) {
  return AnyOf(code, {8, 9});
}
bool MainZENU_Ox(int code) {
  return AnyOf(code, {11, 13, 17});
}
bool ZENU_a(int code) {
  return AnyOf(code, {10, 12, 14, 15, 16, 18, 26, 28});
}
bool ZENU_Ox(int code) {
  return AnyOf(code, {11, 13, 17, 30});
}
bool ZENUC_Ox(int code) {
  return AnyOf(code, {17, 30});
}
bool ZENU_pe(int code) {
  return ProgNetModel(code);
}
bool ZENU_ae(int code) {
  return PlainNetModel(code);
}
bool ExtIO(int code) {
  return ProgNetModel(code) || PlainNetModel(code) || OxModel(code);
}

ServoCurrentLimits MaxServoCurrent(int code) {
  if (AnyOf(code, {10, 11, 15})) return {4.5, 13.5};
  if (AnyOf(code, {20, 21})) return {4.5, 18.0};
  if (AnyOf(code, {16, 17, 18})) return {5.0, 15.0};
  if (AnyOf(code, {24, 25})) return {5.0, 18.0};
  if (VornModel(code)) return {7.0, 14.0};
  return {9.0, 18.0};
}

}  // namespace tavlo
