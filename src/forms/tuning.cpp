// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/tuning.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <string>

#include "motion/range.h"
#include "platform/number_format.h"

namespace tavlo {
namespace {

constexpr double kHighestGain = 32000;
constexpr int kGainSliderEnd = 1000;

/// The slider of a gain is cubic, so that small gains can be set finely.
constexpr double kGainScale = 1.0 * kGainSliderEnd * kGainSliderEnd * kGainSliderEnd / kHighestGain;
double GainAt(int position) {
  return std::pow(position, 3) / kGainScale;
}
int PositionOfGain(double gain) {
  return static_cast<int>(RoundHalfEven(std::cbrt(gain * kGainScale)));
}

/// That of a current counts hundredths of an ampere.
constexpr int kPerAmpere = 100;
double CurrentAt(int position) {
  return static_cast<double>(position) / kPerAmpere;
}
int PositionOfCurrent(double amperes) {
  return static_cast<int>(RoundHalfEven(amperes * kPerAmpere));
}

constexpr TuningField::Scale kGain = {GainAt, PositionOfGain, 1, "0"};
constexpr TuningField::Scale kCurrent = {CurrentAt, PositionOfCurrent, kPerAmpere, "0.00"};

struct Gain {
  TuningField::Names names;
  std::int32_t Instruction::*gain;
  bool Instruction::*changes;
  double least;
};
constexpr std::array<Gain, 6> kGainRows = {{
    {{"chkKP", "KP", "barKP"}, &Instruction::KP, &Instruction::ChangesKP, 1},
    {{"chkKI", "KI", "barKI"}, &Instruction::KI, &Instruction::ChangesKI, 0},
    {{"chkKD", "KD", "barKD"}, &Instruction::KD, &Instruction::ChangesKD, 1},
    {{"chkKV", "KV", "barKV"}, &Instruction::KV, &Instruction::ChangesKV, 0},
    {{"chkKVFF", "KVFF", "barKVFF"}, &Instruction::KVFF, &Instruction::ChangesKVFF, 0},
    {{"chkKAFF", "KAFF", "barKAFF"}, &Instruction::KAFF, &Instruction::ChangesKAFF, 1},
}};

template <std::size_t row>
TuningField GainField() {
  return {kGain, kGainRows[row].least};
}

/// `MaxContCurrent` and `MaxPeakCurrent` of this dialog. They are not those of the hardware settings.
ServoCurrentLimits MaxCurrents(int model) {
  switch (model) {
    case 16:
    case 17:
    case 18: return {5.0, 15.0};
    case 12:
    case 13:
    case 14: return {9.0, 13.5};
    default: return {4.5, 13.5};
  }
}

constexpr std::string_view kWarning =
    "Warning: do not enter values into this instruction without first testing them with Servo Trim to verify "
    "that the motor and load behave as intended.";

enum { ServoOn, ServoOff };

}  // namespace

void TuningField::AddTo(ControlTable& controls, const Names& names) {
  controls.Add(std::string(names.check_box), &changes_);
  controls.Add(std::string(names.text), &text_, [this] { CleanUp(); });
  controls.Add(std::string(names.slider), &slider_, [this] { TakeSlider(); });
}

void TuningField::Put(double value) {
  value_ = value;
  text_.text = Format(value, scale_.picture);
  text_.touched = false;
  slider_.value = std::clamp(scale_.position_of(Held(value, least_, most_)), slider_.min, slider_.max);
}

void TuningField::TakeSlider() {
  const double value = scale_.value_at(slider_.value);
  const int position = slider_.value;
  Put(std::max(RoundHalfEven(value * scale_.steps) / scale_.steps, least_));
  // Of several positions with one value the operator's stays.
  slider_.value = position;
}

void TuningField::Fill(bool changes, double value, double most) {
  changes_.value = changes;
  most_ = most;
  slider_.max = scale_.position_of(most);
  Put(value);
}

void TuningField::CleanUp() {
  if (!text_.touched && value_ >= least_ && value_ <= most_) return;
  const double held = Held(text_.touched ? Val(text_.text) : value_, least_, most_);
  Put(RoundHalfEven(held * scale_.steps) / scale_.steps);
}

void TuningField::EndAt(double most) {
  most_ = most;
  slider_.max = scale_.position_of(most);
  CleanUp();
}

Tuning::Tuning()
    : AxisForm("Drive"),
      gains_{GainField<0>(), GainField<1>(), GainField<2>(), GainField<3>(), GainField<4>(), GainField<5>()},
      continuous_(kCurrent, 0),
      peak_(kCurrent, 0) {
  motor_.AddTo(controls_, {"optServoOn", "optServoOff"});
  for (std::size_t i = 0; i < gains_.size(); ++i) gains_[i].AddTo(controls_, kGainRows[i].names);
  continuous_.AddTo(controls_, {"chkCC", "Acont", "SliderAcont"});
  peak_.AddTo(controls_, {"chkPC", "Apeak", "SliderApeak"});
  warning_.caption = kWarning;
  controls_.Add("lblWarning", &warning_);
}

void Tuning::Fill() {
  const Instruction& from = record();
  drive_.Fill(program(), from.Drive);
  motor_.Fill(from.MotorOn ? ServoOn : ServoOff);
  for (std::size_t i = 0; i < gains_.size(); ++i) {
    const Gain& gain = kGainRows[i];
    gains_[i].Fill(from.*gain.changes, from.*gain.gain, kHighestGain);
  }
  const ServoCurrentLimits most = MaxCurrents(DriveModelOf(program(), Axis()));
  continuous_.Fill(from.ChangesAcont, from.Acont, most.continuous);
  peak_.Fill(from.ChangesApeak, from.Apeak, most.peak);
}

void Tuning::SetUnits() {
  const ServoCurrentLimits most = MaxCurrents(DriveModelOf(program(), Axis()));
  continuous_.EndAt(most.continuous);
  peak_.EndAt(most.peak);
}

void Tuning::CleanUp() {
  for (TuningField& gain : gains_) gain.CleanUp();
  continuous_.CleanUp();
  peak_.CleanUp();
}

// `ShowDimControls`
void Tuning::ShowHide() {
  for (TuningField& gain : gains_) gain.ShowHide();
  continuous_.ShowHide();
  peak_.ShowHide();
}

void Tuning::Write(Instruction& record) const {
  record.Drive = Axis();
  record.MotorOn = motor_.Chosen() == ServoOn;
  for (std::size_t i = 0; i < gains_.size(); ++i) {
    record.*kGainRows[i].gain = static_cast<std::int32_t>(gains_[i].Value());
    record.*kGainRows[i].changes = gains_[i].Changes();
  }
  record.Acont = static_cast<float>(continuous_.Value());
  record.ChangesAcont = continuous_.Changes();
  record.Apeak = static_cast<float>(peak_.Value());
  record.ChangesApeak = peak_.Changes();
}

const FormRow& TuningRow() {
  static constexpr FormRow kTuning = {"Tuning", "Change Control Loop Tuning", "Hub Composer.pdf",
                                      []() -> std::unique_ptr<Form> { return std::make_unique<Tuning>(); }};
  return kTuning;
}

}  // namespace tavlo
