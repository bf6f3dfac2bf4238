// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "text/long_desc.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "model/kinds.h"
#include "motion/units.h"
#include "platform/number_format.h"
#include "text/line_words.h"

namespace tavlo {
namespace {

/// Columns by which the rows below the first stand right of the line's column.
constexpr int kContinuation = 9;

/// Columns that keep the texts in line behind numbers of one, two and three digits.
int PadOf(int number) {
  if (number < 10) return 2;
  return number < 100 ? 1 : 0;
}

constexpr std::string_view kSpeedPicture = "#0.000#";

std::string Quoted(const std::string& text) {
  return '"' + text + '"';
}

std::string FromVariable(int variable) {
  return "MMI(" + MMIVarName(variable) + ")";
}

/// Writes the rows of one line.
class LongText : LineWords {
 public:
  LongText(const Program& program, int indent, int index)
      : LineWords(program, index), indent_(indent), number_(index + 1) {}

  std::vector<LongRow> Rows() && { return std::move(rows_); }

  void PrintLine() {
    switch (static_cast<Type>(line().Type)) {
      case FL: Move("Feed to Length"); break;
      case FR: FeedReturn(); break;
      case FS: FeedSense(); break;
      case FSR: FeedSenseRet(); break;
      case WT: Head("Wait Time").Number(line().Time / 1000.0).Text("seconds"); break;
      case WI: WaitInput(); break;
      case GT: Head("Go To Line").Number(Target()); break;
      case RP: Repeat(); break;
      case ER: Head("End Repeat"); break;
      case SO: SetOutput(); break;
      case II: IfInput(); break;
      case SH: SeekHome(); break;
      case CM: Head("  Comment: " + Quoted(line().Text)); break;
      case MMI: Prompt(); break;
      case FP: FeedPosn(); break;
      case ED: ChangeMotor(); break;
      case SP: Axis("Set abs position = ").Number(line().Dir != 0 ? -1.0 * line().Dist : line().Dist); break;
      case FE: FollowKnob(); break;
      case CC: Axis("Change motor current to " + Current()); break;
      case III: Axis(MultiIf()); break;
      case FLSO: PrintFLSO(); break;
      case FLCS: PrintFLCS(); break;
      case WII: Axis(MultiWait()); break;
      case FSS: FeedSafely(); break;
      case RL: Head("Reset repeat loop on line " + ToLine()); break;
      case LP: Axis("Save abs position to " + MMIVarName(line().DistVar)); break;
      case CL: Head("Call subroutine on line " + ToLine()); break;
      case RT: Head("Return from subroutine"); break;
      case IM: Axis("if moving go to line ").Number(Target()); break;
      case SS: StartStop(); break;
      case NO:
      case MMImenu: break;
    }
  }

  void PrintFLSO() {
    Axis("Feed to Length" + DirL() + DistL());
    Tab(SpeedL() + AccelL() + "  Set Output " + OutName() + TimedAction());
    if (Action().empty()) return;
    // This kind keeps in the flag of a second speed whether its output acts during the move.
    Text(line().Speed2IsMMI ? " at " + SecondDist() : " at end of move.");
  }

  void PrintFLCS() {
    Axis("Feed to Length" + DirL() + DistL());
    Tab(line().SpeedIsMMI ? ",  V = " + FromVariable(line().SpeedVar) : SpeedL());
    Text(".A=" + AccelOf(line().Accel) + ", D=" + AccelOf(line().Decel) + ".");
    Text(" at " + SecondDist() + "  Change to ");
    Text(line().Speed2IsMMI ? FromVariable(line().Speed2Var) : SpeedOf(line().Speed2));
  }

  [[nodiscard]] std::string MultiIf() const {
    const std::string inputs = SeveralInputs(AndOr());
    return inputs.empty() ? "Illegal Multi-If Input" : "If input " + inputs + " goto " + ToLine();
  }
  [[nodiscard]] std::string MultiWait() const {
    const std::string inputs = SeveralInputs(AndOr());
    return inputs.empty() ? "Illegal Multi-Wait Input" : "Wait for input " + inputs + ".";
  }

