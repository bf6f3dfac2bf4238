// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/axis_row.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

#include "platform/number_format.h"

namespace tavlo {
namespace {

constexpr int kModels = 51;
/// The resolutions that every stepper has begin with this code.
constexpr int kFirstCommonCode = 3;
/// 20000 steps, where an axis has no resolution of the list.
constexpr int kDefaultSteps = 5;
constexpr int kDefaultSteps100 = 8;

/// Where the steps per revolution of a model are chosen.
enum class StepsFrom { List, List100, Box };

StepsFrom StepsOf(int model) {
  if (model == kOwnStepListModel) return StepsFrom::List100;
  const bool box = ServoModel(model) || ZenuRmsModel(model) || ZenuACModel(model);
  return box ? StepsFrom::Box : StepsFrom::List;
}

/// The models whose currents are set in a panel.
bool HasPanel(int model) {
  return model > 0 && model < kModels && !ShowsTxtCurrent(model);
}

/// The position of a code in a list that begins with `first`; `otherwise` if it is not in there.
int IndexOf(int code, int first, const ListBox& list, int otherwise) {
  const int index = code - first;
  return index >= 0 && index < std::ssize(list.list) ? index : otherwise;
}

}  // namespace

void AxisRow::AddTo(ControlTable& controls, int axis, Rules rules) {
  FillLists();
  controls.Add(Element("LblAxis", axis), &axis_);
  controls.Add(Element("ModelList", axis), &model_, std::move(rules.model_chosen));
  controls.Add(Element("lblDriveModel", axis), &found_);
  name_.AddTo(controls, Element("TxtAxisName", axis));
  controls.Add(Element("SPR", axis), &steps_);
  controls.Add(Element("SPR100", axis), &steps100_);
  free_steps_.AddTo(controls, Element("SPRtext", axis));
  current_.AddTo(controls, Element("TxtCurrent", axis), [this] { return MaxCurrent(Model()); });
  controls.Add(Element("lblCurrent", axis), &panel_currents_, std::move(rules.currents_clicked));
  controls.Add(Element("Limits", axis), &limits_);
  unit_name_.AddTo(controls, Element("TxtUUname", axis));
  steps_per_unit_.AddTo(controls, Element("TxtUUpitch", axis));
}

void AxisRow::FillLists() {
  for (int code = 0; code < kModels; ++code) model_.list.emplace_back(ModelName(code));
  for (const std::int32_t steps : kStepsPerRev) steps100_.list.push_back(Joined(steps));
  steps_.list.assign(steps100_.list.begin() + kFirstCommonCode, steps100_.list.end());
  limits_.list = {"Closed", "Open", "Not Used"};
}

void AxisRow::Fill(const Program& program, int axis) {
  const AxisConfig& from = program.Axis;
  axis_.caption = "Axis " + Joined(axis + 1);
  stored_model_ = from.DriveModel[axis];
  model_.index = stored_model_ >= 0 && stored_model_ < kModels ? stored_model_ : -1;
  name_.Fill(from.AxisName[axis]);
  steps_.index = IndexOf(from.StepResCode[axis], kFirstCommonCode, steps_, kDefaultSteps);
  steps100_.index = IndexOf(from.StepResCode[axis], 0, steps100_, kDefaultSteps100);
  free_steps_.Fill(from.StepsPerRev[axis]);
  current_.Fill(from.DriveCurrent[axis]);
  limits_.index = std::clamp<int>(from.LimitKind[axis], 0, static_cast<int>(std::ssize(limits_.list)) - 1);
  unit_name_.Fill(from.UnitName[axis]);
  steps_per_unit_.Fill(from.StepsPerUnit[axis]);
  currents = {.continuous = from.ContCurrent[axis],
              .peak = from.PeakCurrent[axis],
              .run = from.RunCurrent[axis],
              .accel = from.AccelCurrent[axis],
              .idle = from.IdleCurrent[axis]};
  // Models 20 to 25 show this until the dialog comes up again: DispZENUCurrent passes them by.
  ShowPeakCurrents();
  DispZENUCurrent();
  Light(false);
}

void AxisRow::CleanUp() {
  name_.CleanUp();
  free_steps_.CleanUp();
  current_.CleanUp(MaxCurrent(Model()));
  unit_name_.CleanUp();
  steps_per_unit_.CleanUp();
}

void AxisRow::Show(bool exists, bool own_limits, bool own_unit, bool scanned) {
  const int model = Model();
  const bool has_drive = exists && model != 0;
  axis_.visible = model_.visible = exists;
  found_.visible = exists && scanned;
  name_.Show(has_drive);
  steps_.visible = has_drive && StepsOf(model) == StepsFrom::List;
  steps100_.visible = has_drive && StepsOf(model) == StepsFrom::List100;
  free_steps_.Show(has_drive && StepsOf(model) == StepsFrom::Box);
  current_.Show(has_drive && !HasPanel(model));
  panel_currents_.visible = has_drive && HasPanel(model);
  limits_.visible = has_drive && own_limits;
  unit_name_.Show(has_drive && own_unit);
  steps_per_unit_.Show(has_drive && own_unit);
}

void AxisRow::TakeModel() {
  const int model = Model();
  if (model == 0) return;
  current_.CleanUp(MaxCurrent(model));
  const ServoCurrentLimits limits = MaxServoCurrent(model);
  currents.continuous = std::min(currents.continuous, static_cast<float>(limits.continuous));
  currents.peak = std::min(currents.peak, static_cast<float>(limits.peak));
  DispZENUCurrent();
}

void AxisRow::ShowPeakCurrents() {
  panel_currents_.caption = Format(currents.continuous, "0.00") + " (" + Format(currents.peak, "0.0") + ")";
  panel_currents_.tool_tip = "Cont current (peak current), click to change";
}

void AxisRow::DispZENUCurrent() {
  const int model = Model();
  if (ZenuRmsModel(model) && !PlainNetModel(model) && !ProgNetModel(model)) {
    ShowPeakCurrents();
  } else if (MirelModel(model)) {
    panel_currents_.caption = Format(currents.run, "0.00") + " (" + Format(currents.accel, "0.0") + ")";
    panel_currents_.tool_tip = "Run current (accel current), click to change";
  }
}

std::string AxisRow::Setting() const {
  std::string setting;
  for (const int index : {Model(), steps_.index, steps100_.index, limits_.index}) {
    setting += Joined(index) + '\n';
  }
  for (const float amperes :
       {currents.continuous, currents.peak, currents.run, currents.accel, currents.idle}) {
    setting += Joined(amperes) + '\n';
  }
  for (const std::string& text : {name_.Text(), current_.Text(), unit_name_.Text(), steps_per_unit_.Text()}) {
    setting += text + '\n';
  }
  return StepsOf(Model()) == StepsFrom::Box ? setting + free_steps_.Text() : setting;
}

std::int16_t AxisRow::StepResCode() const {
  switch (StepsOf(Model())) {
    case StepsFrom::List: return static_cast<std::int16_t>(steps_.index + kFirstCommonCode);
    case StepsFrom::List100: return static_cast<std::int16_t>(steps100_.index);
    case StepsFrom::Box: break;
  }
  return kFreeResolution;
}

void AxisRow::Write(AxisConfig& axes, int axis, bool keep_resolution) const {
  axes.DriveModel[axis] = static_cast<std::int16_t>(Model());
  axes.AxisName[axis] = name_.Text();
  axes.DriveCurrent[axis] = std::min(current_.Amperes(), MaxCurrent(Model()));
  axes.ContCurrent[axis] = currents.continuous;
  axes.PeakCurrent[axis] = currents.peak;
  axes.RunCurrent[axis] = currents.run;
  axes.AccelCurrent[axis] = currents.accel;
  axes.IdleCurrent[axis] = currents.idle;
  if (keep_resolution) return;
  axes.StepResCode[axis] = StepResCode();
  axes.StepsPerRev[axis] = free_steps_.Count();
}

void AxisRow::ScanDriveMV(const FoundDrive& found) {
  if (!found.model) {
    found_.caption = "?";
  } else if (*found.model == 0) {
    found_.caption = ModelName(0);
  } else {
    found_.caption = std::string(ModelName(*found.model)) + "  " +
                     (found.revision ? Format(*found.revision, "0.00") : "?");
  }
}

}  // namespace tavlo
