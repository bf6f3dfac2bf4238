// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "model/program_queries.h"

#include <algorithm>

#include "model/kinds.h"

namespace tavlo {
namespace {

bool NeedsMMI(const Instruction& line) {
  if (KindOf(line.Type).terminal == Terminal::Always || AsksTerminal(line)) return true;
  return std::ranges::any_of(kOperands, [&](const OperandRow& row) { return TakesFromVariable(line, row); });
}

/// The axes on which a prompt needs a drive.
std::vector<int> AxesOfPrompt(const Instruction& line) {
  if (line.SubType == GetDistance || line.SubType == GetSpeed) return {line.Drive};
  std::vector<int> axes;
  if (line.SubType != WaitEnter) return axes;
  if (line.JogLR) axes.push_back(line.JogLRDrive);
  if (line.JogUD) axes.push_back(line.JogUDDrive);
  return axes;
}

template <class Test>
bool AnyLine(const Program& program, Test test) {
  return std::any_of(program.Prog.begin(), program.Prog.begin() + kLines, test);
}

}  // namespace

bool ProgHas(const Program& program, int type) {
  return AnyLine(program, [type](const Instruction& line) { return line.Type == type; });
}

bool ProgHasCS(const Program& program, int axis) {
  return AnyLine(program, [axis](const Instruction& line) {
    return line.Type == SS && line.SubType == ChangeSpeed && line.Drive == axis;
  });
}

bool ProgHasMMI(const Program& program) {
  return AnyLine(program, NeedsMMI);
}

std::vector<int> AxesOf(const Program& program, const Instruction& line) {
  switch (KindOf(line.Type).axis) {
    case AxisUse::None: return {};
    case AxisUse::Drive: return {line.Drive};
    case AxisUse::DriveOrHub:
      if (IsHubIO(program, line.Drive)) return {};
      return {line.Drive};
    case AxisUse::Prompt: return AxesOfPrompt(line);
  }
  return {};
}

}  // namespace tavlo
