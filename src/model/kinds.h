// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "model/instruction.h"

namespace tavlo {

/// What a kind of line has to do with motion.
enum class Motion : std::uint8_t {
  None,
  /// Runs an axis to an end.
  Move,
  /// Takes no part in motion; may run while an axis moves.
  Passive,
};

/// Where the program goes after a line, as the arrows show it.
enum class Lead : std::uint8_t {
  Next,
  /// To the line that `LineNum` names.
  Jump,
  /// To that line or to the next.
  Branch,
  /// Back to the Repeat that `LineNum` names.
  LoopEnd,
};

/// What `Drive` means to a kind of line.
enum class AxisUse : std::uint8_t {
  None,
  /// The axis of a drive.
  Drive,
  /// A drive, or the Hub Quad's own inputs and outputs.
  DriveOrHub,
  /// It depends on what the prompt asks for.
  Prompt,
};

/// What `IONum`, or the masks of several inputs, name on a kind of line.
enum class IOUse : std::uint8_t { None, Input, Inputs, Output };

/// When a kind of line needs the operator terminal, operands that come from variables aside.
enum class Terminal : std::uint8_t {
  Never,
  /// If `CountIsMMI` is set.
  ByFlag,
  Always,
};

/// Operands that may come from a variable of the hub.
enum Operand : std::uint8_t { OfDist = 1, OfSpeed = 2, OfDist2 = 4, OfSpeed2 = 8, OfCount = 16 };

/// What is true of every line of a kind. What is true of some of its lines only is in the functions below.
struct Kind {
  Type type;
  std::string_view mnemonic;
  Motion motion = Motion::None;
  /// `Proceed` has a meaning: the program may go on without waiting.
  bool may_go_on = false;
  Lead lead = Lead::Next;
  /// The operator names the line in `LineNum`. It is adjusted when lines are inserted or deleted; others are
  /// not.
  bool names_line = false;
  /// A sum of `Operand`.
  int operands = 0;
  AxisUse axis = AxisUse::Drive;
  IOUse io = IOUse::None;
  Terminal terminal = Terminal::Never;
  /// `Text` is shown on the operator terminal and stored in the pool of prompts.
  bool screen_text = false;
};

inline constexpr auto kKinds = std::to_array<Kind>({
    {.type = FL, .mnemonic = "FL", .motion = Motion::Move, .may_go_on = true, .operands = OfDist + OfSpeed},
    {.type = FR, .mnemonic = "FR", .motion = Motion::Move, .may_go_on = true, .operands = OfDist + OfSpeed},
    {.type = FS,
     .mnemonic = "FS",
     .motion = Motion::Move,
     .may_go_on = true,
     .operands = OfDist + OfSpeed,
     .io = IOUse::Input},
    {.type = FSR,
     .mnemonic = "FSR",
     .motion = Motion::Move,
     .may_go_on = true,
     .operands = OfDist + OfSpeed,
     .io = IOUse::Input},
    {.type = WT, .mnemonic = "WT", .motion = Motion::Passive, .axis = AxisUse::None},
    {.type = WI,
     .mnemonic = "WI",
     .axis = AxisUse::DriveOrHub,
     .io = IOUse::Input,
     .terminal = Terminal::ByFlag},
    {.type = GT,
     .mnemonic = "GT",
     .may_go_on = true,
     .lead = Lead::Jump,
     .names_line = true,
     .axis = AxisUse::None},
    {.type = RP, .mnemonic = "RP", .may_go_on = true, .operands = OfCount, .axis = AxisUse::None},
    {.type = ER, .mnemonic = "ER", .may_go_on = true, .lead = Lead::LoopEnd, .axis = AxisUse::None},
    {.type = SO,
     .mnemonic = "SO",
     .motion = Motion::Passive,
     .axis = AxisUse::DriveOrHub,
     .io = IOUse::Output},
    {.type = II,
     .mnemonic = "II",
     .may_go_on = true,
     .lead = Lead::Branch,
     .names_line = true,
     .axis = AxisUse::DriveOrHub,
     .io = IOUse::Input,
     .terminal = Terminal::ByFlag},
    {.type = NO, .mnemonic = "NO", .motion = Motion::Passive, .axis = AxisUse::None},
    {.type = SH, .mnemonic = "SH", .motion = Motion::Move, .may_go_on = true, .io = IOUse::Input},
    {.type = CM, .mnemonic = "CM", .motion = Motion::Passive, .axis = AxisUse::None},
    // Its yes/no form branches to a line that the operator names; its other forms do not.
    {.type = MMI,
     .mnemonic = "MMI",
     .motion = Motion::Passive,
     .axis = AxisUse::Prompt,
     .terminal = Terminal::Always,
     .screen_text = true},
    {.type = FP, .mnemonic = "FP", .motion = Motion::Move, .may_go_on = true, .operands = OfDist + OfSpeed},
    {.type = ED, .mnemonic = "ED"},
    {.type = SP, .mnemonic = "SP"},
    {.type = FE, .mnemonic = "FE", .io = IOUse::Input, .terminal = Terminal::ByFlag},
    {.type = CC, .mnemonic = "CC"},
    {.type = III,
     .mnemonic = "III",
     .lead = Lead::Branch,
     .names_line = true,
     .axis = AxisUse::DriveOrHub,
     .io = IOUse::Inputs},
    {.type = FLSO,
     .mnemonic = "FLSO",
     .motion = Motion::Move,
     .may_go_on = true,
     .operands = OfDist + OfSpeed + OfDist2,
     .io = IOUse::Output},
    {.type = FLCS,
     .mnemonic = "FLCS",
     .motion = Motion::Move,
     .may_go_on = true,
     .operands = OfDist + OfSpeed + OfDist2 + OfSpeed2},
    {.type = WII, .mnemonic = "WII", .axis = AxisUse::DriveOrHub, .io = IOUse::Inputs},
    // Its line is where the machine goes when something is wrong; it is not adjusted when lines move.
    {.type = FSS,
     .mnemonic = "FSS",
     .motion = Motion::Move,
     .may_go_on = true,
     .lead = Lead::Branch,
     .operands = OfDist + OfSpeed,
     .io = IOUse::Input},
    {.type = RL, .mnemonic = "RL", .names_line = true, .axis = AxisUse::None},
    {.type = MMImenu, .mnemonic = "MMI"},
    {.type = LP, .mnemonic = "LP"},
    {.type = CL, .mnemonic = "CL", .lead = Lead::Jump, .names_line = true, .axis = AxisUse::None},
    {.type = RT, .mnemonic = "RT", .axis = AxisUse::None},
    {.type = IM, .mnemonic = "IM", .motion = Motion::Passive, .lead = Lead::Branch, .names_line = true},
    // Its speed may come from a variable too, but no check asks whether a prompt fills that variable.
    {.type = SS, .mnemonic = "SS"},
});

namespace kinds {

constexpr bool InOrder() {
  for (std::size_t i = 0; i < kKinds.size(); ++i) {
    if (kKinds[i].type != static_cast<int>(i)) return false;
  }
  return true;
}
static_assert(kKinds.size() == kTypes, "each type of line has a row");
static_assert(InOrder(), "the table is indexed by the type");

/// An unknown type counts as a line of no particular kind, on the axis that it names.
inline constexpr Kind kUnknown = {.type = NO, .mnemonic = "?"};

}  // namespace kinds

/// Returns the row of a type, which may be any number.
[[nodiscard]] constexpr const Kind& KindOf(int type) {
  return type >= 0 && type < kTypes ? kKinds[static_cast<std::size_t>(type)] : kinds::kUnknown;
}

/// Returns the mnemonic of a type, such as "FLSO"; "?" outside 0..31. The hub's code for the menu returns
/// "MMI" too.
[[nodiscard]] constexpr std::string_view Mnemonic(int type) {
  return KindOf(type).mnemonic;
}

/// Whether a program line of this type runs an axis to an end.
[[nodiscard]] constexpr bool IsMove(int type) {
  return KindOf(type).motion == Motion::Move;
}
/// Whether a line of this type takes no part in motion and may run while an axis moves.
[[nodiscard]] constexpr bool IsPassive(int type) {
  return KindOf(type).motion == Motion::Passive;
}
/// Whether the line is a move after which the program goes on without waiting.
[[nodiscard]] constexpr bool GoesOnAtOnce(const Instruction& line) {
  return IsMove(line.Type) && line.Proceed;
}

[[nodiscard]] constexpr bool IsYesNoPrompt(const Instruction& line) {
  return line.Type == MMI && line.SubType == BranchYesNo;
}
/// Whether the line is a prompt for a distance, a speed or a count.
[[nodiscard]] constexpr bool IsValuePrompt(const Instruction& line) {
  return line.Type == MMI && line.SubType >= GetDistance && line.SubType <= GetCount;
}

/// Whether the line waits for the operator terminal, in place of its input if its kind has one.
[[nodiscard]] constexpr bool AsksTerminal(const Instruction& line) {
  return KindOf(line.Type).terminal == Terminal::ByFlag && line.CountIsMMI;
}
/// Returns what `IONum` or the masks of the line name. A line that asks the operator terminal names no input.
[[nodiscard]] constexpr IOUse IOUseOf(const Instruction& line) {
  return AsksTerminal(line) ? IOUse::None : KindOf(line.Type).io;
}

/// Returns where the line leads. The `LineNum` of an End Repeat without a Repeat does not name a line.
[[nodiscard]] constexpr Lead LeadOf(const Instruction& line) {
  return IsYesNoPrompt(line) ? Lead::Branch : KindOf(line.Type).lead;
}
/// Whether the operator names the line in `LineNum`, which is then adjusted when lines are inserted or
/// deleted.
[[nodiscard]] constexpr bool NamesLine(const Instruction& line) {
  return IsYesNoPrompt(line) || KindOf(line.Type).names_line;
}

/// An operand with its flag and its variable.
struct OperandRow {
  Operand operand;
  bool Instruction::*from_variable;
  std::int16_t Instruction::*variable;
};
inline constexpr std::array<OperandRow, 5> kOperands = {{
    {OfDist, &Instruction::DistIsMMI, &Instruction::DistVar},
    {OfSpeed, &Instruction::SpeedIsMMI, &Instruction::SpeedVar},
    {OfDist2, &Instruction::Dist2IsMMI, &Instruction::Dist2Var},
    {OfSpeed2, &Instruction::Speed2IsMMI, &Instruction::Speed2Var},
    {OfCount, &Instruction::CountIsMMI, &Instruction::DistVar},
}};

/// Whether the line has this operand and takes it from a variable.
[[nodiscard]] constexpr bool TakesFromVariable(const Instruction& line, const OperandRow& row) {
  return (KindOf(line.Type).operands & row.operand) != 0 && line.*row.from_variable;
}

/// Whether the line gives the variable in `DistVar` a value.
[[nodiscard]] constexpr bool FillsVariable(const Instruction& line) {
  return IsValuePrompt(line) || line.Type == LP;
}

}  // namespace tavlo
