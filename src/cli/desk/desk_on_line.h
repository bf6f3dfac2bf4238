// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <memory>
#include <optional>

#include "cli/console/options.h"
#include "cli/desk/console_desk.h"
#include "cli/desk/trace.h"

namespace tavlo::cli {

/// An open line and a desk that works with it, for a command that shows neither rows nor a run.
class DeskOnLine {
 public:
  /// Returns null after a message if the port cannot be opened. The environment, the console and the source
  /// must outlive the result.
  [[nodiscard]] static std::unique_ptr<DeskOnLine> Open(Environment& environment, Console& console,
                                                        const LineOptions& options, Source& source,
                                                        AnswerBy by);
  /// The same with a new session of its own, for a command that reads no program. Every question is answered
  /// No.
  [[nodiscard]] static std::unique_ptr<DeskOnLine> OpenNew(Environment& environment, Console& console,
                                                           const LineOptions& options);
  DeskOnLine(const DeskOnLine&) = delete;
  DeskOnLine& operator=(const DeskOnLine&) = delete;

 private:
  DeskOnLine(std::unique_ptr<HubLine> opened, Console& console, Source& source, AnswerBy by)
      : owned_(std::move(opened)),
        line(*owned_),
        own(source, console, line, by, view_, run_),
        desk(own.desk) {}

  std::unique_ptr<Source> source_;
  std::unique_ptr<HubLine> owned_;
  std::optional<Trace> trace_;
  NoProgramView view_;
  NoRunView run_;

 public:
  HubLine& line;
  /// Its boxes and its progress.
  ConsoleDesk own;
  Desk& desk;
};

}  // namespace tavlo::cli
