// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <fstream>
#include <iostream>

#include "model/program_file.h"
#include "programs.h"

namespace {

/// False after a message if that fails.
bool Write(const std::string& folder, std::string_view name, const std::string& text) {
  const std::string path = folder + "/" + std::string(name);
  std::ofstream file(path, std::ios::binary);
  file << text;
  if (file.flush()) return true;
  std::cerr << "cannot write " << path << "\n";
  return false;
}

}  // namespace

/// Writes the example programs into the folder that it is given.
int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: make-examples FOLDER\n";
    return 2;
  }
  bool written = Write(argv[1], tavlo::examples::kOldExample, tavlo::examples::OldExampleFile());
  for (const auto& example : tavlo::examples::ExamplePrograms()) {
    written = written && Write(argv[1], example.file_name, tavlo::WriteHubProg(example.program, 0));
  }
  return written ? 0 : 4;
}
