// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string>

#include "codegen/compile.h"
#include "input.h"
#include "session/rows.h"
#include "text/short_desc.h"

namespace tavlo::fuzzing {

inline constexpr std::size_t kRecordBytes = 33;

/// A memory of the hub: either the input as it stands, or, which mutates better, records of a slot's number
/// and its 32 bytes over an empty memory. Slots 200 to 255 are the settings and the pool.
inline std::string MakeImage(Input& input) {
  if (input.Byte() % 2 == 0) return input.Take(kImageBytes);
  std::string image(kImageBytes, '\0');
  for (std::size_t line = 0; line < kLines; ++line) image[line * kSlotBytes] = 11;
  while (!input.Empty()) {
    const std::string record = input.Take(kRecordBytes);
    const std::size_t at = static_cast<unsigned char>(record[0]) * std::size_t{kSlotBytes};
    image.replace(at, record.size() - 1, record, 1);
  }
  return image;
}
static_assert(256 * kSlotBytes == kImageBytes);

/// Everything that is made of a program once it has been read.
inline void UseProgram(Program program) {
  for (int line = 0; line < kLines; ++line) static_cast<void>(ShortDesc(program, line));
  static_cast<void>(ArrowsOf(program));
  static_cast<void>(LabelColoursOf(program));
  static_cast<void>(ChainFramesOf(program));
  try {
    Require(ImageOf(CompileProgram(program)).size() == kImageBytes, "an image has its size");
  } catch (const EncodeError&) {
    // Not every program that can be read can be sent.
  }
}

}  // namespace tavlo::fuzzing
