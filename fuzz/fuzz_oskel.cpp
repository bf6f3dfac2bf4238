// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
// A program file of the earlier programmer, of any version, with anything in it.
#include "whole_files.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tavlo;
  static const std::vector<testing::ItemsOfFile> wholes = fuzzing::WholeOldFiles();
  fuzzing::Input input(data, size);
  fuzzing::LoadAndUse(fuzzing::MakeFile(input, wholes), FileKind::OskelProg);
  return 0;
}
