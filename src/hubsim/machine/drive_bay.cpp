// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/machine/drive_bay.h"

#include <algorithm>
#include <array>

#include "hubsim/program/axis_settings.h"

namespace tavlo::hubsim {
namespace {

struct IdentityRow {
  int model;
  std::uint8_t identity;
};

/// Models 31 to 35 are missing: no identity is known for them.
constexpr std::array<IdentityRow, 46> kIdentities{{
    {0, 0},    {1, 5},   {2, 7},    {3, 2},   {4, 3},   {5, 4},   {6, 1},   {7, 6},   {8, 9},   {9, 18},
    {10, 31},  {11, 32}, {12, 34},  {13, 35}, {14, 40}, {15, 39}, {16, 36}, {17, 38}, {18, 37}, {19, 10},
    {20, 63},  {21, 71}, {22, 66},  {23, 72}, {24, 68}, {25, 69}, {26, 41}, {27, 73}, {28, 42}, {29, 74},
    {30, 43},  {36, 20}, {37, 26},  {38, 22}, {39, 23}, {40, 21}, {41, 27}, {42, 24}, {43, 25}, {44, 50},
    {45, 150}, {46, 49}, {47, 149}, {48, 11}, {49, 12}, {50, 13},
}};

constexpr std::array<int, 12> kExtendedIoModels{11, 13, 17, 20, 21, 22, 23, 24, 25, 27, 29, 30};

constexpr int kQuadOwnBlock = 4;

void AppendDigits(std::string& text, int hundredths) {
  text += static_cast<char>('0' + hundredths / 100 % 10);
  text += static_cast<char>('0' + hundredths / 10 % 10);
  text += static_cast<char>('0' + hundredths % 10);
}

}  // namespace

std::uint8_t IdentityOf(int model) {
  const auto* row = std::ranges::find(kIdentities, model, &IdentityRow::model);
  return row == kIdentities.end() ? kUnlistedIdentity : row->identity;
}

bool HasExtendedIo(int model) {
  return std::ranges::find(kExtendedIoModels, model) != kExtendedIoModels.end();
}

int DriveBay::PluggedModel(int axis) const {
  if (axis >= AxisCount()) return 0;
  if (sockets_.drives) return (*sockets_.drives)[static_cast<std::size_t>(axis)];
  return ReadAxisSettings(memory_.Axis(axis)).model;
}

bool DriveBay::HasIo(int axis) const {
  return PluggedModel(axis) != 0 || (sockets_.model == HubModel::Quad && axis == kQuadOwnBlock);
}

std::string DriveBay::DriveList() const {
  std::string list;
  for (int axis = 0; axis < AxisCount(); ++axis) {
    list += static_cast<char>(ReadAxisSettings(memory_.Axis(axis)).model);
    list += static_cast<char>(IdentityOf(PluggedModel(axis)));
  }
  return list;
}

std::string DriveBay::Revisions() const {
  std::string digits;
  for (int axis = 0; axis < AxisCount(); ++axis) {
    AppendDigits(digits, PluggedModel(axis) == 0 ? 0 : Revision(axis));
  }
  return digits;
}

}  // namespace tavlo::hubsim
