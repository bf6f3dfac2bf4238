// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "text/short_desc.h"

#include <array>

#include "motion/units.h"
#include "platform/number_format.h"
#include "text/line_words.h"

namespace tavlo {
namespace {

// Of a sensor that ends a move.
constexpr std::array<std::string_view, 4> kSensorLevels = {" high", " low", " rising", " falling"};

/// Builds the text of one line out of the pieces that the kinds share.
class ShortText : LineWords {
 public:
  using LineWords::LineWords;

  std::optional<std::string> Build() const {
    switch (static_cast<Type>(line().Type)) {
      case FL: return Feed();
      case FR: return Feed() + ", return";
      case FS:
      case FSS: return ToSensor();
      case FSR: return ToSensor() + " ,return";
      case WT: return "Wait " + Joined(line().Time / 1000.0) + " seconds";
      case WI: return WaitInput();
      case GT: return "Go to line " + ToLine();
      case RP: return Repeat();
      case ER: return "End Repeat Loop";
      case SO: return SetOutput();
      case II: return IfInput();
      case NO: return "";
      case SH:
        return Name() + (line().Dir != 0 ? ":CCW" : ":CW") + " seek home " + InName() + Level() + SpdText();
      case CM: return DoubleAmps(line().Text);
      case MMI: return "MMI" + PromptForm() + '"' + line().Text + '"';
      case FP:
        return Name() + (line().Dir == 1 ? ":Abs move to -" : ":Abs move to ") + StepsText("posn=") +
               SpdText();
      case ED: return Name() + (line().MotorOn ? ":Resume normal current" : ":Disable motor");
      case SP:
        return Name() + (line().Dir == 1 ? ":Set abs posn = -" : ":Set abs posn = ") + StepsText("dist=");
      case CC: return Name() + ":Change current to " + Current();
      case III: return MultiIf();
      case FLSO: return Direction() + StepsText("dist=") + ", Out " + OutName() + TimedAction();
      case FLCS: return Direction() + StepsText("dist=") + TwoSpeedText();
      case WII: return MultiWait();
      case RL: return "Reset repeat loop on line " + ToLine();
      case LP: return Name() + ":Save abs position to " + MMIVarName(line().DistVar);
      case CL: return "Call subroutine on line " + ToLine();
      case RT: return "Return from subroutine";
      case IM: return Name() + ": if moving go to line " + ToLine();
      case SS: return StartStop();
      case FE:
      case MMImenu: break;
    }
    return std::nullopt;
  }

  [[nodiscard]] std::string MultiIf() const {
    const std::string inputs = SeveralInputs(",");
    return inputs.empty() ? "Illegal Multi-If Input"
                          : AxisOrHub() + ":If input " + inputs + " goto " + ToLine();
  }
  [[nodiscard]] std::string MultiWait() const {
    const std::string inputs = SeveralInputs(",");
    return inputs.empty() ? "Illegal Multi-Wait Input" : AxisOrHub() + ":Wait input " + inputs;
  }

 private:
  [[nodiscard]] std::string Direction() const { return Name() + (line().Dir != 0 ? ":CCW " : ":CW "); }
  [[nodiscard]] std::string Feed() const { return Direction() + StepsText("dist=") + SpdText(); }
  [[nodiscard]] std::string ToSensor() const {
    const std::string_view level = Level().empty() ? "" : kSensorLevels[line().State];
    return Direction() + "to sensor " + InName() + std::string(level);
  }
  [[nodiscard]] bool HubIO() const { return IsHubIO(program(), line().Drive); }
  [[nodiscard]] std::string AxisOrHub() const { return HubIO() ? "Hub" : Name(); }
  /// An input or output of the hub itself.
  [[nodiscard]] std::string HubNumber() const { return Joined(line().IONum + 1); }

  [[nodiscard]] std::string SpeedNumber(double rev_s) const {
    return UsesUnits() ? UserSpeed(rev_s) : Format(rev_s, "#0");
  }
  [[nodiscard]] std::string SpeedUnit() const { return UsesUnits() ? UserSpeedUnit() : " rps"; }

