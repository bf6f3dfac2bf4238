// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "session/happened.h"

#include <utility>

#include "platform/number_format.h"

namespace tavlo {
namespace {

constexpr int kSecondsOfDay = 86400;
constexpr int kHour = 3600;
constexpr int kMinute = 60;

std::string TwoDigits(int number) {
  return Format(number, "00");
}

}  // namespace

void Happened(Desk& desk, std::string text) {
  std::vector<Happening>& happened = desk.source.happened;
  happened.insert(happened.begin(), {.at = desk.clock.Timer(), .text = std::move(text)});
  if (happened.size() > kHappenings) happened.pop_back();
  desk.view.SomethingHappened();
}

std::string TimeText(double seconds) {
  const int whole = static_cast<int>(seconds) % kSecondsOfDay;
  return TwoDigits(whole / kHour) + ":" + TwoDigits(whole % kHour / kMinute);
}

std::string TimeTextWithSeconds(double seconds) {
  return TimeText(seconds) + ":" + TwoDigits(static_cast<int>(seconds) % kMinute);
}

std::string BytesText(int bytes) {
  return Format(bytes, "#,##0") + (bytes == 1 ? " byte" : " bytes");
}

std::string PaceText(int bytes, double from, double to) {
  const double took = to < from ? to + kSecondsOfDay - from : to - from;
  return BytesText(bytes) + " in " + Format(took, "0.0") + " s";
}

}  // namespace tavlo
