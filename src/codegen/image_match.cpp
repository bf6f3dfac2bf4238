// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "codegen/image_match.h"

namespace tavlo {
namespace {

/// Whatever is longer than its place is cut.
bool BeginsWith(std::string_view place, std::string_view bytes) {
  return place.starts_with(bytes.substr(0, place.size()));
}

}  // namespace

bool SlotHolds(std::string_view image, int line, std::string_view bytes) {
  return BeginsWith(image.substr(static_cast<std::size_t>(line) * kSlotBytes, kSlotBytes), bytes);
}

bool PoolHolds(std::string_view image, std::string_view pool) {
  return BeginsWith(image.substr(kPoolAt, kPoolBytes), pool);
}

bool ImageHolds(std::string_view image, const CompiledProgram& compiled) {
  for (int line = 0; line < kLines; ++line) {
    if (!SlotHolds(image, line, compiled.lines[line])) return false;
  }
  return BeginsWith(image.substr(kSystemAt, kSystemBytes), compiled.system) &&
         PoolHolds(image, compiled.pool);
}

}  // namespace tavlo
