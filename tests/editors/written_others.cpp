// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "editors/written_lines.h"

namespace tavlo::testing {

std::vector<Row> RowsOfOthers() {
  return {
      {"a wait with jogs",
       WI,
       20,
       Inches,
       AsItIs,
       {{"OptIn(128)"}, {"OptState(2)"}, {"cw"}, {"SpeedText", "3"}, {"AccelText", "40"}},
       [](Instruction& line) {
         line.IONum = 128;
         line.State = 2;
         line.JogOn = true;
         line.JogSpeed = 1.5F;
         line.JogAccel = 20;
       }},
      {"a wait for two inputs of which either will do",
       WI,
       20,
       Steps,
       AsItIs,
       {{"OptSum"}, {"OptSum1(0)"}, {"OptSum9(1)"}, {"OptOR"}},
       [](Instruction& line) {
         line.Type = WII;
         line.InMask = line.InState = line.DrvMask = 1;
         line.WaitAND = false;
       }},
      {"a stored input that the drive lacks",
       WI,
       10,
       Steps,
       [](Instruction& line) { line.IONum = 7; },
       {},
       [](Instruction& line) { line.IONum = 0; }},
      {"a test of one input",
       II,
       1,
       Steps,
       AsItIs,
       {{"OptIn(3)"}, {"OptState(0)"}, {"linenum", "300"}},
       [](Instruction& line) {
         line.IONum = 3;
         line.State = 0;
         line.LineNum = 199;
       }},
      {"a test of two inputs",
       II,
       1,
       Steps,
       AsItIs,
       {{"OptSum"}, {"OptSum2(0)"}, {"OptSum3(1)"}, {"linenum", "-4"}},
       [](Instruction& line) {
         line.Type = III;
         line.InMask = 6;
         line.InState = 2;
       }},
      {"a prompt for a distance",
       MMI,
       1,
       Inches,
       AsItIs,
       {{"MMIfunction(0)"},
        {"varname", "4"},
        {"lowerlimit", "0.25"},
        {"upperlimit", "1600"},
        {"MMItext", "How \"long\"?"}},
       [](Instruction& line) {
         line.SubType = GetDistance;
         line.DistVar = 4;
         line.LowerInt = 0;
         line.LowerFrac = 2500;
         line.UpperInt = 1600;
         line.Text = "How 'long'?";
       }},
      {"a prompt that waits and jogs",
       MMI,
       1,
       Steps,
       AsItIs,
       {{"MMIfunction(4)"}, {"ChkJogLR"}, {"MMItext", "word1 word2 word3 word4"}},
       [](Instruction& line) {
         line.SubType = WaitEnter;
         line.JogLR = true;
         line.Text = "word1 word2 word3   word4";
         line.Wrap1 = true;
       }},
      {"a menu",
       MMI,
       1,
       Steps,
       AsItIs,
       {{"MMIfunction(6)"}, {"Check1(4)"}, {"Addr(1)", "201"}},
       [](Instruction& line) {
         line.SubType = Menu;
         line.MenuKey[4] = false;
         line.MenuLine[1] = 199;
       }},
      {"a question",
       MMI,
       1,
       Steps,
       AsItIs,
       {{"MMIfunction(5)"}, {"linenum", "17"}},
       [](Instruction& line) {
         line.SubType = BranchYesNo;
         line.LineNum = 16;
       }},
      {"no time at all",
       WT,
       1,
       Steps,
       AsItIs,
       {{"delaytime", "0"}},
       [](Instruction& line) { line.Time = 1; }},
      {"a time by its slider",
       WT,
       1,
       Steps,
       AsItIs,
       {{"timebar", "1234"}},
       [](Instruction& line) { line.Time = 1234; }},
      {"a position that is set",
       SP,
       1,
       Inches,
       AsItIs,
       {{"disttext", "-7.5"}},
       [](Instruction& line) {
         line.Dist = 75000;
         line.Dir = 1;
       }},
      {"a pulse of an output",
       SO,
       11,
       Steps,
       AsItIs,
       {{"optout(129)"}, {"OptState(3)"}, {"pw", "501"}},
       [](Instruction& line) {
         line.IONum = 129;
         line.State = 3;
         line.Time = 500;
       }},
      {"more current than the drive can bear",
       CC,
       1,
       Steps,
       AsItIs,
       {{"Curr", "99"}, {"OptIdleCurrent(2)"}},
       [](Instruction& line) {
         line.Current = MaxCurrent(1);
         line.IdlePct = 2;
       }},
      {"a motor without current",
       CC,
       1,
       Steps,
       AsItIs,
       {{"OptDisable"}},
       [](Instruction& line) { line.Type = ED; }},
      {"a motor with its current again",
       ED,
       1,
       Steps,
       AsItIs,
       {{"OptResume"}},
       [](Instruction& line) { line.MotorOn = true; }},
      {"a loop", RL, 1, Steps, AsItIs, {{"linenum", "2.5"}}, [](Instruction& line) { line.LineNum = 1; }},
      {"too many times",
       RP,
       1,
       Steps,
       AsItIs,
       {{"nloopsbox", "70000"}, {"CountUp"}, {"DispCount"}, {"ChkWait"}},
       [](Instruction& line) {
         line.Count = 65535;
         line.Dir = 1;
         line.SpeedIsMMI = line.Proceed = true;
       }},
      {"as many times as a variable says",
       RP,
       1,
       Steps,
       AsItIs,
       {{"getmmi"}, {"varname", "35"}},
       [](Instruction& line) {
         line.CountIsMMI = true;
         line.DistVar = 35;
       }},
      {"a variable for a position",
       LP,
       1,
       Steps,
       AsItIs,
       {{"varname", "15"}, {"Drive", "2"}},
       [](Instruction& line) {
         line.DistVar = 15;
         line.Drive = 2;
       }},
      {"a line to go to",
       GT,
       1,
       Steps,
       AsItIs,
       {{"linenum", ""}, {"ChkWait"}},
       [](Instruction& line) { line.Proceed = true; }},
      {"a subroutine",
       CL,
       1,
       Steps,
       AsItIs,
       {{"linenum", "200"}},
       [](Instruction& line) { line.LineNum = 199; }},
      {"a line while an axis moves",
       IM,
       1,
       Steps,
       AsItIs,
       {{"linenum", "1E300"}, {"Drive", "7"}},
       [](Instruction& line) {
         line.LineNum = 199;
         line.Drive = 7;
       }},
      {"a remark",
       CM,
       1,
       Steps,
       AsItIs,
       {{"commenttext", "say \"so\" and go on until the end"}},
       [](Instruction& line) { line.Text = "say 'so' and go on until th"; }},
  };
}

}  // namespace tavlo::testing