 private:
  /// Begins the first row, which bears the number of the line.
  LongText& Head(std::string text) { return Begin(number_, std::move(text)); }
  /// The same, the name of the axis before the text.
  LongText& Axis(const std::string& text) { return Head(Name() + ": " + text); }
  /// Begins a row below.
  LongText& Tab(std::string text) { return Begin(std::nullopt, std::move(text)); }
  LongText& Begin(std::optional<int> number, std::string text) {
    rows_.push_back({number, indent_, std::move(text)});
    return *this;
  }
  LongText& Text(std::string_view text) {
    rows_.back().text += text;
    return *this;
  }
  /// Adds a number as it prints, with a blank on either side in place of none.
  LongText& Number(double value) {
    std::string& text = rows_.back().text;
    const std::string number = Printed(value);
    const bool apart = text.empty() || text.ends_with(' ') || number.starts_with(' ');
    text += (apart ? "" : " ") + number;
    return *this;
  }

  [[nodiscard]] std::string DirL() const { return "(" + Way() + ") "; }
  [[nodiscard]] std::string Steps(std::int32_t steps) const {
    return UsesUnits() ? UserDist(steps) : Format(steps, "#,###,###") + " steps";
  }
  [[nodiscard]] std::string DistL() const {
    return line().DistIsMMI ? "distance = " + FromVariable(line().DistVar) : Steps(line().Dist);
  }
  [[nodiscard]] std::string SecondDist() const {
    return (line().Dist2IsMMI ? "at " + FromVariable(line().Dist2Var) : Steps(line().Dist2)) + ".";
  }
  [[nodiscard]] std::string SpeedOf(double rev_s) const {
    return UsesUnits() ? UserSpeed(rev_s) + UserSpeedUnit() : Format(rev_s, kSpeedPicture) + " rev/sec";
  }
  [[nodiscard]] std::string SpeedL() const {
    if (line().SpeedIsMMI) return ", V = " + FromVariable(line().SpeedVar);
    return (UsesUnits() ? ", " : ", V=") + SpeedOf(line().Speed);
  }
  [[nodiscard]] std::string AccelOf(std::int32_t rev_s2) const {
    return FormatAccel(program(), rev_s2, line().Drive) + " " + (UsesUnits() ? UnitName() : "rev") + "/s/s";
  }
  [[nodiscard]] std::string AccelL() const {
    return ", A=" + AccelOf(line().Accel) + ", D=" + AccelOf(line().Decel);
  }
  [[nodiscard]] std::string Input() const { return InputName(program(), line().IONum, line().Drive); }
  [[nodiscard]] std::string Sensor() const {
    return (SeeksEncoderIndex(line()) ? "To encoder index " : "To input " + Input()) + Level();
  }

  void Move(const std::string& verb) { Axis(verb + DirL() + DistL() + SpeedL() + AccelL()); }

  void Return(const std::string& unit, const std::string& seconds) {
    Tab("Return speed=" + Format(line().RetSpeed, kSpeedPicture) + unit +
        ", Return delay=" + Joined(line().Time / 1000.0) + seconds);
  }

  void FeedReturn() {
    Move("Feed & Return");
    Return(" rev/sec", " sec");
  }

  void FeedSense() {
    Move("Feed to Sensor");
    Tab(Sensor());
  }

  void FeedSenseRet() {
    Move("Feed to Sensor & Return");
    Return("rev/sec", " sec.");
    Tab("  To input " + Input() + Level());
  }

  void FeedSafely() {
    FeedSense();
    Tab("If move distance exceeds safety limit of " + Steps(line().SafetyDist) + " stop motor and go to line")
        .Number(Target());
  }

  void SeekHome() {
    Move("Seek Home");
    Tab(Sensor());
  }

  void FeedPosn() {
    const std::string sign = line().Dir != 0 ? "-" : "";
    Axis("Feed to Abs Position " + sign + DistL() + SpeedL() + AccelL());
  }

  void WaitInput() {
    if (!line().CountIsMMI) {
      Head("Wait for Input " + Input() + Level());
      return;
    }
    Head("Wait for MMI ENTER: " + Quoted(line().Text));
    if (line().JogOn) AllowJogging();
  }

  void AllowJogging() { Tab("Allow jogging on MMI arrow keys."); }

  void Repeat() {
    if (line().CountIsMMI) {
      Head("Repeat (MMI " + MMIVarName(line().DistVar) + ")");
    } else {
      Head("Repeat").Number(line().Count).Text("times");
    }
    Text(CountDisplay());
  }

  void SetOutput() {
    Axis("Set Output");
    if (OutName().starts_with('Y')) {
      Text(" " + OutName() + " ");
    } else {
      Number(line().IONum + 1);
    }
    Text(Action());
    if (IsPulse()) Number(line().Time).Text("msec");
  }

