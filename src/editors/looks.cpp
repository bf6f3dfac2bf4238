// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "editors/looks.h"

#include <QTabWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <cassert>

#include "editors/analysis_look.h"
#include "editors/form_grid.h"
#include "editors/look_rows.h"
#include "editors/looks_hardware.h"
#include "editors/looks_inputs.h"
#include "editors/looks_prompt.h"
#include "editors/looks_tuning.h"

namespace tavlo {
namespace {

/// Two pages: the entries, and what the move will do. Returns the first.
QWidget* AddPages(QWidget* body, bool output) {
  auto* tabs = new QTabWidget(body);
  tabs->setObjectName(QStringLiteral("SSTab1"));
  auto* column = new QVBoxLayout(body);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(tabs);
  auto* entries = new QWidget(tabs);
  auto* analysis = new QWidget(tabs);
  BuildAnalysis(analysis, output);
  tabs->addTab(entries, QStringLiteral("Move"));
  tabs->addTab(analysis, QStringLiteral("Anal&ysis"));
  return entries;
}

std::function<void()> LookOfFeedLength(QWidget* body) {
  FormGrid grid(AddPages(body, false));
  AddLength(grid);
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

std::function<void()> LookOfFeedPosn(QWidget* body) {
  FormGrid grid(body);
  AddMove(grid, QStringLiteral("Pos&ition"), QStringLiteral("Get position from &MMI"));
  AddExecution(grid);
  return grid.Aligned({});
}

std::function<void()> LookOfFeedReturn(QWidget* body) {
  FormGrid grid(body);
  AddLength(grid);
  AddReturn(grid);
  AddExecution(grid);
  return grid.Aligned({});
}

std::function<void()> LookOfStartStop(QWidget* body) {
  FormGrid grid(body);
  grid.AddVariableHeading("lblvarname");
  AddAxis(grid);
  AddSpeed(grid);
  AddAccel(grid);
  AddDirection(grid);
  grid.AddOptions(QStringLiteral("Motion"), {{"optStartAxis", QStringLiteral("Star&t an axis")},
                                             {"optStopAxis", QStringLiteral("Sto&p an axis")},
                                             {"optChangeSpeed", QStringLiteral("Cha&nge Speed")},
                                             {"optStopAll", QStringLiteral("Stop a&ll motion")}});
  return grid.Aligned({});
}

void AddOutput(FormGrid& grid, std::initializer_list<FormGrid::Option> outputs) {
  grid.AddOptions(QStringLiteral("Output"), outputs);
  grid.AddOptions(QStringLiteral("Condition"), {{"OptState(0)", QStringLiteral("High (open)")},
                                                {"OptState(1)", QStringLiteral("Low (closed)")},
                                                {"OptState(2)", QStringLiteral("High pulse")},
                                                {"OptState(3)", QStringLiteral("Low pulse")}});
  grid.AddEntry(QStringLiteral("P&ulse width"), {.text = "pw", .unit = "lblmsec"});
}

std::function<void()> LookOfFeedSetOut(QWidget* body) {
  FormGrid grid(AddPages(body, true));
  AddLength(grid);
  grid.AddOptions(QStringLiteral("When"), {{"OptAtDist", QStringLiteral("Set output duri&ng move")},
                                           {"OptEndOfMove", QStringLiteral("Set output at end of move")}});
  grid.AddEntry(QStringLiteral("At d&istance"),
                {.text = "Dist2Text",
                 .unit = "dist2unit",
                 .from_variable = "getmmidst2",
                 .from_variable_caption = QStringLiteral("Get output distance &from MMI"),
                 .variables = "dst2name"});
  AddOutput(grid, {{"optout(0)"},
                   {"optout(1)"},
                   {"optout(2)"},
                   {"optout(3)"},
                   {"optout(4)"},
                   {"optout(5)"},
                   {"optout(6)"}});
  AddExecution(grid);
  return grid.Aligned({});
}

std::function<void()> LookOfSetOutput(QWidget* body) {
  FormGrid grid(body);
  AddAxis(grid);
  AddOutput(grid, {{"optout(0)"},
                   {"optout(1)"},
                   {"optout(2)"},
                   {"optout(3)"},
                   {"optout(128)"},
                   {"optout(129)"},
                   {"optout(130)"}});
  return grid.Aligned({});
}

std::function<void()> LookOfChangeCurrent(QWidget* body) {
  FormGrid grid(body);
  AddAxis(grid);
  grid.AddOptions(QStringLiteral("Current"), {{"OptNew", QStringLiteral("&New current")},
                                              {"OptDisable", QStringLiteral("&Disable")},
                                              {"OptResume", QStringLiteral("&Resume")}});
  grid.AddEntry(QStringLiteral("R&un current"), {.text = "Curr", .unit_caption = QStringLiteral("A")});
  grid.AddOptions(QStringLiteral("Idle current"), {{"OptIdleCurrent(0)", QStringLiteral("0%")},
                                                   {"OptIdleCurrent(1)", QStringLiteral("25%")},
                                                   {"OptIdleCurrent(2)", QStringLiteral("50%")},
                                                   {"OptIdleCurrent(3)", QStringLiteral("100%")}});
  return grid.Aligned({});
}

std::function<void()> LookOfWaitTime(QWidget* body) {
  FormGrid grid(body);
  grid.AddEntry(QStringLiteral("&Time"),
                {.text = "delaytime", .unit_caption = QStringLiteral("seconds"), .slider = "timebar"});
  return grid.Aligned({});
}

std::function<void()> LookOfGoToBox(QWidget* body) {
  FormGrid grid(body);
  AddTarget(grid);
  grid.AddCheckBox(QStringLiteral("&Wait for end of all moves first"), "ChkWait");
  return grid.Aligned({});
}

std::function<void()> LookOfCallDialog(QWidget* body) {
  FormGrid grid(body);
  grid.AddNumber(QStringLiteral("Subroutine at &line"), "linenum", "Spin1", "linetext");
  return grid.Aligned({});
}

std::function<void()> LookOfResetLoop(QWidget* body) {
  FormGrid grid(body);
  grid.AddNumber(QStringLiteral("Repeat at &line"), "linenum", "Spin1", "linetext");
  return grid.Aligned({});
}

std::function<void()> LookOfIfMoving(QWidget* body) {
  FormGrid grid(body);
  AddAxis(grid);
  AddTarget(grid);
  return grid.Aligned({});
}

std::function<void()> LookOfLearnPos(QWidget* body) {
  FormGrid grid(body);
  AddAxis(grid);
  grid.AddList("lblvarname", QStringLiteral("Variable"), "varname");
  return grid.Aligned({});
}

std::function<void()> LookOfSetPosn(QWidget* body) {
  FormGrid grid(body);
  AddAxis(grid);
  grid.AddEntry(QStringLiteral("&Position"), {.text = "disttext", .unit = "distunit"});
  return grid.Aligned({});
}

std::function<void()> LookOfRepeat(QWidget* body) {
  FormGrid grid(body);
  grid.AddEntry(QStringLiteral("&Number of times"), {.text = "nloopsbox"});
  grid.AddCheckBox(QStringLiteral("Get number from &MMI"), "getmmi");
  grid.AddList("lblvarname", QStringLiteral("Variable"), "varname");
  grid.AddCheckBox(QStringLiteral("&Display the count on the MMI"), "DispCount");
  grid.AddCheckBox(QStringLiteral("Count &up"), "CountUp");
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
    LookRow{"FeedPosn", LookOfFeedPosn},
    LookRow{"FeedReturn", LookOfFeedReturn},
    LookRow{"StartStop", LookOfStartStop},
    LookRow{"CallDialog", LookOfCallDialog},
    LookRow{"ResetLoop", LookOfResetLoop},
    LookRow{"IfMoving", LookOfIfMoving},
    LookRow{"LearnPos", LookOfLearnPos},
    LookRow{"SetPosn", LookOfSetPosn},
    LookRow{"Repeat", LookOfRepeat},
    LookRow{"FeedSetOut", LookOfFeedSetOut},
    LookRow{"SetOutput", LookOfSetOutput},
    LookRow{"ChangeCurrent", LookOfChangeCurrent},
    LookRow{"MMIprompt", LookOfMMIprompt},
    LookRow{"comment", LookOfComment},
    LookRow{"FeedSense", LookOfFeedSense},
    LookRow{"FeedSenseRet", LookOfFeedSenseRet},
    LookRow{"SeekHome", LookOfSeekHome},
    LookRow{"WaitInput", LookOfWaitInput},
    LookRow{"IfInput", LookOfIfInput},
    LookRow{"Hardware", LookOfHardware},
    LookRow{"Tuning", LookOfTuning},
};

}  // namespace

std::function<void()> BuildLook(std::string_view form, QWidget* body) {
  const auto* const row = std::ranges::find(kLooks, form, &LookRow::form);
  assert(row != kLooks.end());
  return row->build(body);
}

}  // namespace tavlo
