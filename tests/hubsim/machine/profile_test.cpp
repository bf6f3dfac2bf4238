// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/machine/profile.h"

#include <gtest/gtest.h>

#include <cmath>

namespace tavlo::hubsim {
namespace {

const MotionLimits kUsual{20000, 200000, 200000};

TEST(Profile, ALongMoveIsATrapezoid) {
  const Profile profile = Profile::Travel(20000, 0, kUsual);
  EXPECT_NEAR(profile.Duration(), 1.1, 1e-9);
  EXPECT_NEAR(profile.DistanceAt(0.1), 1000, 1e-6);
  EXPECT_NEAR(profile.SpeedAt(0.5), 20000, 1e-6);
  EXPECT_NEAR(profile.DistanceAt(1.0), 19000, 1e-6);
  EXPECT_NEAR(profile.DistanceAt(1.1), 20000, 1e-6);
  EXPECT_EQ(profile.SpeedAt(1.2), 0);
}

TEST(Profile, AShortMoveIsATriangle) {
  const Profile profile = Profile::Travel(2000, 0, kUsual);
  EXPECT_NEAR(profile.Duration(), 0.2, 1e-9);
  EXPECT_NEAR(profile.SpeedAt(0.1), 20000, 1e-3);
}

TEST(Profile, AccelerationAndDecelerationMayDiffer) {
  const Profile profile = Profile::Travel(20000, 0, {20000, 200000, 50000});
  EXPECT_NEAR(profile.Duration(), 0.1 + 0.75 + 0.4, 1e-9);
}

TEST(Profile, NoDistanceTakesNoTime) {
  EXPECT_EQ(Profile::Travel(0, 0, kUsual).Duration(), 0);
}

TEST(Profile, AMoveTooShortToStopInGoesOnUntilItStands) {
  const Profile profile = Profile::Travel(10, 20000, kUsual);
  EXPECT_NEAR(profile.DistanceAt(profile.Duration()), 1000, 1e-6);
  EXPECT_NEAR(profile.Duration(), 0.1, 1e-9);
}

TEST(Profile, AMoveThatIsUnderWayKeepsItsSpeed) {
  const Profile profile = Profile::Travel(5000, 20000, kUsual);
  EXPECT_NEAR(profile.SpeedAt(0), 20000, 1e-6);
  EXPECT_NEAR(profile.Duration(), 4000 / 20000.0 + 0.1, 1e-9);
}

struct ChangeCase {
  const char* name;
  double distance;
  double at;
  double duration;
  double peak;
};

TEST(Profile, AChangeOfSpeedHasTheShapesOfAMoveWithTwoSpeeds) {
  const double peak = std::sqrt(2 * 200000 * 500.0);
  const ChangeCase cases[] = {
      {"two plateaus", 100000, 50000, 7.55, 20000},
      {"peak at the change", 100000, 500,
       peak / 200000 + (peak - 10000) / 200000 + (99750 - 750) / 10000.0 + 0.05, peak},
      {"second speed alone", 100000, 100, 0.05 + 9.95 + 0.05, 10000},
      {"change too late to show", 100000, 99500, 0.1 + 98000 / 20000.0 + 0.1, 20000},
      {"triangle", 400, 300, 2 * std::sqrt(2 * 200.0 / 200000), std::sqrt(2 * 200000 * 200.0)},
  };
  for (const auto& one : cases) {
    const Profile profile = Profile::Travel(one.distance, kUsual, {one.at, 10000});
    EXPECT_NEAR(profile.Duration(), one.duration, 1e-6) << one.name;
    EXPECT_NEAR(profile.DistanceAt(profile.Duration()), one.distance, 1e-6) << one.name;
    double peak_seen = 0;
    for (int i = 0; i <= 10000; ++i) {
      peak_seen = std::max(peak_seen, profile.SpeedAt(profile.Duration() * i / 10000));
    }
    EXPECT_NEAR(peak_seen, one.peak, one.peak / 100) << one.name;
  }
}

TEST(Profile, TheTimeOfADistanceIsTheInverseOfTheDistanceAtATime) {
  const Profile profile = Profile::Travel(100000, kUsual, {50000, 10000});
  for (int distance = 1; distance < 100000; distance += 997) {
    EXPECT_NEAR(profile.DistanceAt(profile.TimeAt(distance)), distance, 1e-5);
  }
  EXPECT_EQ(profile.TimeAt(0), 0);
  EXPECT_EQ(profile.TimeAt(-5), 0);
  EXPECT_TRUE(std::isinf(profile.TimeAt(100001)));
}

TEST(Profile, RunningOnHasNoEnd) {
  const Profile profile = Profile::RunOn(0, kUsual);
  EXPECT_TRUE(std::isinf(profile.Duration()));
  EXPECT_NEAR(profile.DistanceAt(10.1), 1000 + 200000, 1e-6);
  EXPECT_NEAR(profile.TimeAt(21000), 1.1, 1e-9);
}

TEST(Profile, RunningOnSlowsDownToALowerSpeed) {
  const Profile profile = Profile::RunOn(20000, {10000, 200000, 200000});
  EXPECT_NEAR(profile.SpeedAt(0.025), 15000, 1e-6);
  EXPECT_NEAR(profile.SpeedAt(1), 10000, 1e-6);
}

TEST(Profile, BrakingTakesTheSquareOfTheSpeed) {
  const Profile profile = Profile::Brake(20000, 200000);
  EXPECT_NEAR(profile.Duration(), 0.1, 1e-9);
  EXPECT_NEAR(profile.DistanceAt(1), 1000, 1e-6);
  EXPECT_EQ(Profile::Brake(0, 200000).Duration(), 0);
}

}  // namespace
}  // namespace tavlo::hubsim
