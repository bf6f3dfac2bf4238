// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "programs.h"

#include <string>

namespace tavlo::examples {
namespace {

constexpr int kStepsPerRev = 20000;

/// Writes a program line after line, as an operator would.
class Writer {
 public:
  Writer() {
    InitHardware(program.Axis);
    InitProg(program);
  }

  Instruction& Add(std::int16_t type, int axis = 0) {
    Instruction& line = program.Prog[next_++];
    line.Type = type;
    line.Drive = static_cast<std::int16_t>(axis);
    return line;
  }
  void Comment(std::string text) { Add(CM).Text = std::move(text); }
  void Skip(int lines = 1) { next_ += lines; }
  /// 0-based index of the next line.
  [[nodiscard]] std::int16_t Here() const { return static_cast<std::int16_t>(next_); }
  void GoTo(int line) { next_ = line; }

  Instruction& Feed(int axis, double revs, double speed, int dir = 0) {
    return Move(Add(FL, axis), revs, speed, dir);
  }
  Instruction& Position(int axis, double revs, double speed) {
    return Move(Add(FP, axis), revs < 0 ? -revs : revs, speed, revs < 0 ? 1 : 0);
  }
  Instruction& Home(int axis, int input, double speed = 0.5) {
    Instruction& line = Add(SH, axis);
    line.IONum = static_cast<std::int16_t>(input);
    line.Dir = 1;
    line.Speed = static_cast<float>(speed);
    line.State = 1;
    return line;
  }
  Instruction& Wait(int hundredths) {
    Instruction& line = Add(WT);
    line.Time = hundredths;
    return line;
  }
  Instruction& Output(int axis, int output, int action, int ms = 10) {
    Instruction& line = Add(SO, axis);
    line.IONum = static_cast<std::int16_t>(output);
    line.State = static_cast<std::int16_t>(action);
    line.Time = ms;
    return line;
  }
  Instruction& Jump(std::int16_t type, int target, int axis = 0) {
    Instruction& line = Add(type, axis);
    line.LineNum = static_cast<std::int16_t>(target);
    return line;
  }
  Instruction& Times(int count) {
    Instruction& line = Add(RP);
    line.Count = count;
    return line;
  }
  Instruction& Prompt(MMISub kind, std::string text) {
    Instruction& line = Add(MMI);
    line.SubType = kind;
    line.Text = std::move(text);
    return line;
  }

  static Instruction& Move(Instruction& line, double revs, double speed, int dir) {
    line.Dist = static_cast<std::int32_t>(revs * kStepsPerRev);
    line.Speed = static_cast<float>(speed);
    line.Dir = static_cast<std::int16_t>(dir);
    return line;
  }

  Program Done() {
    ScanLoops(program);
    return program;
  }

  Program program;

