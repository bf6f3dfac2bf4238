// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/wire/line_pacer.h"

#include <algorithm>
#include <utility>

namespace tavlo::hubsim {
namespace {

/// 19200 baud, a start and a stop bit to each byte.
constexpr double kSecondsPerByte = 1.0 / 1920;

}  // namespace

void LinePacer::Send(std::string_view bytes, double at) {
  if (bytes.empty()) return;
  if (!paced_) {
    under_way_.push_back({at + latency_, std::string(bytes)});
    return;
  }
  for (const char byte : bytes) {
    line_free_at_ = std::max(at, line_free_at_) + kSecondsPerByte;
    under_way_.push_back({line_free_at_ + latency_, std::string(1, byte)});
  }
}

std::optional<double> LinePacer::NextArrival() const {
  if (under_way_.empty()) return std::nullopt;
  return under_way_.front().at;
}

std::optional<Arrival> LinePacer::Take(double now) {
  if (under_way_.empty() || under_way_.front().at > now) return std::nullopt;
  Arrival arrival = std::move(under_way_.front());
  under_way_.pop_front();
  return arrival;
}

}  // namespace tavlo::hubsim
