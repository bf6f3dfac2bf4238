// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <fstream>
#include <iostream>

#include "full_program.h"
#include "model/program_file.h"

/// Writes the program of the download benchmark to the file that it is given.
int main(int argc, char** argv) {
  if (argc != 2) return 2;
  std::ofstream file(argv[1], std::ios::binary);
  file << tavlo::WriteHubProg(tavlo::bench::FullProgram(), 0);
  return file.flush() ? 0 : 4;
}
