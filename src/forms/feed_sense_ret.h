// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "forms/feed_return.h"
#include "forms/sensor_form.h"

namespace tavlo {

/// `FeedSenseRet`: a move that ends a length behind a sensor, a pause, and the way back.
class FeedSenseRet : public SensorForm {
 public:
  FeedSenseRet();

 protected:
  void Fill() override;
  void CleanUp() override;
  void Write(Instruction& record) const override;
  void SetUnits() override;

 private:
  ReturnBlock return_;
};

}  // namespace tavlo
