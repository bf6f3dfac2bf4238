// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "session/grid.h"

#include "model/line_operations.h"
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

void Rest(const Grid& grid, int line) {
  Row& row = grid.shown.rows[line];
  row.state = RestState(grid.program, line);
  row.icon = IconFor(grid.program.Prog[line].Type, RestIconSet(grid.program, line));
}

void ShowRunning(const Grid& grid, int line, RowState state, IconSet icons) {
  if (!IsLine(line)) return;
  Row& row = grid.shown.rows[line];
  row.state = state;
  row.icon = IconFor(grid.program.Prog[line].Type, icons);
  grid.view.RowChanged(line);
  grid.view.AutoScroll(line);
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

void ShowDesc(const Grid& grid, int line) {
  if (!IsLine(line)) return;
  Row& row = grid.shown.rows[line];
  if (auto text = ShortDesc(grid.program, line)) row.desc = std::move(*text);
  row.state = RestState(grid.program, line);
  grid.view.RowChanged(line);
}

void ShowAllDescs(const Grid& grid) {
  for (int line = 0; line < kLines; ++line) {
    Row& row = grid.shown.rows[line];
    if (auto text = ShortDesc(grid.program, line)) row.desc = std::move(*text);
    Rest(grid, line);
  }
  grid.view.AllRowsChanged();
}

void SetIcon(const Grid& grid, int line) {
  if (!IsLine(line)) return;
  grid.shown.rows[line].icon = IconFor(grid.program.Prog[line].Type, RestIconSet(grid.program, line));
  grid.view.RowChanged(line);
}

void RestoreDesc(const Grid& grid, int line) {
  if (!IsLine(line)) return;
  grid.shown.rows[line].state = RestState(grid.program, line);
  grid.view.RowChanged(line);
}

void ShowPicked(const Grid& grid, int line) {
  if (!IsLine(line)) return;
  Row& row = grid.shown.rows[line];
  row.state = RowState::Picked;
  row.icon = IconFor(grid.program.Prog[line].Type, IconSet::Picked);
  grid.view.RowChanged(line);
}

void DrawArrows(const Grid& grid) {
  grid.shown.arrows = ArrowsOf(grid.program);
  const auto colours = LabelColoursOf(grid.program);
  for (int line = 0; line < kLines; ++line) grid.shown.rows[line].label = colours[line];
  grid.view.ArrowsChanged();
}

void MarkChains(const Grid& grid) {
  const auto frames = ChainFramesOf(grid.program);
  for (int line = 0; line < kLines; ++line) {
    Row& row = grid.shown.rows[line];
    if (row.frame == frames[line]) continue;
    row.frame = frames[line];
    grid.view.RowChanged(line);
  }
}

void ShowProgram(Desk& desk) {
  ScanLoops(desk.program());
  const Grid grid = desk.grid();
  ShowAllDescs(grid);
  DrawArrows(grid);
  MarkChains(grid);
}

void ShowReplaced(Desk& desk) {
  desk.source.shown.LimitLine = LimitLineOf(desk.program());
  ShowProgram(desk);
  ShowDrive(desk.view);
  desk.view.HubChanged();
  desk.view.LimitChanged();
}

void ShowDrive(ProgramView& view) {
  view.DrivesChanged();
}

void SelectModel(Desk& desk, int index) {
  desk.program().HubIndex = index == HubQuad ? HubQuad : HubOcto;
  ShowDrive(desk.view);
  desk.view.HubChanged();
}

DriveDesc DriveDescOf(const Program& program, int axis) {
  if (axis < 0 || axis >= HubAxes(program)) return {};
  const AxisConfig& axes = program.Axis;
  const int model = axes.DriveModel[axis];
  DriveDesc desc{axes.AxisName[axis], std::string(ModelName(model)), ""};
  if (model != 0) desc.current = Format(CurrentOf(axes, axis), "0.0") + "A";
  return desc;
}

void ShowLine(const Grid& grid, int line) {
  ShowRunning(grid, line, RowState::Executing, IconSet::Yellow);
}

void ShowRedLine(const Grid& grid, int line) {
  ShowRunning(grid, line, RowState::WentOn, IconSet::Red);
}

void HideYelLine(const Grid& grid, int line) {
  if (!IsLine(line)) return;
  Rest(grid, line);
  grid.view.RowChanged(line);
}

void ClearAnimation(const Grid& grid) {
  for (int line = 0; line < kLines; ++line) Rest(grid, line);
  grid.view.AllRowsChanged();
}

}  // namespace tavlo
