// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "text/short_desc.h"

#include <array>

#include "motion/units.h"
#include "platform/number_format.h"

namespace tavlo {
namespace {

constexpr std::array<std::string_view, 4> kLevels = {" high", " low", " rising edge", " falling edge"};
constexpr std::array<std::string_view, 4> kSensorLevels = {" high", " low", " rising", " falling"};
constexpr std::array<std::string_view, 4> kBranches = {
    " high, go to line ", " low, go to line ", " rising edge, go to line ", " falling edge, go to line "};
constexpr std::array<std::string_view, 4> kIdle = {"0%", "25%", "50%", "100%"};

/// The entry of a table by a number that may be anything: nothing outside it.
std::string_view Pick(const std::array<std::string_view, 4>& table, int index) {
  return index >= 0 && index < 4 ? table[index] : "";
}

/// Builds the text of one line out of the pieces that the kinds share.
class ShortText {
 public:
  ShortText(const Program& program, int index)
      : program_(program),
        line_(program.Prog[index]),
        index_(index),
        name_(AxisNameOf(program, line_.Drive)) {}

  std::optional<std::string> Build() const {
    switch (static_cast<Type>(line_.Type)) {
      case FL: return Feed();
      case FR: return Feed() + ", return";
      case FS:
      case FSS: return ToSensor();
      case FSR: return ToSensor() + " ,return";
      case WT: return "Wait " + Joined(line_.Time / 1000.0) + " seconds";
      case WI: return WaitInput();
      case GT: return "Go to line " + Target();
      case RP: return Repeat();
      case ER: return "End Repeat Loop";
      case SO: return SetOutput();
      case II: return IfInput();
      case NO: return "";
      case SH:
        return name_ + (line_.Dir != 0 ? ":CCW" : ":CW") + " seek home " + InName() + Level() + SpdText();
      case CM: return DoubleAmps(line_.Text);
      case MMI: return "MMI" + PromptForm() + '"' + line_.Text + '"';
      case FP:
        return name_ + (line_.Dir == 1 ? ":Abs move to -" : ":Abs move to ") + StepsText("posn=") + SpdText();
      case ED: return name_ + (line_.MotorOn ? ":Resume normal current" : ":Disable motor");
      case SP:
        return name_ + (line_.Dir == 1 ? ":Set abs posn = -" : ":Set abs posn = ") + StepsText("dist=");
      case CC:
        return name_ + ":Change current to " + Format(line_.Current, "#0.00") + " A (" +
               std::string(IdleText(line_.IdlePct)) + " idle)";
      case III: return MultiIfShort(program_, index_);
      case FLSO: return Direction() + StepsText("dist=") + ", Out " + OutName() + OutAction();
      case FLCS: return Direction() + StepsText("dist=") + TwoSpeedText();
      case WII: return MultiWaitShort(program_, index_);
      case RL: return "Reset repeat loop on line " + Target();
      case LP: return name_ + ":Save abs position to " + MMIVarName(line_.DistVar);
      case CL: return "Call subroutine on line " + Target();
      case RT: return "Return from subroutine";
      case IM: return name_ + ": if moving go to line " + Target();
      case SS: return StartStop();
      case FE:
      case MMImenu: break;
    }
    return std::nullopt;
  }

 private:
  [[nodiscard]] std::string Target() const { return Joined(line_.LineNum + 1); }
  [[nodiscard]] std::string Direction() const { return name_ + (line_.Dir != 0 ? ":CCW " : ":CW "); }
  [[nodiscard]] std::string Feed() const { return Direction() + StepsText("dist=") + SpdText(); }
  [[nodiscard]] std::string ToSensor() const {
    return Direction() + "to sensor " + InName() + std::string(Pick(kSensorLevels, line_.State));
  }
  [[nodiscard]] std::string Level() const { return std::string(Pick(kLevels, line_.State)); }
  [[nodiscard]] bool HubIO() const { return IsHubIO(program_, line_.Drive); }

  [[nodiscard]] bool UsesUnits() const {
    return IsAxisSlot(line_.Drive) && program_.Axis.UseUnits[line_.Drive];
  }
  [[nodiscard]] std::string UnitName() const {
    return UsesUnits() ? program_.Axis.UnitName[line_.Drive] : "";
  }

