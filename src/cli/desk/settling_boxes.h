// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <optional>
#include <utility>

#include "cli/desk/console_services.h"

namespace tavlo::cli {

/// The boxes of a command that asks the hub who it is. When nobody answers, there may be a remedy to try
/// before the operator is told.
class SettlingBoxes : public ConsoleBoxes {
 public:
  using ConsoleBoxes::ConsoleBoxes;

  /// The next box is kept back if it tells of a hub that does not answer.
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
