// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "forms/move_form.h"

namespace tavlo {

/// The way back of a move that returns: its speed, and how long it waits before it.
class ReturnBlock {
 public:
  void AddTo(ControlTable& controls, const std::function<AxisUnits()>& units);
  void Fill(AxisUnits units, const Instruction& record);
  void CleanUp(AxisUnits units);
  void ReadAnew(AxisUnits units) { speed_.ReadAnew(units); }
  void Write(Instruction& record) const;

 private:
  SpeedField speed_;
  DelayField delay_;
};

/// `FeedReturn`: a move by a length, a pause, and the way back.
class FeedReturn : public MoveForm {
 public:
  FeedReturn();

 protected:
  void Fill() override;
  void CleanUp() override;
  void Write(Instruction& record) const override;
  void SetUnits() override;

 private:
  ReturnBlock return_;
};

}  // namespace tavlo