  [[nodiscard]] std::string SpeedNumber(double rev_s) const {
    return UsesUnits() ? Format(RevToUser(program_, rev_s, line_.Drive), "#.0#") : Format(rev_s, "#0");
  }
  [[nodiscard]] std::string SpeedUnit() const {
    return UsesUnits() ? " " + UnitName().substr(0, 1) + "ps" : " rps";
  }

  [[nodiscard]] std::string SpdText() const {
    if (line_.SpeedIsMMI) return ", spd=" + MMIVarName(line_.SpeedVar);
    return ", " + SpeedNumber(line_.Speed) + SpeedUnit();
  }

  /// Both numbers share one unit at the end; a named variable stands alone.
  [[nodiscard]] std::string TwoSpeedText() const {
    std::string text = line_.SpeedIsMMI ? SpdText() : ", " + SpeedNumber(line_.Speed);
    if (!line_.SpeedIsMMI && line_.Speed2IsMMI) text += SpeedUnit();
    if (line_.Speed2IsMMI) return text + "/" + MMIVarName(line_.Speed2Var);
    return text + "/" + SpeedNumber(line_.Speed2) + SpeedUnit();
  }

  /// `DistText` and `PosnText`, which differ in the name of a variable's entry.
  [[nodiscard]] std::string StepsText(std::string_view variable_entry) const {
    if (line_.DistIsMMI) return std::string(variable_entry) + MMIVarName(line_.DistVar);
    if (UsesUnits()) return Format(ShownDist(program_, line_.Dist, line_.Drive), "#.0#") + " " + UnitName();
    return Joined(line_.Dist) + " steps";
  }

  [[nodiscard]] bool NamesXandY() const {
    const int model = DriveModelOf(program_, line_.Drive);
    return PlainModel(model) || ProgModel(model);
  }

  [[nodiscard]] std::string InName() const {
    const int n = line_.IONum;
    // The two single-input tests ask for the drive's kind first.
    const bool kind_first = line_.Type == WI || line_.Type == II;
    if (n >= kFirstDriveInput && !(kind_first && NamesXandY())) return "X" + Joined(n - kFirstDriveInput);
    return (NamesXandY() ? "X" : "") + Joined(n + 1);
  }

  [[nodiscard]] std::string OutName() const {
    const int n = line_.IONum;
    if (n >= kFirstDriveInput) return "Y" + Joined(n - kFirstDriveInput + 1);
    return (NamesXandY() ? "Y" : "") + Joined(n + 1);
  }

  [[nodiscard]] std::string OutAction() const {
    const std::string time = Joined(line_.Time);
    switch (line_.State) {
      case 0: return " high";
      case 1: return " low";
      case 2: return " high pulse " + time + " msec";
      case 3: return " low pulse " + time + " msec";
      default: return "";
    }
  }

  [[nodiscard]] std::string WaitInput() const {
    if (line_.CountIsMMI) return "Wait for MMI ENTER (" + line_.Text + ")";
    if (HubIO()) return "Hub:Wait for Input " + Joined(line_.IONum + 1) + Level();
    return name_ + ":Wait for Input " + InName() + Level();
  }

  [[nodiscard]] std::string Repeat() const {
    const std::string count =
        line_.CountIsMMI ? "(" + MMIVarName(line_.DistVar) + ")" : Joined(line_.Count) + " times";
    return "Repeat " + count + (line_.SpeedIsMMI ? ", display count" : "");
  }

  [[nodiscard]] std::string SetOutput() const {
    if (HubIO()) return "Hub:Set Output " + Joined(line_.IONum + 1) + OutAction();
    return name_ + ":Set Output " + OutName() + OutAction();
  }

  [[nodiscard]] std::string IfInput() const {
    if (line_.CountIsMMI) return "If MMI=Yes, go to line " + Target() + " (" + line_.Text + ")";
    const std::string input =
        HubIO() ? "Hub:If Input " + Joined(line_.IONum + 1) : name_ + ":If Input " + InName();
    const std::string_view branch = Pick(kBranches, line_.State);
    return branch.empty() ? input : input + std::string(branch) + Target();
  }

