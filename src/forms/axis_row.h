// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "forms/entries.h"
#include "forms/short_text.h"
#include "model/axis_config.h"
#include "model/drive_scan.h"
#include "model/wire.h"

namespace tavlo {

/// Currents, in amperes, that are set in panels of their own.
struct PanelCurrents {
  float continuous = 0;
  float peak = 0;
  float run = 0;
  float accel = 0;
  float idle = 0;
};

/// The row of an axis in the hardware settings.
class AxisRow {
 public:
  struct Rules {
    std::function<void()> model_chosen;
    std::function<void()> currents_clicked;
  };
  void AddTo(ControlTable& controls, int axis, Rules rules);
  void Fill(const Program& program, int axis);
  void CleanUp();
  /// Which controls are seen, for an axis that the hub has or has not, with a setting of its own or one that
  /// it shares.
  void Show(bool exists, bool own_limits, bool own_unit, bool scanned);

  /// The model that is chosen in the list: its code. One of a damaged file may be anything.
  [[nodiscard]] int Model() const { return model_.index >= 0 ? model_.index : stored_model_; }
  void ChooseModel(int code) { model_.index = code; }
  /// Follows the choice of a model: the currents are lowered to its limits.
  void TakeModel();
  /// `DispZENUCurrent`: the currents of the panel, for the families that it is told for.
  void DispZENUCurrent();
  PanelCurrents currents;
  void Light(bool lit) { panel_currents_.lit = lit; }

  /// What it shows, or would show if it were not hidden: the same text as long as nobody changes anything.
  [[nodiscard]] std::string Setting() const;
  /// Writes all but what axes may share. `keep_resolution` leaves the steps per revolution as they were.
  void Write(AxisConfig& axes, int axis, bool keep_resolution) const;
  [[nodiscard]] std::int16_t LimitKind() const { return static_cast<std::int16_t>(limits_.index); }
  [[nodiscard]] const std::string& UnitName() const { return unit_name_.Text(); }
  [[nodiscard]] std::int32_t StepsPerUnit() const { return steps_per_unit_.Count(); }

  /// `ScanDriveMV`: shows what a scan found.
  void ScanDriveMV(const FoundDrive& found);

 private:
  void FillLists();
  void ShowPeakCurrents();
  [[nodiscard]] std::int16_t StepResCode() const;

  int stored_model_ = 0;
  Label axis_;
  Label found_;
  ListBox model_;
  ShortText name_{kAxisNameBytes};
  ListBox steps_;
  ListBox steps100_;
  CountField free_steps_{1, kMostStepsPerRev};
  CurrentField current_;
  Button panel_currents_;
  ListBox limits_;
  ShortText unit_name_{kUnitNameBytes};
  CountField steps_per_unit_{1, kMaxSteps};
};

}  // namespace tavlo
