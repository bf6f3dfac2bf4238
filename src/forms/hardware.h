// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string>

#include "forms/axis_row.h"
#include "forms/current_slider.h"
#include "motion/units.h"

namespace tavlo {

/// `Hardware`: drive, name, resolution, currents, limit switches and unit of each axis. At OK the lines of
/// the program are rescaled, so that the numbers that the operator sees in user units stay the same.
class Hardware : public ControlForm {
 public:
  /// Asks the hub which drives are plugged in; tells the operator if it does not answer.
  using Scan = std::function<DriveScan()>;

  /// What comes up while the dialog stands is told through `boxes`.
  explicit Hardware(MessageBoxes& boxes);

  /// The dialog comes up for a program, which must outlive its stay, as must what `scan` works with.
  void Load(Program& program, Scan scan);
  /// Keeps nothing.
  void Cancel() override {}
  /// Whether a panel of currents is open.
  [[nodiscard]] bool PanelIsOpen() const { return open_.has_value(); }
  /// Closes it without its values.
  void CancelPanel();

 protected:
  void CleanUp() override;
  void ShowHide() override;
  [[nodiscard]] bool Accept(MessageBoxes& boxes) override;

 private:
  void AddPanels();
  void ChooseModel(int axis);
  void OpenPanel(int axis);
  void TakePanel();
  void ClosePanel();
  [[nodiscard]] bool AxisOneHasDrive();
  void ScanDrivesMN();
  void Copy2List();
  /// The program with the settings of the dialog, its lines rescaled.
  [[nodiscard]] Program Changed() const;
  void WriteShared(AxisConfig& axes) const;

  MessageBoxes& boxes_;
  Scan scan_;
  Program* program_ = nullptr;
  /// Those of the hub when the dialog came up. A hub that is switched on meanwhile may be another one.
  int axes_ = 0;
  std::array<AxisRow, kAxes> rows_;
  /// What each row showed then.
  std::array<std::string, kAxes> settings_;
  /// The model of axis 1, which always has a drive.
  int model_of_axis_one_ = 0;
  OptionGroup<2> units_;
  OptionGroup<2> limits_;

  Frame servo_panel_;
  Frame motor_panel_;
  /// The axis whose panel is open.
  std::optional<int> open_;
  CurrentSlider cont_;
  CurrentSlider peak_;
  CurrentSlider run_;
  CurrentSlider accel_;
  CurrentSlider idle_;

  Frame scan_panel_;
  Label found_heading_{{}, "Found"};
  Label hub_version_;
  std::optional<DriveScan> found_;
  std::array<Button, 7> buttons_;
};

}  // namespace tavlo
