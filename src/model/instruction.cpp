// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "model/instruction.h"

namespace tavlo {
namespace {

struct VariableGroup {
  int first;
  int count;
  std::string_view name;
};
constexpr std::array<VariableGroup, 4> kVariableGroups = {
    {{0, 15, "Dist"}, {15, 10, "Posn"}, {25, 10, "Speed"}, {35, 15, "Count"}}};
static_assert(kVariableGroups[3].first + kVariableGroups[3].count == kMMIVariables);

}  // namespace

std::string MMIVarName(int variable) {
  for (const auto& group : kVariableGroups) {
    if (variable >= group.first && variable < group.first + group.count) {
      return std::string(group.name) + std::to_string(variable - group.first + 1);
    }
  }
  return {};
}

std::string_view MMIVarKind(int sub_type) {
  constexpr std::array<std::string_view, 3> kKinds = {"distance", "speed", "repeat count"};
  return sub_type >= 0 && sub_type < 3 ? kKinds[sub_type] : "";
}

}  // namespace tavlo
