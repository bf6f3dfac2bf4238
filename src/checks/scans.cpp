// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "checks/scans.h"

#include <algorithm>
#include <array>

#include "model/kinds.h"
#include "model/program_queries.h"
#include "motion/units.h"

namespace tavlo {
namespace {

/// Above this ratio of steps/rev to steps/unit, the hub cannot convert an entered speed into its own units.
constexpr double kMostStepsRatio = 40;

template <class Test>
std::vector<int> LinesThat(const Program& program, Test test) {
  std::vector<int> lines;
  for (int line = 0; line < kLines; ++line) {
    if (test(program.Prog[line])) lines.push_back(line);
  }
  return lines;
}

template <class Test>
int CountLines(const Program& program, Test test) {
  return static_cast<int>(LinesThat(program, test).size());
}

int CountType(const Program& program, int type) {
  return CountLines(program, [type](const Instruction& line) { return line.Type == type; });
}

/// Returns the next move on the axis of line `i` that the program can reach while the move of line `i` runs.
std::optional<int> MeetsMove(const Program& program, int i) {
  for (int j = i + 1; j < kLines; ++j) {
    const Instruction& line = program.Prog[j];
    const bool move = IsMove(line.Type);
    if (move && line.Drive == program.Prog[i].Drive) return j;
    if ((!move && !IsPassive(line.Type)) || (move && !line.Proceed)) return std::nullopt;
  }
  return std::nullopt;
}

}  // namespace

std::vector<int> BadMoveorMMIAxis(const Program& program) {
  return LinesThat(program, [](const Instruction& line) {
    if (line.Drive < kHubQuadIO) return false;
    switch (line.Type) {
      case FL:
      case FR:
      case FS:
      case FSR:
      case SH:
      case FP:
      case SP:
      case CC:
      case FLSO:
      case LP:
      case IM: return true;
      case MMI: return line.SubType == GetDistance || line.SubType == GetSpeed;
      default: return false;
    }
  });
}

std::vector<int> In5678used(const Program& program) {
  return LinesThat(program, [](const Instruction& line) {
    return (line.Type == II || line.Type == WI) && line.Drive == kHubQuadIO && line.IONum >= 4;
  });
}

std::vector<int> IOpast5(const Program& program) {
  return LinesThat(program, [](const Instruction& line) {
    return line.Drive > kHubQuadIO && (line.Type == WI || line.Type == SO || line.Type == II);
  });
}

void FixMultiIn(Program& program) {
  for (int i = 0; i < kLines; ++i) {
    Instruction& line = program.Prog[i];
    if (line.Drive != kHubQuadIO || (line.Type != III && line.Type != WII)) continue;
    line.InMask %= 16;
    line.InState %= 16;
  }
}

std::vector<int> SetOutput4(const Program& program) {
  return LinesThat(program, [&program](const Instruction& line) {
    return line.Type == SO && line.IONum >= 3 && !FourOutputAxis(program, line.Drive);
  });
}

std::optional<MissingPrompt> ScanProgMMI(const Program& program) {
  std::array<bool, kMMIVariables + 1> filled{};
  const auto known = [&filled](int variable) {
    return variable >= 0 && variable < static_cast<int>(filled.size());
  };
  for (int i = 0; i < kLines; ++i) {
    const Instruction& line = program.Prog[i];
    if (FillsVariable(line) && known(line.DistVar)) filled[line.DistVar] = true;
  }
  std::optional<MissingPrompt> found;
  for (int i = 0; i < kLines; ++i) {
    const Instruction& line = program.Prog[i];
    for (const OperandRow& row : kOperands) {
      const int variable = line.*row.variable;
      if (TakesFromVariable(line, row) && (!known(variable) || !filled[variable])) found = {variable, i};
    }
  }
  return found;
}

std::optional<SpeedPrompt> ScanMMIspeeds(const Program& program) {
  std::optional<SpeedPrompt> found;
  for (int i = 0; i < kLines; ++i) {
    const Instruction& line = program.Prog[i];
    if (line.Type != MMI || line.SubType != GetSpeed || !IsAxisSlot(line.Drive)) continue;
    const double steps_per_rev = GetStepsPerRev(program, line.Drive);
    if (steps_per_rev > kMostStepsRatio * program.Axis.StepsPerUnit[line.Drive]) found = {line.Drive, i};
  }
  return found;
}

std::optional<WrongPrompt> ScanMMItypes(const Program& program) {
  std::optional<WrongPrompt> found;
  for (int i = 0; i < kLines; ++i) {
    const Instruction& line = program.Prog[i];
    // The two feeds with a second distance are not looked at.
    const bool feed = KindOf(line.Type).operands == OfDist + OfSpeed;
    for (int p = 0; p < kLines; ++p) {
      const Instruction& prompt = program.Prog[p];
      if (!IsValuePrompt(prompt)) continue;
      const auto misfit = [&](bool used, int variable, int kind) {
        return used && prompt.DistVar == variable && prompt.SubType != kind;
      };
      if (misfit(feed && line.DistIsMMI, line.DistVar, GetDistance)) {
        found = {line.DistVar, i, p, prompt.SubType, false};
      }
      if (misfit(feed && line.SpeedIsMMI, line.SpeedVar, GetSpeed)) {
        found = {line.SpeedVar, i, p, prompt.SubType, true};
      }
      if (misfit(line.Type == RP && line.CountIsMMI, line.DistVar, GetCount)) {
        found = {line.DistVar, i, p, prompt.SubType, false};
      }
    }
  }
  return found;
}

std::optional<NoDrive> CheckNone(const Program& program) {
  std::optional<NoDrive> found;
  for (int i = 0; i < kLines; ++i) {
    for (const int axis : AxesOf(program, program.Prog[i])) {
      if (DriveModelOf(program, axis) == 0) found = {i, axis};
    }
  }
  return found;
}

bool CallsOK(const Program& program) {
  return CountType(program, CL) == 0 || CountType(program, RT) > 0;
}

bool ReturnsOK(const Program& program) {
  return CountType(program, RT) == 0 || CountType(program, CL) > 0;
}

std::optional<TwoMoves> ScanConcurrent(const Program& program) {
  for (int i = 0; i < kLines - 1; ++i) {
    const Instruction& line = program.Prog[i];
    if (!GoesOnAtOnce(line)) continue;
    if (const auto second = MeetsMove(program, i)) return TwoMoves{line.Drive, i, *second};
  }
  return std::nullopt;
}

int CountRepeats(const Program& program) {
  return CountType(program, RP);
}
int CountEndRepeats(const Program& program) {
  return CountType(program, ER);
}

bool ERbeforeRP(const Program& program) {
  return CountLines(program,
                    [](const Instruction& line) { return line.Type == ER && line.LineNum == kNoRepeat; }) > 0;
}

}  // namespace tavlo
