// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/prompt_pool.h"

#include <algorithm>

#include "model/wire.h"

namespace tavlo {
namespace {

constexpr std::size_t kPool = kPoolBytes;
constexpr std::size_t kRedAbove = 1456;
constexpr std::size_t kYellowAbovePercent = 90;
constexpr std::size_t kWhole = 100;

}  // namespace

void ShowPoolSize(Gauge& gauge, std::size_t bytes) {
  gauge.percent = static_cast<int>(std::min(kWhole * bytes / kPool, kWhole));
  gauge.level = bytes > kRedAbove                              ? Gauge::Level::Red
                : kWhole * bytes > kYellowAbovePercent * kPool ? Gauge::Level::Yellow
                                                               : Gauge::Level::Green;
}

}  // namespace tavlo
