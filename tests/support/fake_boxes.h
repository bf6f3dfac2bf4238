// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <deque>
#include <functional>
#include <vector>

#include "platform/services.h"

namespace tavlo::testing {

using ShownBox = Box;

/// Records every box and answers by what was set beforehand; without that the first button.
class FakeBoxes : public MessageBoxes {
 public:
  void setNextAnswer(Answer answer) { answers.push_back(answer); }

  /// As the operator sees them.
  std::vector<ShownBox> shown;
  /// What each of them tells a program.
  std::vector<Tells> told;
  std::deque<Answer> answers;
  std::function<void(const ShownBox&)> on_box;

 protected:
  Answer Show(const Box& box) override {
    told.push_back(box.tells);
    shown.push_back(box);
    shown.back().tells = Tells::Other;
    shown.back().line.reset();
    if (on_box) on_box(box);
    if (!answers.empty()) {
      const Answer answer = answers.front();
      answers.pop_front();
      return answer;
    }
    if (box.buttons == Buttons::RestoreDiscard) return Answer::Restore;
    return box.buttons == Buttons::YesNo ? Answer::Yes : Answer::OK;
  }
};

}  // namespace tavlo::testing
