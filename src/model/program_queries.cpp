// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "model/program_queries.h"

#include <algorithm>

#include "model/kinds.h"

namespace tavlo {
namespace {

bool NeedsMMI(const Instruction& line) {
  switch (KindOf(line.Type).terminal) {
    case Terminal::Always: return true;
    case Terminal::ByFlag: return line.CountIsMMI;
    case Terminal::Never: break;
  }
  return std::ranges::any_of(kOperands, [&](const OperandRow& row) { return TakesFromVariable(line, row); });
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

}  // namespace tavlo
