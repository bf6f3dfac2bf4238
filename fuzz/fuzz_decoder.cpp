// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
// A hub's memory of any bytes: read, shown, compiled again, read again.
#include "codegen/decode.h"
#include "image.h"
#include "model/program_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tavlo;
  fuzzing::Input input(data, size);
  Program program;
  InitHardware(program.Axis);
  InitProg(program);
  program.HubVersion = static_cast<float>(input.Byte() / 100.0 + 1);
  program.HubIndex = input.Byte() % 2 == 0 ? HubOcto : HubQuad;
  const std::string image = fuzzing::MakeImage(input);
  try {
    DecodeImage(program, image);
  } catch (const DecodeError&) {
    return 0;
  }
  fuzzing::UseProgram(program);
  static_cast<void>(WriteHubProg(program, 0));
  try {
    Program again = program;
    DecodeImage(again, ImageOf(CompileProgram(program)));
    fuzzing::UseProgram(again);
  } catch (const EncodeError&) {
  } catch (const DecodeError&) {
  }
  return 0;
}
