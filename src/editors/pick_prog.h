// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QDialog>
#include <functional>

#include "session/views.h"

namespace tavlo {

/// The picker: a button for each kind of line, and those that insert and delete a line.
class PickProg : public QDialog {
  Q_OBJECT

 public:
  explicit PickProg(QWidget* parent);

  /// Each press goes to `act`, which returns whether the picker may close. Modal.
  void Run(const std::function<bool(const Picked&)>& act);

 private:
  void Press(const Picked& picked);

  std::function<bool(const Picked&)> act_;
};

}  // namespace tavlo