  [[nodiscard]] std::string SpdText() const {
    if (line().SpeedIsMMI) return ", spd=" + MMIVarName(line().SpeedVar);
    return ", " + SpeedNumber(line().Speed) + SpeedUnit();
  }

  /// Both numbers share one unit at the end; a named variable stands alone.
  [[nodiscard]] std::string TwoSpeedText() const {
    std::string text = line().SpeedIsMMI ? SpdText() : ", " + SpeedNumber(line().Speed);
    if (!line().SpeedIsMMI && line().Speed2IsMMI) text += SpeedUnit();
    if (line().Speed2IsMMI) return text + "/" + MMIVarName(line().Speed2Var);
    return text + "/" + SpeedNumber(line().Speed2) + SpeedUnit();
  }

  /// `DistText` and `PosnText`, which differ in the name of a variable's entry.
  [[nodiscard]] std::string StepsText(std::string_view variable_entry) const {
    if (line().DistIsMMI) return std::string(variable_entry) + MMIVarName(line().DistVar);
    if (UsesUnits()) return UserDist(line().Dist);
    return Joined(line().Dist) + " steps";
  }

  [[nodiscard]] std::string InName() const {
    const int n = line().IONum;
    // The two single-input tests ask for the drive's kind first.
    const bool kind_first = line().Type == WI || line().Type == II;
    if (n >= kFirstDriveInput && !(kind_first && NamesXandY())) return "X" + Joined(n - kFirstDriveInput);
    return (NamesXandY() ? "X" : "") + Joined(n + 1);
  }

  [[nodiscard]] std::string WaitInput() const {
    if (line().CountIsMMI) return "Wait for MMI ENTER (" + line().Text + ")";
    if (HubIO()) return "Hub:Wait for Input " + HubNumber() + Level();
    return Name() + ":Wait for Input " + InName() + Level();
  }

  [[nodiscard]] std::string Repeat() const {
    const std::string count =
        line().CountIsMMI ? "(" + MMIVarName(line().DistVar) + ")" : Joined(line().Count) + " times";
    return "Repeat " + count + CountDisplay();
  }

  [[nodiscard]] std::string SetOutput() const {
    if (HubIO()) return "Hub:Set Output " + HubNumber() + TimedAction();
    return Name() + ":Set Output " + OutName() + TimedAction();
  }

  [[nodiscard]] std::string IfInput() const {
    if (line().CountIsMMI) return "If MMI=Yes, go to line " + ToLine() + " (" + line().Text + ")";
    const std::string input = HubIO() ? "Hub:If Input " + HubNumber() : Name() + ":If Input " + InName();
    return Level().empty() ? input : input + Level() + ", go to line " + ToLine();
  }

  [[nodiscard]] std::string PromptForm() const {
    switch (line().SubType) {
      case GetDistance:
      case GetSpeed:
      case GetCount: return "(" + MMIVarName(line().DistVar) + "): ";
      case DisplayOnly: return ": ";
      case WaitEnter: return "(wait for enter): ";
      case BranchYesNo: return "(branch on yes to line " + ToLine() + "): ";
      case Menu: return " Menu: ";
      default: return "";
    }
  }

  [[nodiscard]] std::string StartStop() const {
    switch (line().SubType) {
      case StartAxis: return "Start " + Name() + " " + Way() + SpdText();
      case StopAxis: return "Stop " + Name();
      case ChangeSpeed: return "Change speed of " + Name() + SpdText();
      case StopAll: return "Stop all motion";
      default: return "";
    }
  }
};

}  // namespace

std::optional<std::string> ShortDesc(const Program& program, int line) {
  return ShortText(program, line).Build();
}

std::string MultiIfShort(const Program& program, int line) {
  return ShortText(program, line).MultiIf();
}

std::string MultiWaitShort(const Program& program, int line) {
  return ShortText(program, line).MultiWait();
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

std::string FitText(std::string text, double limit,
                    const std::function<double(std::string_view)>& drawn_width) {
  while (!text.empty() && drawn_width(text) > limit) text.pop_back();
  return text;
}

}  // namespace tavlo
