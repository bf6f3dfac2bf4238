// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/desk/progress.h"

#include <algorithm>
#include <cmath>

#include "platform/number_format.h"

namespace tavlo::cli {
namespace {

/// 19200 baud, ten bits a byte.
constexpr double kBytesPerSecond = 1920;
constexpr int kBarWidth = 30;
/// Often enough to look smooth, seldom enough to cost nothing.
constexpr double kRefreshSeconds = 0.1;

}  // namespace

double SecondsLeft(int bytes_done, int bytes_total, double elapsed) {
  const double wire_pace = 1 / kBytesPerSecond;
  const double pace = bytes_done > 0 ? std::max(elapsed / bytes_done, wire_pace) : wire_pace;
  return std::max(bytes_total - bytes_done, 0) * pace;
}

std::string ProgressBar(std::string_view phase, int bytes_done, int bytes_total, double seconds_left) {
  const double share = bytes_total > 0 ? std::clamp(1.0 * bytes_done / bytes_total, 0.0, 1.0) : 0;
  const auto full = static_cast<std::size_t>(share * kBarWidth);
  return "[" + std::string(full, '#') + std::string(kBarWidth - full, '.') + "] " + std::string(phase) +
         ", " + Joined(std::ceil(seconds_left)) + " s left";
}

void ConsoleProgress::Show() {
  started_ = true;
  watch_.Restart();
  last_shown_ = -1;
}

void ConsoleProgress::Phase(std::string_view name, int bytes_done, int bytes_total) {
  bytes_done_ = bytes_done;
  if (!console_.ShowsStatus()) return;
  const double elapsed = watch_.Seconds();
  if (last_shown_ >= 0 && elapsed - last_shown_ < kRefreshSeconds && bytes_done < bytes_total) return;
  last_shown_ = elapsed;
  console_.Status(ProgressBar(name, bytes_done, bytes_total, SecondsLeft(bytes_done, bytes_total, elapsed)));
}

}  // namespace tavlo::cli
