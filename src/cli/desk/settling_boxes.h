// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <optional>
#include <utility>

#include "cli/desk/console_services.h"

namespace tavlo::cli {

/// The boxes of a command that asks the hub for its identity. If there is no answer, something may help that
/// is tried before the operator is told.
class SettlingBoxes : public ConsoleBoxes {
 public:
  using ConsoleBoxes::ConsoleBoxes;

  /// Holds the next box back if it reports a hub that does not answer.
  void WithholdSilence() {
    withholds_ = true;
    withheld_.reset();
  }
  [[nodiscard]] bool SilenceWithheld() {
    withholds_ = false;
    return withheld_.has_value();
  }
  void ShowWithheld() {
    const auto box = std::exchange(withheld_, std::nullopt);
    if (box) ConsoleBoxes::Show(*box);
  }

 protected:
  Answer Show(const Box& box) override {
    if (!std::exchange(withholds_, false) || box.tells != Tells::HubSilent) return ConsoleBoxes::Show(box);
    withheld_ = box;
    return HarmlessAnswer(box.buttons);
  }

 private:
  bool withholds_ = false;
  std::optional<Box> withheld_;
};

}  // namespace tavlo::cli
