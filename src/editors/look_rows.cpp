// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "editors/look_rows.h"

namespace tavlo {
namespace {

void AddDistance(FormGrid& grid, const QString& label, const QString& from_variable) {
  grid.AddEntry(label, {.text = "disttext",
                        .unit = "distunit",
                        .from_variable = "getmmidst",
                        .from_variable_caption = from_variable,
                        .variables = "dstname"});
}

}  // namespace

void AddExecution(FormGrid& grid) {
  grid.AddOptions(QStringLiteral("Next instruction"),
                  {{"OptProceed", QStringLiteral("&Proceed at once"),
                    QStringLiteral("Start move and immediately proceed to the next instruction")},
                   {"OptWait", QStringLiteral("Wait for this mo&ve"),
                    QStringLiteral("Wait for end of THIS move before executing the next instruction")},
                   {"OptWaitAll", QStringLiteral("Wait for a&ll moves"),
                    QStringLiteral("Wait for end of ALL moves before executing the next instruction")}});
}

void AddDirection(FormGrid& grid) {
  grid.AddOptions(QStringLiteral("Direction"),
                  {{"cw", QStringLiteral("C&W")}, {"ccw", QStringLiteral("&CCW")}});
}

void AddAxis(FormGrid& grid) {
  grid.AddList(QStringLiteral("A&xis"), "Drive");
}

void AddSpeed(FormGrid& grid) {
  grid.AddEntry(QStringLiteral("&Speed"), {.text = "SpeedText",
                                           .unit = "speedunit",
                                           .slider = "SpeedBar",
                                           .from_variable = "GetMMISpd",
                                           .from_variable_caption = QStringLiteral("&Get speed from MMI"),
                                           .variables = "spdname"});
}

void AddAccel(FormGrid& grid) {
  grid.AddEntry(QStringLiteral("&Acceleration"),
                {.text = "AccelText", .unit = "accelunit", .slider = "AccelBar"});
}

void AddDecel(FormGrid& grid) {
  grid.AddEntry(QStringLiteral("D&eceleration"),
                {.text = "DecelText", .unit = "decelunit", .slider = "decelbar"});
}

void AddMove(FormGrid& grid, const QString& distance, const QString& from_variable) {
  grid.AddVariableHeading("lblvarname");
  AddAxis(grid);
  AddDistance(grid, distance, from_variable);
  AddSpeed(grid);
  AddAccel(grid);
  AddDecel(grid);
}

void AddLength(FormGrid& grid) {
  AddMove(grid, QStringLiteral("&Distance"), QStringLiteral("Get distance from &MMI"));
  AddDirection(grid);
}

void AddTarget(FormGrid& grid) {
  grid.AddNumber(QStringLiteral("Go to &line"), "linenum", "Spin1", "linetext");
}

void AddReturn(FormGrid& grid) {
  grid.AddEntry(QStringLiteral("Dela&y before return"),
                {.text = "retdelay", .unit_caption = QStringLiteral("seconds"), .slider = "retdelaybar"});
  grid.AddEntry(QStringLiteral("&Return speed"),
                {.text = "retspeedtext", .unit = "retspeedunit", .slider = "RetSpeedBar"});
}

}  // namespace tavlo
