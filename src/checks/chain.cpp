// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "checks/chain.h"

#include <array>

#include "checks/scans.h"
#include "model/program_queries.h"
#include "platform/number_format.h"

namespace tavlo {
namespace {

constexpr float kIfMovingFirmware = 1.05F;
constexpr float kStartStopFirmware = 1.06F;

/// Line numbers as the operator counts them.
std::string Number(int line) {
  return Joined(line + 1);
}

CheckResult Stop(Desk& desk, const std::string& text, const std::string& title) {
  MsgBox(desk, {.text = text, .title = title});
  return CheckResult::Stopped;
}

/// The same for what is wrong with one line.
CheckResult StopAt(Desk& desk, int line, const std::string& text, const std::string& title) {
  MsgBoxAbout(desk, line, {.text = text, .title = title});
  return CheckResult::Stopped;
}

CheckResult FirmwareFits(Desk& desk) {
  const Program& program = desk.program();
  if (program.HubVersion < kIfMovingFirmware && ProgHas(program, IM)) {
    return Stop(
        desk,
        "You need hub firmware version 1.05 or later to use the If Moving instruction.  Please remove this "
        "instruction from your program or upgrade the firmware in your hub.",
        "Old Firmware");
  }
  if (program.HubVersion < kStartStopFirmware && ProgHas(program, SS)) {
    return Stop(
        desk,
        "You need hub firmware version 1.06 or later to use the Start/Stop instruction.  Please remove this "
        "instruction from your program or upgrade the firmware in your hub.",
        "Old Firmware");
  }
  return CheckResult::Passed;
}

/// One box for each line that a scan found.
template <class Text>
CheckResult TellEach(Desk& desk, const std::vector<int>& lines, const std::string& title, Text text) {
  for (const int line : lines) MsgBoxAbout(desk, line, {.text = text(line), .title = title});
  return lines.empty() ? CheckResult::Passed : CheckResult::Stopped;
}

/// The name is that of the next axis; for the eighth it is the empty ninth slot.
std::string FourAxesText(const Program& program, int line) {
  return "On line " + Number(line) + " you have an instruction that uses " +
         AxisNameOf(program, program.Prog[line].Drive + 1) + ".  The HubQuad only supports four axes.";
}

CheckResult BadAxes(Desk& desk) {
  const Program& program = desk.program();
  return TellEach(desk, BadMoveorMMIAxis(program), "Can't Download",
                  [&program](int line) { return FourAxesText(program, line); });
}

CheckResult HubInputs(Desk& desk) {
  const Program& program = desk.program();
  return TellEach(desk, In5678used(program), "Can't download", [&program](int line) {
    return "On line " + Number(line) + " of your program you have an instruction that uses input " +
           Joined(program.Prog[line].IONum + 1) + ". The Hub Quad has only four on-board inputs.";
  });
}

CheckResult HubIO(Desk& desk) {
  const Program& program = desk.program();
  return TellEach(desk, IOpast5(program), "Can't Download",
                  [&program](int line) { return FourAxesText(program, line); });
}

CheckResult FitsHubQuad(Desk& desk) {
  if (desk.program().HubIndex != HubQuad) return CheckResult::Passed;
  for (const auto check : {BadAxes, HubInputs, HubIO}) {
    if (check(desk) != CheckResult::Passed) return CheckResult::Stopped;
  }
  FixMultiIn(desk.program());
  return CheckResult::Passed;
}

CheckResult FourthOutputs(Desk& desk) {
  return TellEach(desk, SetOutput4(desk.program()), "Can't download", [](int line) {
    return "On line " + Number(line) +
           " of your program you have a Set Output instruction using Output 4.  Oskel drives have only 3 "
           "outputs.";
  });
}

CheckResult PromptsExist(Desk& desk) {
  const Program& program = desk.program();
  if (!program.MMIused) return CheckResult::Passed;
  if (const auto missing = ScanProgMMI(program)) {
    return StopAt(desk, missing->line,
                  "You are using the MMI variable " + MMIVarName(missing->variable) + " in program line " +
                      Number(missing->line) +
                      ".  But there is no MMI Prompt instruction to put data into that variable.",
                  "Can't Download");
  }
  if (const auto prompt = ScanMMIspeeds(program)) {
    const std::string axis = Joined(prompt->axis + 1);
    return StopAt(
        desk, prompt->line,
        "You are using an MMI prompt on program line " + Number(prompt->line) +
            " to enter a speed for Axis " + axis +
            ".  This will result in a calculation error because the ratio of steps/rev to steps/" +
            program.Axis.UnitName[prompt->axis] +
            " is larger than 40.  Please reduce the steps/rev or choose a different unit definition "
            "for Axis " +
            axis + ".",
        "Can't Download");
  }
  return CheckResult::Passed;
}

std::string_view UseText(const Program& program, const WrongPrompt& wrong) {
  if (program.Prog[wrong.line].Type == RP)
    return " as a repeat count.  But the MMI Prompt instruction on line ";
  return wrong.as_speed ? " as a speed.  But the MMI Prompt instruction on line "
                        : " as a distance.  But the MMI Prompt instruction on line ";
}

CheckResult PromptsFit(Desk& desk) {
  const Program& program = desk.program();
  const auto wrong = ScanMMItypes(program);
  if (!wrong) return CheckResult::Passed;
  const std::string text = "Warning: You are using the MMI variable " + MMIVarName(wrong->variable) +
                           " in program line " + Number(wrong->line) + std::string(UseText(program, *wrong)) +
                           Number(wrong->prompt_line) + " puts " +
                           std::string(MMIVarKind(wrong->prompt_kind)) + " data into that variable.";
  const Answer answer =
      MsgBoxAbout(desk, wrong->line,
                  {.text = text, .title = "Warning", .buttons = Buttons::OKCancel, .icon = Icon::Question});
  return answer == Answer::OK ? CheckResult::Passed : CheckResult::Stopped;
}

CheckResult DrivesExist(Desk& desk) {
  const auto none = CheckNone(desk.program());
  if (!none) return CheckResult::Passed;
  return StopAt(desk, none->line,
                "The instruction on line " + Number(none->line) + " uses drive " + Joined(none->axis + 1) +
                    ", but that drive model is set for \"none\".",
                "No drive found");
}

CheckResult CallsReturn(Desk& desk) {
  if (!CallsOK(desk.program())) {
    return Stop(
        desk, "You have subroutine Calls in your program, but no Return instructions.  That is not allowed.",
        "Call without Return");
  }
  if (!ReturnsOK(desk.program())) {
    return Stop(
        desk, "You have Return instructions in your program, but no subroutine Calls.  That is not allowed.",
        "Return without Call");
  }
  return CheckResult::Passed;
}

CheckResult MovesApart(Desk& desk) {
  const auto moves = ScanConcurrent(desk.program());
  if (!moves) return CheckResult::Passed;
  const std::string first = Number(moves->first_line);
  return StopAt(desk, moves->first_line,
                "You can't do 2 moves on \"" + AxisNameOf(desk.program(), moves->axis) +
                    "\" at the same time, but you seem to be attempting that on lines " + first + " and " +
                    Number(moves->second_line) + ". Perhaps you should change line " + first +
                    " to the option \"Wait for end of move before executing the next instruction.\"",
                "Two moves on same axis");
}

CheckResult StopClean(Desk& desk, const std::string& text,
                      const std::string& title = std::string(kApplicationTitle)) {
  MsgBox(desk, {.text = text, .title = title, .icon = Icon::Exclamation});
  return CheckResult::StoppedClean;
}

CheckResult RepeatsPair(Desk& desk) {
  const int repeats = CountRepeats(desk.program());
  const int ends = CountEndRepeats(desk.program());
  if (ends > repeats) return StopClean(desk, "Can't download.  You have more End Repeats than Repeats.");
  if (repeats > ends) return StopClean(desk, "Can't download.  You have more Repeats than End Repeats.");
  if (ERbeforeRP(desk.program())) {
    return StopClean(
        desk,
        "Can't download.  You have and End Repeat at the beginning of a Repeat loop.  End Repeat goes at "
        "the end of the loop.",
        "End Repeat goes at End");
  }
  return CheckResult::Passed;
}

// In the order in which the operator meets them.
constexpr std::array kChecks = {FitsHubQuad, FourthOutputs, PromptsExist, PromptsFit,
                                DrivesExist, CallsReturn,   MovesApart,   RepeatsPair};

}  // namespace

CheckResult CheckProgram(Desk& desk) {
  const CheckResult firmware = FirmwareFits(desk);
  if (firmware != CheckResult::Passed) return firmware;
  desk.program().MMIused = ProgHasMMI(desk.program());
  for (const auto check : kChecks) {
    if (const CheckResult result = check(desk); result != CheckResult::Passed) return result;
  }
  return CheckResult::Passed;
}

}  // namespace tavlo