  void IfInput() {
    if (line().CountIsMMI) {
      Head("If MMI YES, go to line").Number(Target());
      return;
    }
    // An edge reads as a low level.
    const std::string_view level = line().State == 0 ? " high" : " low";
    Head("If Input " + Input()).Text(level).Text(" go to line").Number(Target());
  }

  void ChangeMotor() {
    Axis(line().MotorOn ? "Resume normal motor current" : "Disable motor (motor turns freely)");
  }

  void FollowKnob() {
    if (line().CountIsMMI) {
      Head("Follow knob until MMI ENTER. ");
    } else {
      Head("Follow knob until Input").Number(line().IONum);
      if (Level().empty()) return;
      Text(Level().substr(1) + ", ");
    }
    Number(line().Dist).Text("/count.");
  }

  void StartStop() {
    switch (line().SubType) {
      case StartAxis: Axis("Start " + Way() + SpeedL() + AccelL()); break;
      case StopAxis: Axis("Stop"); break;
      case ChangeSpeed: Axis("Change speed to" + SpeedL()); break;
      case StopAll: Head("Stop all motion"); break;
      default: Head(""); break;
    }
  }

  void Prompt() {
    Head("MMI: " + PromptForm());
    Tab(Quoted(line().Text));
    if (IsValuePrompt(line())) {
      Tab("Upper limit = " + Limit(line().UpperInt, line().UpperFrac) +
          "  Lower limit = " + Limit(line().LowerInt, line().LowerFrac));
    }
    if (line().SubType == WaitEnter && (line().JogLR || line().JogUD)) AllowJogging();
  }

  [[nodiscard]] std::string PromptForm() const {
    const std::string variable = MMIVarName(line().DistVar);
    switch (line().SubType) {
      case GetDistance: return variable + "(steps) = entry * " + Joined(StepsPerUnit());
      case GetSpeed: return variable + "(rev/sec) = entry * " + Joined(UserToRev(program(), 1, line().Drive));
      case GetCount: return variable + "(counts) = entry";
      case DisplayOnly: return " (display text only)";
      case WaitEnter: return " (wait for enter)";
      case BranchYesNo: return " (branch on yes to line " + ToLine() + ")";
      case Menu: return " (menu)" + MenuKeys();
      default: return "";
    }
  }

  [[nodiscard]] std::string MenuKeys() const {
    std::string keys;
    for (int key = 1; key <= 8; ++key) {
      if (line().MenuKey[key]) keys += ", " + Joined(key) + " = Line " + Joined(line().MenuLine[key] + 1);
    }
    return keys;
  }

  [[nodiscard]] std::int32_t StepsPerUnit() const {
    return IsAxisSlot(line().Drive) ? program().Axis.StepsPerUnit[line().Drive] : 0;
  }

  /// Its fraction is told in ten-thousandths without zeros before it.
  static std::string Limit(std::int32_t whole, std::int32_t fraction) {
    return Joined(whole) + "." + Joined(fraction) + ".";
  }

  int indent_;
  int number_;
  std::vector<LongRow> rows_;
};

}  // namespace

std::string AsPrinted(const LongRow& row) {
  std::string printed = row.number ? Printed(*row.number) : "";
  const int tab = row.indent + (row.number ? PadOf(*row.number) : kContinuation);
  // Columns count from 1; a cursor that has passed the tab stays where it is.
  const auto before = static_cast<std::size_t>(std::max(tab - 1, 0));
  if (printed.size() < before) printed.resize(before, ' ');
  return printed + row.text;
}

std::vector<LongRow> PrintLine(const Program& program, int indent, int line) {
  LongText text(program, indent, line);
  text.PrintLine();
  return std::move(text).Rows();
}

std::vector<LongRow> PrintFLSO(const Program& program, int indent, int line) {
  LongText text(program, indent, line);
  text.PrintFLSO();
  return std::move(text).Rows();
}

std::vector<LongRow> PrintFLCS(const Program& program, int indent, int line) {
  LongText text(program, indent, line);
  text.PrintFLCS();
  return std::move(text).Rows();
}

std::string MultiIfLong(const Program& program, int line) {
  return LongText(program, 0, line).MultiIf();
}

std::string MultiWaitLong(const Program& program, int line) {
  return LongText(program, 0, line).MultiWait();
}

}  // namespace tavlo
