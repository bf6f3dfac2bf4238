// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "forms/sensor_form.h"

namespace tavlo {

/// `FeedSense`: a move that ends a length behind a sensor, and what follows if it does not find it in time.
class FeedSense : public SensorForm {
 public:
  FeedSense();

 protected:
  void Fill() override;
  void CleanUp() override;
  void ShowHide() override;
  void Write(Instruction& record) const override;
  void SetUnits() override;

 private:
  void CleanUpSFdist() { safety_distance_.CleanUp(Units()); }

  CheckBox safety_;
  DistanceField safety_distance_;
  LineField safety_line_;
};

}  // namespace tavlo
