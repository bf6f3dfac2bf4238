// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "editors/written_lines.h"

namespace tavlo::testing {

std::vector<Row> RowsOfMoves() {
  return {

      {"a length in inches",
       FL,
       1,
       Inches,
       AsItIs,
       {{"disttext", "12.5"},
        {"SpeedText", "1.5"},
        {"AccelText", "50"},
        {"DecelText", "60"},
        {"ccw"},
        {"OptProceed"}},
       [](Instruction& line) {
         line.Dist = 125000;
         line.Speed = 0.75F;
         line.Accel = 25;
         line.Decel = 30;
         line.Dir = 1;
         line.Proceed = true;
       }},
      {"entries of every ugly sort",
       FL,
       1,
       Steps,
       AsItIs,
       {{"disttext", "none"},
        {"SpeedText", "1E300"},
        {"AccelText", "-0"},
        {"DecelText", "99999999999999999999"}},
       [](Instruction& line) {
         line.Dist = 1;
         line.Speed = 50;
         line.Accel = 1;
         line.Decel = 3000;
       }},
      {"a distance and a speed of variables",
       FL,
       1,
       Steps,
       AsItIs,
       {{"getmmidst"}, {"dstname", "3"}, {"GetMMISpd"}, {"spdname", "26"}, {"OptWait"}},
       [](Instruction& line) {
         line.DistIsMMI = line.SpeedIsMMI = true;
         line.DistVar = 3;
         line.SpeedVar = 26;
         line.WaitThis = true;
       }},
      {"a second speed above the first",
       FL,
       1,
       Steps,
       AsItIs,
       {{"ChkChangeSpeed"}, {"Dist2Text", "0"}, {"speed2text", "40"}},
       [](Instruction& line) {
         line.Type = FLCS;
         line.Dist2 = 1;
         line.Speed2 = 3;
       }},
      {"one speed again",
       FLCS,
       1,
       Steps,
       AsItIs,
       {{"ChkChangeSpeed"}},
       [](Instruction& line) { line.Type = FL; }},
      {"a pulse during the move",
       FLSO,
       1,
       Steps,
       AsItIs,
       {{"OptAtDist"}, {"Dist2Text", "30000"}, {"optout(1)"}, {"OptState(2)"}, {"pw", "501"}},
       [](Instruction& line) {
         line.Dist2 = 20000;
         line.Speed2IsMMI = true;
         line.IONum = 1;
         line.State = 2;
         line.Time = 250;
       }},
      {"an output that the drive lacks",
       FLSO,
       1,
       Steps,
       [](Instruction& line) { line.IONum = 3; },
       {},
       [](Instruction& line) { line.IONum = 0; }},
      {"a way back",
       FR,
       1,
       Inches,
       AsItIs,
       {{"retdelay", "0.37"}, {"retspeedtext", "2,5"}},
       [](Instruction& line) {
         line.Time = 37;
         line.RetSpeed = 1;
       }},
      {"a position on the other side",
       FP,
       1,
       Steps,
       AsItIs,
       {{"disttext", "-100"}},
       [](Instruction& line) {
         line.Dist = 100;
         line.Dir = 1;
       }},
      {"the start of an axis",
       SS,
       8,
       Steps,
       AsItIs,
       {{"optStartAxis"}, {"SpeedBar", "2000"}, {"ccw"}},
       [](Instruction& line) {
         line.SubType = StartAxis;
         line.Speed = 50;
         line.Dir = 1;
       }},
      {"the end of all motion",
       SS,
       1,
       Steps,
       AsItIs,
       {{"optStopAll"}},
       [](Instruction& line) { line.SubType = StopAll; }},
      {"a sensor too near to stop behind it",
       FS,
       1,
       Steps,
       AsItIs,
       {{"disttext", "5"}, {"SpeedText", "10"}, {"DecelText", "10"}, {"OptIn(2)"}, {"OptState(3)"}},
       [](Instruction& line) {
         line.Dist = 100000;
         line.Speed = 10;
         line.Decel = 10;
         line.IONum = 2;
         line.State = 3;
       }},
      {"a safety distance",
       FS,
       1,
       Steps,
       AsItIs,
       {{"ChkSafety"}, {"SafetyDist", "16000001"}, {"SafetyLine", "250"}},
       [](Instruction& line) {
         line.Type = FSS;
         line.SafetyDist = 16000000;
         line.LineNum = 199;
       }},
      {"the index of an encoder, and back",
       FSR,
       36,
       Steps,
       AsItIs,
       {{"OptIn(1)"}, {"OptState(0)"}, {"retdelay", "1E300"}, {"RetSpeedBar", "40"}},
       [](Instruction& line) {
         line.IONum = 1;
         line.State = 0;
         line.Time = 30000;
         line.RetSpeed = 1;
       }},
      {"a home sensor",
       SH,
       20,
       Steps,
       AsItIs,
       {{"OptIn(129)"}, {"SpeedText", "0.5"}, {"ccw"}},
       [](Instruction& line) {
         line.IONum = 129;
         line.Speed = 0.5F;
         line.Dir = 1;
       }},
  };
}

}  // namespace tavlo::testing
