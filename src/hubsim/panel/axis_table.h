// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <QWidget>
#include <array>

#include "hubsim/hub.h"

class QGridLayout;
class QLabel;

namespace tavlo::hubsim {

class Dial;
class LampRow;

/// A row for each axis: drive, shaft, motion, inputs and outputs, and what can befall it. A Hub Quad has
/// four, and a row for its own inputs and outputs, which the hub counts as axis 5.
class AxisTable : public QWidget {
  Q_OBJECT

 public:
  AxisTable(HubModel model, QWidget* parent);
  void Show(const Hub& hub);

 signals:
  // Axes and inputs are 0-based, as `Hub` counts them.
  void InputClicked(int axis, int input, bool high);
  void LimitClicked(int axis);
  void FaultClicked(int axis);

 private:
  struct Row {
    QLabel* drive = nullptr;
    Dial* dial = nullptr;
    QLabel* position = nullptr;
    QLabel* speed = nullptr;
    QLabel* motor = nullptr;
    LampRow* inputs = nullptr;
    LampRow* outputs = nullptr;
  };

  void AddCaptions();
  void AddAxis(int axis);
  void AddHubBlock();
  QWidget* MakeButton(const QString& text, const char* name, int axis, void (AxisTable::*clicked)(int));
  static void ShowAxis(const Row& row, const AxisView& view, int model);

  QGridLayout* grid_;
  int axes_;
  std::array<Row, kAxisCount> rows_{};
};

}  // namespace tavlo::hubsim
