// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "oskel_writer.h"
#include "programs.h"

namespace tavlo::examples {
namespace {

constexpr int kStepsPerMm = 100;
enum OutputAction { High = 0, Low, HighPulse, LowPulse };

/// A strip is fed through the machine by hand, then the operator says how many pieces are to be cut.
Program FeedAndCut() {
  Program program;
  InitHardware(program.Axis);
  InitProg(program);
  int next = 0;
  const auto add = [&](std::int16_t type) -> Instruction& {
    Instruction& line = program.Prog[next++];
    line.Type = type;
    return line;
  };
  add(CM).Text = "Feed and cut a strip";
  Instruction& current = add(CC);
  current.Time = 3;   // amperes
  current.Count = 2;  // idle option
  add(FE).State = Low;
  Instruction& home = add(SH);
  home.IONum = 1;
  home.Speed = 0.5F;
  home.Dir = 1;
  Instruction& ask = add(MMI);
  ask.SubType = GetCount;
  ask.Text = "How many pieces?";
  ask.DistVar = 35;
  ask.UpperInt = 500;
  Instruction& repeat = add(RP);
  repeat.CountIsMMI = true;
  repeat.DistVar = 35;
  Instruction& feed = add(FL);
  feed.Dist = 120 * kStepsPerMm;
  feed.Speed = 2.5F;
  Instruction& cut = add(SO);
  cut.IONum = 1;
  cut.State = LowPulse;
  cut.Time = 3;
  add(WT).Time = 50;
  add(ER);
  Instruction& menu = add(MMI);
  menu.SubType = Menu;
  menu.Text = "1 Again             2 From home";
  menu.MenuLine = {0, 4, 3};
  menu.MenuKey = {false, true, true};
  return program;
}

}  // namespace

std::string OldExampleFile() {
  constexpr OskelRevision kOfMenus = {"1.5", true, true, true, true, true};
  return WriteOskelProg(kOfMenus, FeedAndCut(),
                        {.drive_code = 2,
                         .current = 109,
                         .idle_byte = 128,
                         .resolution = 128 + 8,
                         .jog_speed = 0.5F,
                         .jog_accel = 50,
                         .steps_per_unit = kStepsPerMm,
                         .unit_name = "mm",
                         .use_units = true,
                         .steps_per_rev = 8000});
}

}  // namespace tavlo::examples
