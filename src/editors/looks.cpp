// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "editors/looks.h"

#include <algorithm>
#include <array>
#include <cassert>

#include "editors/form_grid.h"

namespace tavlo {
namespace {

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

std::function<void()> LookOfFeedLength(QWidget* body) {
  FormGrid grid(body);
  grid.AddVariableHeading("lblvarname");
  grid.AddList(QStringLiteral("A&xis"), "Drive");
  grid.AddEntry(QStringLiteral("&Distance"),
                {.text = "disttext",
                 .unit = "distunit",
                 .from_variable = "getmmidst",
                 .from_variable_caption = QStringLiteral("Get distance from &MMI"),
                 .variables = "dstname"});
  grid.AddEntry(QStringLiteral("&Speed"), {.text = "SpeedText",
                                           .unit = "speedunit",
                                           .slider = "SpeedBar",
                                           .from_variable = "GetMMISpd",
                                           .from_variable_caption = QStringLiteral("&Get speed from MMI"),
                                           .variables = "spdname"});
  grid.AddEntry(QStringLiteral("&Acceleration"),
                {.text = "AccelText", .unit = "accelunit", .slider = "AccelBar"});
  grid.AddEntry(QStringLiteral("D&eceleration"),
                {.text = "DecelText", .unit = "decelunit", .slider = "decelbar"});
  AddDirection(grid);
  grid.AddCheckBox(QStringLiteral("Change speed du&ring the move"), "ChkChangeSpeed");
  FormGrid second = grid.AddFrame(QStringLiteral("Change of speed"), "frameFLSO");
  second.AddEntry(QStringLiteral("At d&istance"),
                  {.text = "Dist2Text",
                   .unit = "dist2unit",
                   .from_variable = "getmmidst2",
                   .from_variable_caption = QStringLiteral("Get distance &from MMI"),
                   .variables = "dst2name"});
  second.AddEntry("CStoLabel", QStringLiteral("Change speed to"),
                  {.text = "speed2text",
                   .unit = "speed2unit",
                   .from_variable = "getmmispd2",
                   .from_variable_caption = QStringLiteral("Ge&t speed from MMI"),
                   .variables = "spd2name"});
  AddExecution(grid);
  return grid.Aligned({second});
}

std::function<void()> LookOfWaitTime(QWidget* body) {
  FormGrid grid(body);
  grid.AddEntry(QStringLiteral("&Time"),
                {.text = "delaytime", .unit_caption = QStringLiteral("seconds"), .slider = "timebar"});
  return grid.Aligned({});
}

std::function<void()> LookOfGoToBox(QWidget* body) {
  FormGrid grid(body);
  grid.AddNumber(QStringLiteral("Go to &line"), "linenum", "Spin1");
  grid.AddCheckBox(QStringLiteral("&Wait for end of all moves first"), "ChkWait");
  return grid.Aligned({});
}

struct LookRow {
  std::string_view form;
  std::function<void()> (*build)(QWidget* body);
};
constexpr std::array kLooks = {
    LookRow{"FeedLength", LookOfFeedLength},
    LookRow{"WaitTime", LookOfWaitTime},
    LookRow{"GoToBox", LookOfGoToBox},
};

}  // namespace

std::function<void()> BuildLook(std::string_view form, QWidget* body) {
  const auto* const row = std::ranges::find(kLooks, form, &LookRow::form);
  assert(row != kLooks.end());
  return row->build(body);
}

}  // namespace tavlo