  [[nodiscard]] std::string PromptForm() const {
    switch (line_.SubType) {
      case GetDistance:
      case GetSpeed:
      case GetCount: return "(" + MMIVarName(line_.DistVar) + "): ";
      case DisplayOnly: return ": ";
      case WaitEnter: return "(wait for enter): ";
      case BranchYesNo: return "(branch on yes to line " + Target() + "): ";
      case Menu: return " Menu: ";
      default: return "";
    }
  }

  [[nodiscard]] std::string StartStop() const {
    switch (line_.SubType) {
      case StartAxis: return "Start " + name_ + (line_.Dir != 0 ? " ccw" : " cw") + SpdText();
      case StopAxis: return "Stop " + name_;
      case ChangeSpeed: return "Change speed of " + name_ + SpdText();
      case StopAll: return "Stop all motion";
      default: return "";
    }
  }

  const Program& program_;
  const Instruction& line_;
  int index_;
  std::string name_;
};

/// The inputs that a test of several inputs wants high and low, as lists of names.
struct InputLists {
  std::string highs;
  std::string lows;
};

InputLists ListInputs(const Program& program, const Instruction& line) {
  InputLists lists;
  const auto walk = [&](int mask, int state, int first) {
    for (int bit = 0; bit < 8; ++bit) {
      if ((mask >> bit & 1) == 0) continue;
      std::string& list = (state >> bit & 1) != 0 ? lists.highs : lists.lows;
      if (!list.empty()) list += ",";
      list += InputName(program, first + bit, line.Drive);
    }
  };
  walk(line.InMask, line.InState, 0);
  walk(line.DrvMask, line.DrvState, 8);
  return lists;
}

std::string MultiShort(const Program& program, int index, std::string_view verb, const std::string& ending,
                       std::string_view illegal) {
  const Instruction& line = program.Prog[index];
  const auto [highs, lows] = ListInputs(program, line);
  if (highs.empty() && lows.empty()) return std::string(illegal);
  std::string text = IsHubIO(program, line.Drive) ? "Hub" : AxisNameOf(program, line.Drive);
  text += verb;
  if (!highs.empty()) text += highs + " high";
  if (!highs.empty() && !lows.empty()) text += line.WaitAND ? " and " : " or ";
  if (!lows.empty()) text += lows + " low";
  return text + ending;
}

}  // namespace

std::optional<std::string> ShortDesc(const Program& program, int line) {
  return ShortText(program, line).Build();
}

std::string InputName(const Program& program, int n, int axis) {
  if (n >= kFirstDriveInput) return "X" + Joined(n - kFirstDriveInput);
  if (n >= 8) return "X" + Joined(n - 8);
  const int model = DriveModelOf(program, axis);
  return (PlainModel(model) || ProgModel(model) ? "X" : "") + Joined(n + 1);
}

std::string MultiIfShort(const Program& program, int line) {
  const std::string ending = " goto " + Joined(program.Prog[line].LineNum + 1);
  return MultiShort(program, line, ":If input ", ending, "Illegal Multi-If Input");
}

std::string MultiWaitShort(const Program& program, int line) {
  return MultiShort(program, line, ":Wait input ", "", "Illegal Multi-Wait Input");
}

std::string DoubleAmps(std::string_view text) {
  std::string result;
  for (const char c : text) result.append(c == '&' ? 2 : 1, c);
  return result;
}

std::string ShownCaption(std::string_view caption) {
  std::string text;
  for (std::size_t i = 0; i < caption.size(); ++i) {
    text += caption[i];
    if (caption.substr(i, 2) == "&&") ++i;
  }
  return text;
}

std::string_view IdleText(int idle_pct) {
  return Pick(kIdle, idle_pct);
}

std::string FitText(std::string text, double limit,
                    const std::function<double(std::string_view)>& drawn_width) {
  while (!text.empty() && drawn_width(text) > limit) text.pop_back();
  return text;
}

}  // namespace tavlo
