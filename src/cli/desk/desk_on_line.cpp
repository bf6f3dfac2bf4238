// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/desk/desk_on_line.h"

#include <utility>

#include "session/source.h"

namespace tavlo::cli {

std::unique_ptr<DeskOnLine> DeskOnLine::Open(Environment& environment, Console& console,
                                             const LineOptions& options, Source& source, AnswerBy by) {
  auto line = OpenLine(environment, console, options);
  if (!line) return nullptr;
  std::unique_ptr<DeskOnLine> opened(new DeskOnLine(std::move(line), console, source, by));
  if (options.trace) opened->trace_.emplace(opened->line, environment.err);
  return opened;
}

std::unique_ptr<DeskOnLine> DeskOnLine::OpenNew(Environment& environment, Console& console,
                                                const LineOptions& options) {
  auto source = std::make_unique<Source>();
  InitSession(*source);
  auto opened = Open(environment, console, options, *source, AnswerBy::No);
  if (opened) opened->source_ = std::move(source);
  return opened;
}

}  // namespace tavlo::cli
