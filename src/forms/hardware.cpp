// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/hardware.h"

#include <utility>

#include "platform/number_format.h"

namespace tavlo {
namespace {

enum Sharing { Same, Different };

}  // namespace

Hardware::Hardware(MessageBoxes& boxes) : ControlForm("ModelList(0)"), boxes_(boxes) {
  for (int axis = 0; axis < kAxes; ++axis) {
    rows_[axis].AddTo(controls_, axis,
                      {.model_chosen = [this, axis] { ChooseModel(axis); },
                       .currents_clicked = [this, axis] { OpenPanel(axis); }});
  }
  controls_.Add("LblFound", &found_heading_);
  limits_.AddTo(controls_, {"SameLimits", "DiffLimits"});
  units_.AddTo(controls_, {"SameUnits", "DiffUnits"});
  AddPanels();
}

void Hardware::AddPanels() {
  auto* button = buttons_.begin();
  const auto add = [&](std::string_view name, std::function<void()> rule) {
    controls_.Add(std::string(name), button++, std::move(rule));
  };
  add("Scan", [this] { ScanDrivesMN(); });
  controls_.Add("ScanPanel", &scan_panel_);
  controls_.Add("LblHubVersion", &hub_version_);
  add("Copy2List", [this] { Copy2List(); });
  add("OKscan", [this] {
    found_.reset();
    SendCaretTo("Scan");
  });
  controls_.Add("CurrentPanel", &servo_panel_);
  cont_.AddTo(controls_, "SliderAcont", "Acont");
  peak_.AddTo(controls_, "SliderApeak", "Apeak");
  add("OKcrnt", [this] { TakePanel(); });
  add("CancelCrnt", [this] { ClosePanel(); });
  controls_.Add("STMCurrentPanel", &motor_panel_);
  run_.AddTo(controls_, "SliderRun", "TxtRun");
  accel_.AddTo(controls_, "SliderAccel", "TxtAccel");
  idle_.AddTo(controls_, "SliderIdle", "TxtIdle");
  add("OKSTM", [this] { TakePanel(); });
  add("CancelSTM", [this] { ClosePanel(); });
}

void Hardware::Load(Program& program, Scan scan) {
  program_ = &program;
  scan_ = std::move(scan);
  axes_ = HubAxes(program);
  open_.reset();
  found_.reset();
  for (int axis = 0; axis < kAxes; ++axis) {
    rows_[axis].Fill(program, axis);
    settings_[axis] = rows_[axis].Setting();
  }
  model_of_axis_one_ = rows_[0].Model();
  units_.Fill(program.Axis.SameUnits ? Same : Different);
  limits_.Fill(program.Axis.SameLimits ? Same : Different);
  Begin();
}

void Hardware::ChooseModel(int axis) {
  if (open_ == axis) ClosePanel();
  if (axis == 0 && !AxisOneHasDrive()) return;
  rows_[axis].TakeModel();
}

bool Hardware::AxisOneHasDrive() {
  if (rows_[0].Model() != 0) {
    model_of_axis_one_ = rows_[0].Model();
    return true;
  }
  boxes_.MsgBox(
      {.text = "You can't set Axis 1 for \"none\" because the Axis 1 drive supplies power to the hub.",
       .title = "Drive Model"});
  // A damaged file may have had none before either.
  rows_[0].ChooseModel(model_of_axis_one_ != 0 ? model_of_axis_one_ : 1);
  SendCaretTo("ModelList(0)");
  return false;
}

void Hardware::OpenPanel(int axis) {
  if (open_) return;
  open_ = axis;
  const PanelCurrents& currents = rows_[axis].currents;
  const int model = rows_[axis].Model();
  if (MirelModel(model)) {
    for (const auto& [slider, amperes] : {std::pair{&run_, currents.run}, std::pair{&accel_, currents.accel},
                                          std::pair{&idle_, currents.idle}}) {
      slider->Fill(amperes, MaxCurrent(model));
    }
    SendCaretTo("TxtRun");
  } else {
    const ServoCurrentLimits limits = MaxServoCurrent(model);
    cont_.Fill(currents.continuous, limits.continuous);
    peak_.Fill(currents.peak, limits.peak);
    SendCaretTo("Acont");
  }
  rows_[axis].Light(true);
}

void Hardware::TakePanel() {
  if (!open_) return;
  AxisRow& row = rows_[*open_];
  for (CurrentSlider* slider : {&cont_, &peak_, &run_, &accel_, &idle_}) slider->CleanUp();
  if (MirelModel(row.Model())) {
    row.currents.run = run_.Amperes();
    row.currents.accel = accel_.Amperes();
    row.currents.idle = idle_.Amperes();
  } else {
    row.currents.continuous = cont_.Amperes();
    row.currents.peak = peak_.Amperes();
  }
  row.DispZENUCurrent();
  ClosePanel();
}

void Hardware::ClosePanel() {
  if (!open_) return;
  rows_[*open_].Light(false);
  SendCaretTo(Element("lblCurrent", *open_));
  open_.reset();
}

void Hardware::CancelPanel() {
  ClosePanel();
  ShowAnew();
}

void Hardware::ScanDrivesMN() {
  hub_version_.caption = Format(program_->HubVersion, "0.00");
  found_ = scan_();
  for (int axis = 0; axis < axes_; ++axis) rows_[axis].ScanDriveMV((*found_)[axis]);
  SendCaretTo("Copy2List");
}

void Hardware::Copy2List() {
  if (!found_) return;
  for (int axis = 0; axis < axes_; ++axis) {
    const std::optional<int> model = (*found_)[axis].model;
    if (!model || (axis == 0 && *model == 0)) continue;
    rows_[axis].ChooseModel(*model);
    ChooseModel(axis);
  }
}

void Hardware::CleanUp() {
  for (AxisRow& row : rows_) row.CleanUp();
  for (CurrentSlider* slider : {&cont_, &peak_, &run_, &accel_, &idle_}) slider->CleanUp();
}

void Hardware::ShowHide() {
  const bool motor = open_ && MirelModel(rows_[*open_].Model());
  servo_panel_.visible = open_ && !motor;
  motor_panel_.visible = motor;
  scan_panel_.visible = found_heading_.visible = found_.has_value();
  for (int axis = 0; axis < kAxes; ++axis) {
    rows_[axis].Show(axis < axes_, axis == 0 || limits_.Chosen() == Different,
                     axis == 0 || units_.Chosen() == Different, found_.has_value());
  }
}

bool Hardware::Accept(MessageBoxes& boxes) {
  if (!AxisOneHasDrive()) return false;
  Program changed = Changed();
  if (const int lines = LinesRescaled(*program_, changed); lines > 0) {
    const std::string text = "These settings change " + Joined(lines) +
                             (lines == 1 ? " program line" : " program lines") +
                             ": distances, speeds and accelerations are rescaled, so that they keep their "
                             "numbers in user units, and "
                             "held to the limits of the drives.";
    const Answer answer = boxes.MsgBox(
        {.text = text, .title = "Configure Drives", .buttons = Buttons::OKCancel, .icon = Icon::Exclamation});
    if (answer != Answer::OK) return false;
  }
  // No more than that: a hub may have announced itself while the box stood.
  program_->Axis = std::move(changed.Axis);
  program_->Prog = std::move(changed.Prog);
  return true;
}

Program Hardware::Changed() const {
  Program changed = *program_;
  const OldUnits old = UnitsOf(changed);
  AxisConfig& axes = changed.Axis;
  axes.SameUnits = units_.Chosen() == Same;
  axes.SameLimits = limits_.Chosen() == Same;
  axes.SameSpare = false;
  for (int axis = 0; axis < axes_; ++axis) {
    rows_[axis].Write(axes, axis, rows_[axis].Setting() == settings_[axis]);
  }
  WriteShared(axes);
  ScaleDist(changed, old);
  ScaleSpeed(changed, old);
  ScaleAccel(changed, old);
  return changed;
}

void Hardware::WriteShared(AxisConfig& axes) const {
  for (int axis = 0; axis < axes_; ++axis) {
    const AxisRow& limits_of = rows_[axes.SameLimits ? 0 : axis];
    const AxisRow& unit_of = rows_[axes.SameUnits ? 0 : axis];
    axes.LimitKind[axis] = limits_of.LimitKind();
    axes.UnitName[axis] = unit_of.UnitName();
    axes.StepsPerUnit[axis] = unit_of.StepsPerUnit();
  }
}

}  // namespace tavlo
