// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <QDialog>
#include <array>
#include <string_view>

class QCheckBox;
class QLabel;

namespace tavlo::hubsim {

/// What each bit of a fault code means. Some mean another thing on some families of drives.
inline constexpr std::array<std::string_view, 14> kFaultLabels{
    "Position Limit",
    "CCW Limit",
    "CW Limit",
    "drive overtemp",
    "excess regen",
    "over voltage",
    "under voltage",
    "motor short",
    "bad hall sensor, or open motor winding",
    "bad encoder",
    "comm error",
    "save failed",
    "timing wiz failed, or move while disabled",
    "current foldback, or motor resistance",
};

/// Asks which faults the drive of an axis reports.
class FaultDialog : public QDialog {
  Q_OBJECT

 public:
  /// `axis` is 0-based.
  FaultDialog(int axis, QWidget* parent);
  /// 0..16383, a bit each.
  [[nodiscard]] int Code() const;

 private:
  void ShowCode();

  std::array<QCheckBox*, kFaultLabels.size()> boxes_{};
  QLabel* code_;
};

}  // namespace tavlo::hubsim
