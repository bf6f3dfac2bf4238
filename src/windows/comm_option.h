// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QRadioButton>

#include "platform/comm_devices.h"

namespace tavlo {

/// `OptCom`: the choice of one Comm. A press through the accessibility interface is a click, where a click
/// could reach it.
class CommOption : public QRadioButton {
  Q_OBJECT

 public:
  /// `index` is 0 to 7.
  CommOption(int index, QWidget* parent);
  /// Tells whether a device is there, and which.
  void Show(const CommDevice& device);
  /// Clicks soon, unless it is disabled or a box stands before its window.
  void Press();

 private:
  int number_;
};

}  // namespace tavlo
