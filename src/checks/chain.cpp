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

CheckResult Stop(MessageBoxes& boxes, const std::string& text, const std::string& title) {
  boxes.MsgBox({.text = text, .title = title});
  return CheckResult::Stopped;
}

/// The same for what is wrong with one line.
CheckResult StopAt(MessageBoxes& boxes, int line, const std::string& text, const std::string& title) {
  boxes.MsgBox({.text = text, .title = title, .line = line});
  return CheckResult::Stopped;
}

CheckResult FirmwareFits(const Program& program, MessageBoxes& boxes) {
  if (program.HubVersion < kIfMovingFirmware && ProgHas(program, IM)) {
    return Stop(
        boxes,
        "You need hub firmware version 1.05 or later to use the If Moving instruction.  Please remove this "
        "instruction from your program or upgrade the firmware in your hub.",
        "Old Firmware");
  }
  if (program.HubVersion < kStartStopFirmware && ProgHas(program, SS)) {
    return Stop(
        boxes,
        "You need hub firmware version 1.06 or later to use the Start/Stop instruction.  Please remove this "
        "instruction from your program or upgrade the firmware in your hub.",
        "Old Firmware");
  }
  return CheckResult::Passed;
}

/// One box for each line that a scan found.
template <class Text>
CheckResult TellEach(MessageBoxes& boxes, const std::vector<int>& lines, const std::string& title,
                     Text text) {
  for (const int line : lines) boxes.MsgBox({.text = text(line), .title = title, .line = line});
  return lines.empty() ? CheckResult::Passed : CheckResult::Stopped;
}

/// The name is that of the next axis; for the eighth it is the empty ninth slot.
std::string FourAxesText(const Program& program, int line) {
  return "On line " + Number(line) + " you have an instruction that uses " +
         AxisNameOf(program, program.Prog[line].Drive + 1) + ".  The HubQuad only supports four axes.";
}

CheckResult BadAxes(const Program& program, MessageBoxes& boxes) {
  return TellEach(boxes, BadMoveorMMIAxis(program), "Can't Download",
                  [&program](int line) { return FourAxesText(program, line); });
}

CheckResult HubInputs(const Program& program, MessageBoxes& boxes) {
  return TellEach(boxes, In5678used(program), "Can't download", [&program](int line) {
    return "On line " + Number(line) + " of your program you have an instruction that uses input " +
           Joined(program.Prog[line].IONum + 1) + ". The Hub Quad has only four on-board inputs.";
  });
}

CheckResult HubIO(const Program& program, MessageBoxes& boxes) {
  return TellEach(boxes, IOpast5(program), "Can't Download",
                  [&program](int line) { return FourAxesText(program, line); });
}

/// What a Hub Quad does not have: axes beyond the fourth, inputs of its own beyond the fourth.
CheckResult FitsHubQuad(const Program& program, MessageBoxes& boxes) {
  for (const auto check : {BadAxes, HubInputs, HubIO}) {
    if (check(program, boxes) != CheckResult::Passed) return CheckResult::Stopped;
  }
  return CheckResult::Passed;
}

CheckResult FourthOutputs(const Program& program, MessageBoxes& boxes) {
  return TellEach(boxes, SetOutput4(program), "Can't download", [](int line) {
    return "On line " + Number(line) +
           " of your program you have a Set Output instruction using Output 4.  Oskel drives have only 3 "
           "outputs.";
  });
}

