// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/run/run_log_file.h"

#include "cli/desk/output_files.h"
#include "session/run_rows.h"

namespace tavlo::cli {

RunLogFile::RunLogFile(Console& console, Clock& clock, std::string path, bool program_known)
    : console_(console), path_(std::move(path)), log_(clock) {
  log_.program_known = program_known;
}

bool RunLogFile::Begin(Desk& desk) {
  if (path_.empty()) return true;
  desk.log = &log_;
  return WriteOutput(console_, path_, CsvHeader());
}

bool RunLogFile::Write() {
  if (path_.empty() || log_.Run() == 0) return true;
  log_.Close();
  return WriteOutput(console_, path_, CsvOf(log_));
}

}  // namespace tavlo::cli
