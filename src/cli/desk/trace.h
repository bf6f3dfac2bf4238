// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "cli/console/environment.h"
#include "platform/stopwatch.h"

namespace tavlo::cli {

/// Returns rows of at most 16 bytes: seconds, "->" to the hub or "<-" from it, hex, and the bytes as text.
[[nodiscard]] std::string TraceRows(double seconds, bool out, std::string_view bytes);

/// For as long as it lives, prints what passes over the line.
class Trace {
 public:
  Trace(HubLine& line, std::ostream& err);
  ~Trace();
  Trace(const Trace&) = delete;
  Trace& operator=(const Trace&) = delete;

 private:
  HubLine& line_;
  std::ostream& err_;
  Stopwatch watch_;
};

}  // namespace tavlo::cli
