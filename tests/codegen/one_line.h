// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string>

#include "codegen/compile.h"
#include "support/bytes.h"
#include "support/new_program.h"

namespace tavlo::testing {

/// One line of this type with the defaults of a fresh one, on line 0 of a program of its own.
struct OneLine {
  explicit OneLine(int type) { line().Type = static_cast<std::int16_t>(type); }
  Instruction& line() { return program.Prog[0]; }
  std::string Compiled() {
    StringPool fresh;
    pool = fresh;
    return Compile(program, 0, pool);
  }
  std::string InHex() { return Hex(Compiled()); }

  Program program = NewProgram();
  StringPool pool;
};

}  // namespace tavlo::testing
