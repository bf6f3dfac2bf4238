// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QRadioButton>

#include "platform/comm_devices.h"

namespace tavlo {

/// `OptCom`: the button that chooses one Comm. Pressing it through the accessibility interface is a click, if
/// a click could reach it.
class CommOption : public QRadioButton {
  Q_OBJECT

 public:
  /// `index` is 0 to 7.
  CommOption(int index, QWidget* parent);
  /// Shows whether a device is there, and which.
  void Show(const CommDevice& device);
  /// Clicks soon, unless the button is disabled or a box is in front of its window.
  void Press();

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void Tint();

  int number_;
  bool there_ = true;
  bool tinting_ = false;
};

}  // namespace tavlo
