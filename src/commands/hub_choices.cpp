// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "commands/hub_choices.h"

#include <algorithm>
#include <cmath>

#include "platform/number_format.h"
#include "session/edit_step.h"
#include "session/grid.h"

namespace tavlo {
namespace {

void ShowTarget(const Grid& grid, int line_number) {
  ShowDesc(grid, line_number - 1);
  SetIcon(grid, line_number - 1);
}

}  // namespace

void ChooseModel(Desk& desk, int index) {
  const EditStep step(desk, "hub model", EditStep::Hub::Edited);
  const std::int16_t before = desk.program().HubIndex;
  SelectModel(desk, index);
  if (desk.program().HubIndex != before) desk.source.Changed = true;
}

void SelectLimitAction(Desk& desk, int index) {
  const auto action = static_cast<std::int16_t>(std::clamp<int>(index, HaltProgram, ContinueProgram));
  const EditStep step(desk, "limit action");
  if (action != desk.program().LimitList) desk.source.Changed = true;
  desk.program().LimitList = action;
  desk.view.LimitChanged();
  ShowTarget(desk.grid(), LimitLineOf(desk.program()));
}

std::string LimitBranchText(const Program& program) {
  return Joined(program.LimitBranch);
}

void LeaveLimitBranch(Desk& desk, std::string_view text) {
  const double entered = std::clamp(RoundHalfEven(Val(text)), 1.0, static_cast<double>(kLines));
  const EditStep step(desk, "limit branch");
  if (entered != desk.program().LimitBranch) desk.source.Changed = true;
  desk.program().LimitBranch = entered;
  desk.view.LimitChanged();
  const std::int16_t line_number = LimitLineOf(desk.program());
  if (line_number == desk.source.shown.LimitLine) return;
  ShowTarget(desk.grid(), desk.source.shown.LimitLine);
  ShowTarget(desk.grid(), line_number);
  desk.source.shown.LimitLine = line_number;
}

}  // namespace tavlo
