// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/desk/hub_program.h"

#include <string>

#include "link/polled.h"

namespace tavlo::cli {
namespace {

/// A hub that knows its sum answers within a few milliseconds, also through a slow adapter.
constexpr double kSumLimit = 0.3;

}  // namespace

std::optional<int> AskLastSum(Desk& desk) {
  const EventsOff events(desk.Comm1);
  std::string sum;
  const double start = SendCommand(desk.link(), "K");
  const bool answered = AwaitUntil(desk.link(), start, kSumLimit, [&] {
    sum += desk.Comm1.Input();
    return sum.size() >= 2;
  });
  if (!answered || sum.size() != 2) return std::nullopt;
  return static_cast<unsigned char>(sum[0]) * 256 + static_cast<unsigned char>(sum[1]);
}

ImageReading ReadIdleHub(Desk& desk) {
  const EventsOff events(desk.Comm1);
  ImageReading reading = ReadImage(desk.link(), desk.uploading());
  desk.upbox.Hide();
  return reading;
}

}  // namespace tavlo::cli
