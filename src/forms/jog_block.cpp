// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/jog_block.h"

#include <string>

namespace tavlo {
namespace {

std::string UnitWith(AxisUnits units, const char* per) {
  const AxisConfig& axes = units.program.Axis;
  return (axes.UseUnits[units.axis] ? axes.UnitName[units.axis] : "rev") + per;
}
std::string OfSpeed(AxisUnits units) {
  return UnitWith(units, "/sec");
}
std::string OfAccel(AxisUnits units) {
  return UnitWith(units, "/s/s");
}

}  // namespace

JogBlock::JogBlock(const Parts& parts) : parts_(parts), settings_(OfSpeed, OfAccel) {}

void JogBlock::AddTo(ControlTable& controls) {
  controls.Add(std::string(parts_.allowed), &allowed_);
  drive_.AddTo(
      controls, [this] { SetUnits(); }, parts_.drive);
  settings_.AddTo(controls, {parts_.speed, parts_.speed_unit, parts_.accel, parts_.accel_unit},
                  [this] { return Units(); });
}

void JogBlock::Fill(const Program& program, const Instruction& record) {
  program_ = &program;
  allowed_.value = record.*parts_.jog;
  drive_.Fill(program, record.*parts_.jog_drive);
  settings_.Fill(Units(), record.*parts_.jog_speed, record.*parts_.jog_accel);
}

void JogBlock::SetUnits() {
  settings_.ReadAnew(Units());
  CleanUp();
}

void JogBlock::CleanUp() {
  settings_.CleanUp(Units());
}

void JogBlock::ShowHide() {
  drive_.Enable(allowed_.value);
  settings_.Enable(allowed_.value);
}

void JogBlock::Write(Instruction& record) const {
  record.*parts_.jog = allowed_.value;
  record.*parts_.jog_drive = drive_.Axis();
  record.*parts_.jog_speed = settings_.Speed();
  record.*parts_.jog_accel = settings_.Accel();
}

}  // namespace tavlo
