// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QDialog>
#include <array>
#include <memory>

#include "qt/gui/key_guard.h"
#include "session/views.h"

class QLabel;

namespace tavlo {

/// `ServoFault`: shows what a drive's fault code means, with one indicator a bit.
class ServoFaultForm : public QDialog {
  Q_OBJECT

 public:
  explicit ServoFaultForm(QWidget* parent);
  void Show(const ServoFaultPanel& panel);

 private:
  class RedSquare;

  QLabel* message_;
  std::array<RedSquare*, 14> squares_{};
  std::array<QLabel*, 14> labels_{};
  /// The window comes up by itself, so it needs a guard.
  std::unique_ptr<KeyGuard> guard_;
};

}  // namespace tavlo