CheckResult PromptsExist(const Program& program, MessageBoxes& boxes) {
  if (!program.MMIused) return CheckResult::Passed;
  if (const auto missing = ScanProgMMI(program)) {
    return StopAt(boxes, missing->line,
                  "You are using the MMI variable " + MMIVarName(missing->variable) + " in program line " +
                      Number(missing->line) +
                      ".  But there is no MMI Prompt instruction to put data into that variable.",
                  "Can't Download");
  }
  if (const auto prompt = ScanMMIspeeds(program)) {
    const std::string axis = Joined(prompt->axis + 1);
    return StopAt(
        boxes, prompt->line,
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

CheckResult PromptsFit(const Program& program, MessageBoxes& boxes) {
  const auto wrong = ScanMMItypes(program);
  if (!wrong) return CheckResult::Passed;
  const std::string text = "Warning: You are using the MMI variable " + MMIVarName(wrong->variable) +
                           " in program line " + Number(wrong->line) + std::string(UseText(program, *wrong)) +
                           Number(wrong->prompt_line) + " puts " +
                           std::string(MMIVarKind(wrong->prompt_kind)) + " data into that variable.";
  const Answer answer = boxes.MsgBox({.text = text,
                                      .title = "Warning",
                                      .buttons = Buttons::OKCancel,
                                      .icon = Icon::Question,
                                      .line = wrong->line});
  return answer == Answer::OK ? CheckResult::Passed : CheckResult::Stopped;
}

CheckResult DrivesExist(const Program& program, MessageBoxes& boxes) {
  const auto none = CheckNone(program);
  if (!none) return CheckResult::Passed;
  return StopAt(boxes, none->line,
                "The instruction on line " + Number(none->line) + " uses drive " + Joined(none->axis + 1) +
                    ", but that drive model is set for \"none\".",
                "No drive found");
}

CheckResult CallsReturn(const Program& program, MessageBoxes& boxes) {
  if (!CallsOK(program)) {
    return Stop(
        boxes, "You have subroutine Calls in your program, but no Return instructions.  That is not allowed.",
        "Call without Return");
  }
  if (!ReturnsOK(program)) {
    return Stop(
        boxes, "You have Return instructions in your program, but no subroutine Calls.  That is not allowed.",
        "Return without Call");
  }
  return CheckResult::Passed;
}

CheckResult MovesApart(const Program& program, MessageBoxes& boxes) {
  const auto moves = ScanConcurrent(program);
  if (!moves) return CheckResult::Passed;
  const std::string first = Number(moves->first_line);
  return StopAt(boxes, moves->first_line,
                "You can't do 2 moves on \"" + AxisNameOf(program, moves->axis) +
                    "\" at the same time, but you seem to be attempting that on lines " + first + " and " +
                    Number(moves->second_line) + ". Perhaps you should change line " + first +
                    " to the option \"Wait for end of move before executing the next instruction.\"",
                "Two moves on same axis");
}

CheckResult StopClean(MessageBoxes& boxes, const std::string& text,
                      const std::string& title = std::string(kApplicationTitle)) {
  boxes.MsgBox({.text = text, .title = title, .icon = Icon::Exclamation});
  return CheckResult::StoppedClean;
}

CheckResult RepeatsPair(const Program& program, MessageBoxes& boxes) {
  const int repeats = CountRepeats(program);
  const int ends = CountEndRepeats(program);
  if (ends > repeats) return StopClean(boxes, "Can't download.  You have more End Repeats than Repeats.");
  if (repeats > ends) return StopClean(boxes, "Can't download.  You have more Repeats than End Repeats.");
  if (ERbeforeRP(program)) {
    return StopClean(
        boxes,
        "Can't download.  You have and End Repeat at the beginning of a Repeat loop.  End Repeat goes at "
        "the end of the loop.",
        "End Repeat goes at End");
  }
  return CheckResult::Passed;
}

// In the order in which the operator meets them.
constexpr std::array kChecks = {FourthOutputs, PromptsExist, PromptsFit, DrivesExist,
                                CallsReturn,   MovesApart,   RepeatsPair};

}  // namespace

CheckResult CheckProgram(Program& program, MessageBoxes& boxes) {
  const CheckResult firmware = FirmwareFits(program, boxes);
  if (firmware != CheckResult::Passed) return firmware;
  program.MMIused = ProgHasMMI(program);
  if (program.HubIndex == HubQuad) {
    const CheckResult fits = FitsHubQuad(program, boxes);
    if (fits != CheckResult::Passed) return fits;
    FixMultiIn(program);
  }
  for (const auto check : kChecks) {
    if (const CheckResult result = check(program, boxes); result != CheckResult::Passed) return result;
  }
  return CheckResult::Passed;
}

}  // namespace tavlo
