// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <algorithm>
#include <string>

#include "input.h"
#include "link/receive.h"
#include "support/fake_desk.h"

namespace tavlo::fuzzing {

/// A desk whose boxes are answered from the input, with more bytes from the line while they stand.
struct WatchedDesk : testing::FakeDesk {
  explicit WatchedDesk(Input& bytes) : input(bytes) {
    port.OnComm = [this] { NewOnComm(desk); };
    boxes.on_box = [this](const testing::ShownBox& box) { AnswerBox(box.buttons); };
  }

  void AnswerBox(Buttons buttons) {
    constexpr int kDeepest = 8;
    const int choice = input.Byte();
    if (choice % 4 == 3 && depth < kDeepest) {
      ++depth;
      port.Receive(input.Take(static_cast<std::size_t>(choice / 4)));
      --depth;
    }
    boxes.answers.clear();
    if (buttons == Buttons::YesNo) boxes.answers.push_back(choice % 2 == 0 ? Answer::No : Answer::Yes);
  }

  void RequireInRange() {
    const auto line = [](int value) { return value >= 0 && value < kLines; };
    Require(std::ranges::all_of(view.rows, line), "painted rows exist");
    Require(std::ranges::all_of(view.scrolls, line), "rows brought into view exist");
    for (const auto& counter : view.counters) Require(!counter || line(*counter), "the marker's row exists");
    for (const int axis : run.statuses) Require(axis >= 0 && axis < kAxes, "painted axes exist");
    Require(source.display.CurRow >= 0 && source.display.CurRow < 4, "the cursor stands on the display");
    Require(source.link.MsgBuf.size() < 4, "no whole message is left lying");
    ForgetShown();
  }

  Input& input;
  int depth = 0;
};

}  // namespace tavlo::fuzzing
