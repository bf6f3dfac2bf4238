// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/panel/fault_dialog.h"

#include <gtest/gtest.h>

#include <QCheckBox>

namespace tavlo::hubsim {
namespace {

TEST(FaultDialog, EachBoxIsItsBit) {
  FaultDialog dialog(2, nullptr);
  EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Fault of axis 3"));
  EXPECT_EQ(dialog.Code(), 0);
  int expected = 0;
  for (std::size_t bit = 0; bit < kFaultLabels.size(); ++bit) {
    auto* box = dialog.findChild<QCheckBox*>(QStringLiteral("fault%1").arg(bit));
    ASSERT_NE(box, nullptr) << bit;
    EXPECT_EQ(box->text().toStdString(), kFaultLabels[bit]);
    box->setChecked(true);
    expected |= 1 << bit;
    EXPECT_EQ(dialog.Code(), expected);
  }
  EXPECT_EQ(dialog.Code(), 16383);
}

}  // namespace
}  // namespace tavlo::hubsim
