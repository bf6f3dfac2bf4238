// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "session/grid.h"

#include "platform/number_format.h"
#include "text/short_desc.h"

namespace tavlo {
namespace {

bool IsLine(int line) {
  return line >= 0 && line < kLines;
}

IconSet RestIconSet(const Program& program, int line) {
  return IsLimitTarget(program, line) ? IconSet::Cyan : IconSet::Normal;
}

void Rest(Desk& desk, int line) {
  Row& row = desk.source.rows[line];
  row.state = RestState(desk.program(), line);
  row.icon = IconFor(desk.program().Prog[line].Type, RestIconSet(desk.program(), line));
}

void ShowRunning(Desk& desk, int line, RowState state, IconSet icons) {
  if (!IsLine(line)) return;
  Row& row = desk.source.rows[line];
  row.state = state;
  row.icon = IconFor(desk.program().Prog[line].Type, icons);
  desk.view.RowChanged(line);
  desk.view.AutoScroll(line);
}

/// The figure that the operator set for the drive's family.
float CurrentOf(const AxisConfig& axes, int axis) {
  const int model = axes.DriveModel[axis];
  if (ZenuRmsModel(model)) return axes.ContCurrent[axis];
  return MirelModel(model) ? axes.RunCurrent[axis] : axes.DriveCurrent[axis];
}

}  // namespace

RowState RestState(const Program& program, int line) {
  return IsLimitTarget(program, line) ? RowState::LimitTarget : RowState::Normal;
}

void ShowDesc(Desk& desk, int line) {
  if (!IsLine(line)) return;
  Row& row = desk.source.rows[line];
  if (auto text = ShortDesc(desk.program(), line)) row.desc = std::move(*text);
  row.state = RestState(desk.program(), line);
  desk.view.RowChanged(line);
}

void ShowAllDescs(Desk& desk) {
  for (int line = 0; line < kLines; ++line) {
    Row& row = desk.source.rows[line];
    if (auto text = ShortDesc(desk.program(), line)) row.desc = std::move(*text);
    Rest(desk, line);
  }
  desk.view.AllRowsChanged();
}

void SetIcon(Desk& desk, int line) {
  if (!IsLine(line)) return;
  desk.source.rows[line].icon = IconFor(desk.program().Prog[line].Type, RestIconSet(desk.program(), line));
  desk.view.RowChanged(line);
}

void RestoreDesc(Desk& desk, int line) {
  if (!IsLine(line)) return;
  desk.source.rows[line].state = RestState(desk.program(), line);
  desk.view.RowChanged(line);
}

void ShowPicked(Desk& desk, int line) {
  if (!IsLine(line)) return;
  Row& row = desk.source.rows[line];
  row.state = RowState::Picked;
  row.icon = IconFor(desk.program().Prog[line].Type, IconSet::Picked);
  desk.view.RowChanged(line);
}

void DrawArrows(Desk& desk) {
  desk.source.arrows = ArrowsOf(desk.program());
  const auto colours = LabelColoursOf(desk.program());
  for (int line = 0; line < kLines; ++line) desk.source.rows[line].label = colours[line];
  desk.view.ArrowsChanged();
}

void MarkChains(Desk& desk) {
  const auto frames = ChainFramesOf(desk.program());
  for (int line = 0; line < kLines; ++line) {
    Row& row = desk.source.rows[line];
    if (row.frame == frames[line]) continue;
    row.frame = frames[line];
    desk.view.RowChanged(line);
  }
}

void ShowDrive(Desk& desk) {
  desk.view.DrivesChanged();
}

DriveDesc DriveDescOf(const Program& program, int axis) {
  if (axis < 0 || axis >= HubAxes(program)) return {};
  const AxisConfig& axes = program.Axis;
  const int model = axes.DriveModel[axis];
  DriveDesc desc{axes.AxisName[axis], std::string(ModelName(model)), ""};
  if (model != 0) desc.current = Format(CurrentOf(axes, axis), "0.0") + "A";
  return desc;
}

void ShowLine(Desk& desk, int line) {
  ShowRunning(desk, line, RowState::Executing, IconSet::Yellow);
}

void ShowRedLine(Desk& desk, int line) {
  ShowRunning(desk, line, RowState::WentOn, IconSet::Red);
}

void HideYelLine(Desk& desk, int line) {
  if (!IsLine(line)) return;
  Rest(desk, line);
  desk.view.RowChanged(line);
}

void ClearAnimation(Desk& desk) {
  for (int line = 0; line < kLines; ++line) Rest(desk, line);
  desk.view.AllRowsChanged();
}

}  // namespace tavlo