 private:
  int next_ = 0;
};

void Name(Program& program, int axis, std::string name, std::string unit, int steps_per_unit) {
  program.Axis.AxisName[axis] = std::move(name);
  program.Axis.UnitName[axis] = std::move(unit);
  program.Axis.StepsPerUnit[axis] = steps_per_unit;
}

enum Level : std::int16_t { High = 0, Low = 1, HighPulse = 2, LowPulse = 3 };

/// A strip is fed, cut and stacked: one axis, one blade.
Program CutToLength() {
  Writer w;
  Name(w.program, 0, "Feeder", "mm", 500);
  w.program.Axis.DriveModel[0] = 11;
  w.program.Axis.ContCurrent[0] = 2.5F;
  w.Comment("Feed 120 mm, cut, repeat 5");
  w.Output(0, 0, High);
  w.Wait(20);
  w.Times(5);
  Instruction& feed = w.Feed(0, 0, 4.0);
  feed.Dist = 120 * 500;
  feed.Accel = 200;
  feed.Decel = 200;
  w.Comment("Blade down for 80 ms");
  w.Output(0, 0, LowPulse, 80);
  w.Wait(15);
  w.Add(ER);
  w.Comment("Eject the stack");
  Instruction& eject = w.Add(FLSO, 0);
  Writer::Move(eject, 2.0, 6.0, 0);
  eject.Dist2 = 1 * kStepsPerRev;
  eject.IONum = 1;
  eject.State = HighPulse;
  eject.Time = 40;
  w.Jump(GT, 1);
  return w.Done();
}

/// A gantry takes a part from a belt and sets it down: four axes that run together.
Program PickAndPlace() {
  enum { X = 0, Y = 1, Z = 2, Belt = 3 };
  Writer w;
  Name(w.program, X, "Gantry X", "mm", 400);
  Name(w.program, Y, "Gantry Y", "mm", 400);
  Name(w.program, Z, "Lift", "mm", 1000);
  Name(w.program, Belt, "Belt", "mm", 250);
  w.program.Axis.DriveModel = {20, 20, 40, 36, 0, 0, 0, 0, 0};
  w.program.LimitList = BranchToLine;
  w.program.LimitBranch = 31;
  w.Comment("Home: lift first, then X, Y");
  w.Home(Z, kFirstDriveInput);
  w.Home(X, 0).Proceed = true;
  w.Home(Y, 0);
  for (const int axis : {X, Y, Z}) w.Add(SP, axis).Dist = 0;
  const std::int16_t cycle = w.Here();
  w.Comment("Belt until the part is seen");
  Instruction& belt = w.Add(FSS, Belt);
  Writer::Move(belt, 40.0, 2.0, 0);
  belt.IONum = 1;
  belt.State = Low;
  belt.SafetyDist = 12 * kStepsPerRev;
  belt.LineNum = 26;
  w.Comment("Over the part, X with Y");
  w.Position(X, 3.0, 5.0).Proceed = true;
  w.Position(Y, 1.5, 5.0);
  w.Position(Z, -1.0, 3.0).WaitThis = true;
  w.Output(Z, 0, Low);
  w.Wait(25);
  w.Position(Z, 0, 3.0);
  w.Comment("To the tray");
  w.Position(X, 0.5, 8.0).Proceed = true;
  w.Position(Y, 4.0, 8.0);
  w.Position(Z, -0.8, 2.0);
  w.Output(Z, 0, High);
  w.Wait(10);
  w.Position(Z, 0, 3.0);
  w.Jump(GT, cycle);
  w.GoTo(26);
  w.Comment("No part: call for help");
  w.Prompt(WaitEnter, "No part on the belt. Press ENTER");
  w.Jump(GT, cycle);
  w.GoTo(30);
  w.Comment("A limit was hit");
  w.Output(Z, 0, High);
  w.Add(SS, X).SubType = StopAll;
  return w.Done();
}

/// The operator chooses and enters at the terminal; moves take what was entered.
Program MenuDriven() {
  Writer w;
  Name(w.program, 0, "Saw", "mm", 500);
  const std::int16_t menu = w.Here();
  Instruction& choose = w.Prompt(Menu, "1 Length  2 Pieces  3 Speed   4 Run");
  choose.MenuKey = {false, true, true, true, true, false, false, false, false};
  choose.MenuLine = {0, 9, 19, 29, 39, 49, 59, 69, 79};
  w.Jump(GT, menu);
  w.GoTo(9);
  w.Comment("Length of a piece");
  Instruction& length = w.Prompt(GetDistance, "Length in mm:");
  length.DistVar = 0;
  length.LowerInt = 5;
  length.UpperInt = 900;
  w.Jump(GT, menu);
  w.GoTo(19);
  w.Comment("How many pieces");
  Instruction& pieces = w.Prompt(GetCount, "Pieces:");
  pieces.DistVar = 35;
  pieces.LowerInt = 1;
  pieces.UpperInt = 500;
  w.Jump(GT, menu);
  w.GoTo(29);
  w.Comment("Feeding speed");
  Instruction& speed = w.Prompt(GetSpeed, "Speed in mm/s:");
  speed.DistVar = 25;
  speed.LowerInt = 1;
  speed.LowerFrac = 5000;
  speed.UpperInt = 200;
  w.Jump(GT, menu);
  w.GoTo(39);
  w.Prompt(BranchYesNo, "Clamp closed?").LineNum = 42;
  w.Prompt(WaitEnter, "Close the clamp and press ENTER");
  w.Jump(GT, menu);
  Instruction& loop = w.Times(1);
  loop.CountIsMMI = true;
  loop.DistVar = 35;
  loop.SpeedIsMMI = true;
  Instruction& feed = w.Feed(0, 1, 2);
  feed.DistIsMMI = true;
  feed.DistVar = 0;
  feed.SpeedIsMMI = true;
  feed.SpeedVar = 25;
  w.Output(0, 1, LowPulse, 120);
  w.Wait(30);
  w.Add(ER);
  w.Prompt(WaitEnter, "Done. Remove the pieces and press ENTER");
  w.Jump(GT, menu);
  return w.Done();
}

/// Rows and columns of holes: repeats in a repeat, and a subroutine for one hole.
Program NestedRepeats() {
  enum { X = 0, Y = 1, Drill = 2 };
  Writer w;
  Name(w.program, X, "Table X", "mm", 1000);
  Name(w.program, Y, "Table Y", "mm", 1000);
  Name(w.program, Drill, "Drill", "mm", 2000);
  w.Comment("3 rows of 4 holes");
  w.Times(3);
  w.Times(4);
  w.Jump(CL, 20);
  w.Feed(X, 0.5, 4.0);
  w.Add(ER);
  w.Comment("Back and one row on");
  w.Feed(X, 2.0, 8.0, 1).Proceed = true;
  w.Feed(Y, 0.75, 4.0);
  w.Add(ER);
  w.Comment("Wait, then home");
  w.Jump(IM, 11, X);
  w.Position(Y, 0, 6.0);
  w.Jump(GT, 199);
  w.GoTo(20);
  w.Comment("One hole");
  Instruction& bore = w.Add(FLCS, Drill);
  Writer::Move(bore, 0.8, 4.0, 0);
  bore.Dist2 = kStepsPerRev / 2;
  bore.Speed2 = 1.0F;
  w.Wait(10);
  w.Feed(Drill, 0.8, 10.0, 1);
  w.Add(RT);
  w.GoTo(199);
  w.Comment("End");
  return w.Done();
}

/// The four-axis hub with its own inputs and outputs, which stand as a fifth axis.
Program QuadHub() {
  Writer w;
  w.program.HubIndex = HubQuad;
  w.program.Axis.DriveModel = {36, 36, 11, 44, 0, 0, 0, 0, 0};
  Name(w.program, 0, "Left", "mm", 800);
  Name(w.program, 1, "Right", "mm", 800);
  Name(w.program, 2, "Turn", "deg", 56);
  Name(w.program, 3, "Press", "mm", 2000);
  w.Comment("Lamp on, wait for two hands");
  w.Output(kHubQuadIO, 0, Low);
  Instruction& hands = w.Add(WII, kHubQuadIO);
  hands.InMask = 3;
  hands.InState = 3;
  w.Output(kHubQuadIO, 0, High);
  w.Comment("Both sides together");
  w.Feed(0, 2.5, 5.0).Proceed = true;
  w.Feed(1, 2.5, 5.0, 1);
  w.Feed(2, 0.5, 2.0);
  Instruction& press = w.Add(FS, 3);
  Writer::Move(press, 1.5, 1.0, 0);
  press.IONum = 0;
  press.State = Low;
  w.Wait(50);
  w.Position(3, 0, 5.0);
  Instruction& stop = w.Add(II, kHubQuadIO);
  stop.IONum = 3;
  stop.State = Low;
  stop.LineNum = 14;
  w.Jump(GT, 1);
  w.GoTo(14);
  w.Output(kHubQuadIO, 1, HighPulse, 200);
  return w.Done();
}

/// One line of each kind, in the order of their codes.
Program EveryLine() {
  Writer w;
  w.program.Axis.DriveModel = {1, 11, 21, 36, 26, 44, 8, 4, 0};
  for (std::int16_t type = FL; type < kTypes; ++type) {
    if (type == MMImenu) {
      w.Prompt(Menu, "1 again   2 end").MenuLine = {0, 0, 33, 29, 39, 49, 59, 69, 79};
      continue;
    }
    Instruction& line = w.Add(type, type % 7);
    line.Dist = (type + 1) * 1000;
    line.LineNum = static_cast<std::int16_t>(type + 1);
  }
  const auto line = [&w](int type) -> Instruction& { return w.program.Prog[type]; };
  line(FLSO).Dist2 = 5000;
  line(FLSO).IONum = 1;
  line(FLSO).State = HighPulse;
  line(FLCS).Dist2 = 5000;
  line(WI).IONum = 2;
  line(WI).JogOn = true;
  line(RP).Count = 2;
  line(SO).State = LowPulse;
  line(SO).Time = 25;
  line(CM).Text = "Every kind of line & more";
  line(MMI).Text = "All kinds of lines";
  line(MMI).SubType = DisplayOnly;
  line(FE).Dist = 4;
  line(CC).Current = 1.3F;
  line(CC).IdlePct = 2;
  line(ED).MotorOn = true;
  for (const int type : {III, WII}) {
    line(type).InMask = 5;
    line(type).InState = 4;
  }
  line(WII).WaitAND = false;
  line(FSS).SafetyDist = 60000;
  line(RL).LineNum = RP;
  line(LP).DistVar = 15;
  line(CL).LineNum = RT;
  line(SS).SubType = StartAxis;
  w.GoTo(32);
  Instruction& knob = w.Add(FE, 2);
  knob.CountIsMMI = true;
  knob.Dist = 8;
  knob.Text = "Turn the knob, then ENTER";
  w.Add(SS).SubType = StopAll;
  return w.Done();
}

}  // namespace

std::vector<Example> ExamplePrograms() {
  return {{"cut-to-length.TVH", CutToLength()}, {"pick-and-place.TVH", PickAndPlace()},
          {"menu.TVH", MenuDriven()},           {"nested-repeats.TVH", NestedRepeats()},
          {"hub-quad.TVH", QuadHub()},          {"every-line.TVH", EveryLine()}};
}

}  // namespace tavlo::examples
