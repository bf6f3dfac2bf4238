// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QTimer>
#include <functional>
#include <utility>

namespace tavlo::testing {

/// Does something once, from the event loop, as soon as a condition holds: what a modal window does not let
/// its caller do.
class Whenever {
 public:
  Whenever(std::function<bool()> condition, std::function<void()> act)
      : condition_(std::move(condition)), act_(std::move(act)) {
    QObject::connect(&look_, &QTimer::timeout, [this] {
      if (!condition_()) return;
      look_.stop();
      act_();
    });
    look_.start(kEvery);
  }

 private:
  static constexpr int kEvery = 5;  ///< milliseconds

  std::function<bool()> condition_;
  std::function<void()> act_;
  QTimer look_;
};

}  // namespace tavlo::testing
