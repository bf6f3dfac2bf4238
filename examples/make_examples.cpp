// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <fstream>
#include <iostream>

#include "model/program_file.h"
#include "programs.h"

/// Writes the example programs into the folder that it is given.
int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: make-examples FOLDER\n";
    return 2;
  }
  for (const auto& example : tavlo::examples::ExamplePrograms()) {
    const std::string path = std::string(argv[1]) + "/" + std::string(example.file_name);
    std::ofstream file(path, std::ios::binary);
    file << tavlo::WriteHubProg(example.program, 0);
    if (!file.flush()) {
      std::cerr << "cannot write " << path << "\n";
      return 4;
    }
  }
  return 0;
}
