// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "link/drive_scan.h"

#include "link/drive_check.h"
#include "link/operation.h"
#include "link/polled.h"

namespace tavlo {
namespace {

/// No drive has a firmware below 0.
constexpr float kNotAnswered = -1;

DriveScan Scan(const Program& program, const Link& link) {
  DriveScan scan;
  StopHub(link);
  EventsOff events(link.Comm1);
  events.RestoreTo(1);
  const int axes = HubAxes(program);
  const auto drives = ReadDriveList(link, axes);
  if (!drives) return scan;
  AxisConfig::Axes<float> revisions;
  revisions.fill(kNotAnswered);
  ScanDrivesRV(link, axes, revisions);
  for (int axis = 0; axis < axes; ++axis) {
    if (const int model = drives->actual[axis]; model != kUnknownModel) scan[axis].model = model;
    if (revisions[axis] != kNotAnswered) scan[axis].revision = revisions[axis];
  }
  return scan;
}

}  // namespace

DriveScan ScanDrives(Desk& desk) {
  return WhileBusy(desk, [&] { return Scan(desk.program(), desk.link()); });
}

}  // namespace tavlo
