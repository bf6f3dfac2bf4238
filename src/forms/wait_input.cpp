// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/wait_input.h"

namespace tavlo {

WaitInput::WaitInput() : InputForm("Drive", {WI, WII, "Wait Input"}) {
  controls_.Add("FrameJog", &jog_frame_);
  activate_.AddTo(controls_);
  jog_.AddTo(controls_, {"SpeedText", "speedunit", "AccelText", "accelunit"}, [this] { return Units(); });
  controls_.Add("lbljog", &jog_note_);
  AddRows();
}

void WaitInput::Fill() {
  InputForm::Fill();
  activate_.Fill(record().JogOn ? 0 : 1);
  jog_.Fill(Units(), record().JogSpeed, record().JogAccel);
}

void WaitInput::SetUnits() {
  InputForm::SetUnits();
  jog_.ReadAnew(Units());
  CleanUp();
}

bool WaitInput::Jogs() const {
  return activate_.Dir() == 0 && HasJogInputs(program(), Axis());
}

void WaitInput::ShowHide() {
  InputForm::ShowHide();
  jog_frame_.visible = HasJogInputs(program(), Axis());
  jog_.Enable(Jogs());
  // The wait then ends with the first jog that way.
  const bool cw = input_.JogCWused();
  jog_note_.visible = Jogs() && IsSingle() && (cw || input_.JogCCWused());
  jog_note_.caption = cw ? "The input waited for jogs the axis clockwise."
                         : "The input waited for jogs the axis counter-clockwise.";
}

void WaitInput::Write(Instruction& record) const {
  InputForm::Write(record);
  if (IsSingle()) record.CountIsMMI = false;
  record.JogSpeed = jog_.Speed();
  record.JogAccel = jog_.Accel();
  record.JogOn = Jogs();
}

}  // namespace tavlo
