// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "session/source.h"

#include <algorithm>

#include "model/program_file.h"
#include "platform/number_format.h"
#include "platform/services.h"

namespace tavlo {

void InitSession(Source& source) {
  source = Source();
  Row empty;
  empty.icon = IconFor(NO, IconSet::Normal);
  source.shown.rows.fill(empty);
  InitHardware(source.program.Axis);
  InitProg(source.program);
}

TextMark MarkOf(std::string_view text) {
  constexpr std::uint64_t kStart = 14695981039346656037U;
  constexpr std::uint64_t kFactor = 1099511628211U;
  TextMark mark = {.bytes = text.size(), .sum = kStart};
  for (const char c : text) mark.sum = (mark.sum ^ static_cast<unsigned char>(c)) * kFactor;
  return mark;
}

std::int16_t LimitLineOf(const Program& program) {
  return static_cast<std::int16_t>(std::clamp(RoundHalfEven(program.LimitBranch), -32768.0, 32767.0));
}

std::string_view BaseName(std::string_view path) {
  return path.substr(path.rfind('/') + 1);
}

std::string Caption(const Source& source) {
  return std::string(kApplicationTitle) + "  V" + VersionTextOf(kVersion) + " - " + source.file_name;
}

}  // namespace tavlo
