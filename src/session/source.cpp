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
