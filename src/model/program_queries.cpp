// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "model/program_queries.h"

#include <algorithm>

namespace tavlo {
namespace {

bool NeedsMMI(const Instruction& line) {
  switch (line.Type) {
    case FL:
    case FR:
    case FS:
    case FSR:
    case FP:
    case FSS: return line.DistIsMMI || line.SpeedIsMMI;
    case WI:
    case RP:
    case II:
    case FE: return line.CountIsMMI;
    case MMI: return true;
    case FLSO: return line.DistIsMMI || line.SpeedIsMMI || line.Dist2IsMMI;
    case FLCS: return line.DistIsMMI || line.SpeedIsMMI || line.Dist2IsMMI || line.Speed2IsMMI;
    default: return false;
  }
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
