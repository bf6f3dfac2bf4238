// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "widgets/ringed_button.h"

namespace tavlo {

/// `StopButton` of the main window. Stands beside its commands, not among them: it can be pressed while they
/// are held. It is lit while anything may be moving.
class StopButton : public RingedButton {
  Q_OBJECT

 public:
  explicit StopButton(QWidget* parent);
  /// `possible`: a stop can be sent. `moving`: the hub may be running its program.
  void Show(bool possible, bool moving);

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void Draw();

  bool lit_ = false;
};

}  // namespace tavlo
