// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/wire/outbox.h"

#include <algorithm>
#include <utility>

namespace tavlo::hubsim {

void Outbox::Put(std::string_view bytes) {
  if (stalled_until_) {
    stalled_.emplace_back(bytes);
  } else {
    LetOut(bytes);
  }
}

void Outbox::LetOut(std::string_view bytes) {
  if (room_) {
    bytes = bytes.substr(0, static_cast<std::size_t>(std::clamp<std::int64_t>(
                                *room_, 0, static_cast<std::int64_t>(bytes.size()))));
    *room_ -= static_cast<std::int64_t>(bytes.size());
  }
  ready_ += bytes;
}

void Outbox::PutAt(std::string bytes, double when) {
  late_.push_back({when, std::move(bytes)});
}

std::optional<double> Outbox::NextEvent() const {
  if (late_.empty()) return stalled_until_;
  const double late = std::ranges::min_element(late_, {}, &Late::when)->when;
  return stalled_until_ ? std::min(late, *stalled_until_) : late;
}

void Outbox::Advance(double now) {
  now_ = now;
  if (stalled_until_ && *stalled_until_ <= now) {
    stalled_until_.reset();
    for (const std::string& bytes : std::exchange(stalled_, {})) LetOut(bytes);
  }
  for (const Late& late : late_) {
    if (late.when <= now) Put(late.bytes);
  }
  std::erase_if(late_, [now](const Late& late) { return late.when <= now; });
}

std::string Outbox::Take() {
  return std::exchange(ready_, {});
}

void Outbox::Clear() {
  ready_.clear();
  late_.clear();
  stalled_until_.reset();
  stalled_.clear();
}

}  // namespace tavlo::hubsim
