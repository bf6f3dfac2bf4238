// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "motion/move_profile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <set>

namespace tavlo {
namespace {

/// 1 rev/s with 10 rev/s/s both ways on 20000 steps a revolution.
PlannedMove OneRev(std::int32_t dist) {
  return {.R = 20000, .Speed = 1, .Accel = 10, .Decel = 10, .Dist = dist};
}

PlannedMove WithSecondSpeed(std::int32_t dist, std::int32_t dist2, float speed2) {
  PlannedMove move = OneRev(dist);
  move.changes_speed = true;
  move.Dist2 = dist2;
  move.Speed2 = speed2;
  return move;
}

void ExpectRow(const ProfileRow& row, std::string_view label, double time, double dist) {
  EXPECT_EQ(row.label, label);
  EXPECT_NEAR(row.time, time, 0.0005) << label;
  EXPECT_NEAR(row.dist, dist, 0.05) << label;
}

std::vector<std::string_view> Labels(const MoveProfile& profile) {
  std::vector<std::string_view> labels;
  for (const ProfileRow& row : profile.rows) labels.push_back(row.label);
  return labels;
}

TEST(MoveProfile, ATrapezoid) {
  const auto profile = Analyse(OneRev(20000));
  ASSERT_TRUE(profile);
  EXPECT_EQ(profile->shape, Shape::PlotTrap1);
  ASSERT_EQ(profile->rows.size(), 4U);
  ExpectRow(profile->rows[0], "Accel", 0.1, 1000);
  ExpectRow(profile->rows[1], "at Speed", 0.9, 18000);
  ExpectRow(profile->rows[2], "Decel", 0.1, 1000);
  ExpectRow(profile->rows[3], "Total", 1.1, 20000);
  EXPECT_EQ(profile->peak, 1);
  ASSERT_EQ(profile->points.size(), 22U);
  EXPECT_FLOAT_EQ(profile->points[5].time, 0.05F);
  EXPECT_FLOAT_EQ(profile->points[5].speed, 0.5F);
  EXPECT_FLOAT_EQ(profile->points[5].dist, 250);
  EXPECT_FLOAT_EQ(profile->points[11].time, 1.0F);
  EXPECT_FLOAT_EQ(profile->points[11].dist, 19000);
}

TEST(MoveProfile, TheBoundaryBelongsToTheTriangle) {
  const auto profile = Analyse(OneRev(2000));
  ASSERT_TRUE(profile);
  EXPECT_EQ(profile->shape, Shape::PlotTri1);
  EXPECT_EQ(Labels(*profile), (std::vector<std::string_view>{"Accel", "Decel", "Total"}));
  EXPECT_NEAR(profile->peak * 20000, 20000, 0.001);
  ExpectRow(profile->rows[2], "Total", 0.2, 2000);
  EXPECT_EQ(Analyse(OneRev(2001))->shape, Shape::PlotTrap1);
}

TEST(MoveProfile, TwoPlateaus) {
  const auto profile = Analyse(WithSecondSpeed(100000, 50000, 0.5F));
  ASSERT_TRUE(profile);
  EXPECT_EQ(profile->shape, Shape::PlotDblTrap);
  ASSERT_EQ(profile->rows.size(), 6U);
  ExpectRow(profile->rows[0], "Accel", 0.1, 1000);
  ExpectRow(profile->rows[1], "at Speed", 2.45, 49000);
  ExpectRow(profile->rows[2], "Decel", 0.05, 750);
  ExpectRow(profile->rows[3], "at Speed2", 4.9, 49000);
  ExpectRow(profile->rows[4], "Final Decel", 0.05, 250);
  ExpectRow(profile->rows[5], "Total", 7.55, 100000);
  EXPECT_EQ(profile->points.size(), 33U);
}

TEST(MoveProfile, APeakAtTheChangeAndThenAPlateau) {
  const auto profile = Analyse(WithSecondSpeed(100000, 500, 0.5F));
  ASSERT_TRUE(profile);
  EXPECT_EQ(profile->shape, Shape::PlotTriTrap);
  EXPECT_NEAR(profile->peak * 20000, 14142.1, 0.05);
  EXPECT_EQ(Labels(*profile),
            (std::vector<std::string_view>{"Accel", "Decel", "at Speed2", "Final Decel", "Total"}));
}

TEST(MoveProfile, TheShapeIsChosenInItsOrder) {
  // V1 takes 1000 steps up and 1000 down, the second speed of 0.5 rev/s 250 each.
  const struct {
    const char* what;
    std::int32_t dist;
    std::int32_t dist2;
    Shape shape;
  } rows[] = {{"too short to reach even the second speed", 499, 100, Shape::PlotV2Tri},
              {"just long enough for it", 500, 249, Shape::PlotV2Trap},
              {"the change before the second speed is reached", 100000, 249, Shape::PlotV2Trap},
              {"at the place where it is reached", 100000, 250, Shape::PlotTriTrap},
              {"no room for the first, the change behind the peak", 1999, 1000, Shape::PlotV2Tri},
              {"no room for the first, the change at the peak", 1999, 999, Shape::PlotTriTrap},
              {"the change inside the final deceleration", 100000, 99001, Shape::PlotV1Trap},
              {"where that begins", 100000, 99000, Shape::PlotDblTrap},
              {"behind the first acceleration", 100000, 1001, Shape::PlotDblTrap},
              {"at its end", 100000, 1000, Shape::PlotTriTrap},
              {"beyond the move, which counts as at its end", 100000, 200000, Shape::PlotV1Trap}};
  for (const auto& row : rows) {
    const auto profile = Analyse(WithSecondSpeed(row.dist, row.dist2, 0.5F));
    ASSERT_TRUE(profile) << row.what;
    EXPECT_EQ(ShapeName(profile->shape), ShapeName(row.shape)) << row.what;
  }
}

TEST(MoveProfile, AMoveThatDoesNotChangeItsSpeedKnowsNoSecond) {
  PlannedMove move = WithSecondSpeed(20000, 300, 0);
  move.changes_speed = false;
  EXPECT_EQ(Analyse(move)->shape, Shape::PlotTrap1);
}

TEST(MoveProfile, TrapezoidsOfEitherSpeedHaveTheSameRows) {
  const auto late = Analyse(WithSecondSpeed(100000, 99900, 0.5F));
  const auto early = Analyse(WithSecondSpeed(100000, 10, 0.5F));
  const std::vector<std::string_view> rows = {"Accel", "at Speed", "Decel", "Total"};
  EXPECT_EQ(Labels(*late), rows);
  EXPECT_EQ(Labels(*early), rows);
  EXPECT_EQ(late->peak, 1);
  EXPECT_EQ(early->peak, 0.5);
  ExpectRow(early->rows[3], "Total", 10.05, 100000);
}

TEST(MoveProfile, WithoutASpeedThereIsNone) {
  PlannedMove still = OneRev(20000);
  still.Speed = 0;
  EXPECT_FALSE(Analyse(still));
  EXPECT_FALSE(Analyse(WithSecondSpeed(100000, 50000, 0)));
  for (const PlannedMove& move :
       {PlannedMove{}, PlannedMove{.R = 0, .Speed = 1, .Accel = 1, .Decel = 1, .Dist = 1},
        PlannedMove{.R = -200, .Speed = 1, .Accel = 1, .Decel = 1, .Dist = 1},
        PlannedMove{.R = 200, .Speed = 1, .Accel = 0, .Decel = 1, .Dist = 1},
        PlannedMove{.R = 200, .Speed = 1, .Accel = 1, .Decel = 1, .Dist = -5}}) {
    EXPECT_FALSE(Analyse(move));
  }
}

/// The laws that any move obeys, whatever its shape: rows add up to their total, the curve begins and ends at
/// rest and goes on without a jump, and what its speeds cover is the distance.
void ExpectLaws(const PlannedMove& move, const MoveProfile& profile) {
  double time = 0;
  double dist = 0;
  for (std::size_t i = 0; i + 1 < profile.rows.size(); ++i) {
    EXPECT_GE(profile.rows[i].time, -1e-9);
    time += profile.rows[i].time;
    dist += profile.rows[i].dist;
  }
  EXPECT_NEAR(time, profile.TotalTime(), 1e-6 * time);
  EXPECT_NEAR(dist, move.Dist, 1e-6 * move.Dist);
  EXPECT_EQ(profile.points.front().speed, 0);
  EXPECT_NEAR(profile.points.back().speed, 0, 1e-3 * profile.peak);
  EXPECT_NEAR(profile.points.back().dist, move.Dist, 1e-3 * move.Dist);
  double covered = 0;
  float fastest = 0;
  for (std::size_t i = 1; i < profile.points.size(); ++i) {
    const ProfilePoint& a = profile.points[i - 1];
    const ProfilePoint& b = profile.points[i];
    covered += (a.speed + b.speed) / 2 * (b.time - a.time) * move.R;
    fastest = std::max(fastest, b.speed);
  }
  EXPECT_NEAR(covered, move.Dist, 2e-3 * move.Dist);
  EXPECT_NEAR(fastest, profile.peak, 1e-3 * profile.peak);
}

constexpr int kMoves = 100000;

/// Any move that a dialog can hold, the same ones each time. Three in four change their speed on the way.
class AnyMove {
 public:
  PlannedMove Next() {
    PlannedMove move{.R = static_cast<std::int32_t>(Between(200, 50800)),
                     .Speed = std::round(Between(1, 2000)) / 40,
                     .Accel = static_cast<std::int32_t>(Between(1, 3000)),
                     .Decel = static_cast<std::int32_t>(Between(1, 3000)),
                     .Dist = static_cast<std::int32_t>(std::pow(10, Between(0.5, 7.2)))};
    move.changes_speed = made_++ % 4 != 0;
    move.Dist2 = static_cast<std::int32_t>(move.Dist * Between(0, 1.1)) + 1;
    move.Speed2 = static_cast<float>(move.Speed * Between(0.02, 1));
    return move;
  }

 private:
  double Between(double low, double high) {
    return std::uniform_real_distribution<double>(low, high)(random_);
  }

  std::mt19937 random_{7};
  int made_ = 0;
};

TEST(MoveProfile, EveryShapeObeysTheLawsOfMotion) {
  AnyMove any;
  std::set<Shape> met;
  for (int i = 0; i < kMoves; ++i) {
    const PlannedMove move = any.Next();
    const auto profile = Analyse(move);
    ASSERT_TRUE(profile);
    met.insert(profile->shape);
    ExpectLaws(move, *profile);
    if (HasFailure()) FAIL() << ShapeName(profile->shape) << " of move " << i;
  }
  EXPECT_EQ(met.size(), 7U);
}

/// A machine that knows nothing of shapes. At each place it goes for the speed that is wanted there, as fast
/// as its accelerations let it, and brakes as late as it may. Its way is cut into steps that become smaller
/// where it begins to do something else.
class Machine {
 public:
  explicit Machine(const PlannedMove& move) : move_(move) {}

  /// Goes on for so many steps of the motor, and returns the seconds that it took.
  double GoOn(double way) {
    constexpr int kParts = 8;
    const double before = seconds_;
    for (int i = 0; i < kParts; ++i) Cover(way / kParts);
    return seconds_ - before;
  }
  /// In rev/s.
  [[nodiscard]] double Fastest() const { return std::sqrt(fastest_) / move_.R; }

 private:
  /// Parts of a step of the motor, beyond which halving finds nothing but the last digits.
  static constexpr double kSmallest = 1e-6;

  [[nodiscard]] static double Seconds(double way, double from, double to) {
    const double speeds = std::sqrt(from) + std::sqrt(to);
    return speeds > 0 ? 2 * way / speeds : 0;
  }
  [[nodiscard]] double Wanted(double place) const {
    const bool second = move_.changes_speed && place >= std::min(move_.Dist2, move_.Dist);
    return std::pow(move_.R * (second ? double{move_.Speed2} : move_.Speed), 2);
  }
  /// The square of the speed this much farther on.
  [[nodiscard]] double After(double place, double square, double way) const {
    const double wanted = Wanted(place + way / 2);
    const double gone_for = square < wanted ? std::min(square + 2.0 * move_.R * move_.Accel * way, wanted)
                                            : std::max(square - 2.0 * move_.R * move_.Decel * way, wanted);
    const double left = std::max(0.0, move_.Dist - place - way);
    return std::min(gone_for, 2.0 * move_.R * move_.Decel * left);
  }
  void Cover(double way) {
    const double middle = After(place_, square_, way / 2);
    const double end = After(place_ + way / 2, middle, way / 2);
    const double halves = Seconds(way / 2, square_, middle) + Seconds(way / 2, middle, end);
    const double whole = Seconds(way, square_, After(place_, square_, way));
    if (std::abs(whole - halves) > 1e-8 * (seconds_ + halves) && way > kSmallest) {
      Cover(way / 2);
      return Cover(way / 2);
    }
    place_ += way;
    square_ = end;
    seconds_ += halves;
    fastest_ = std::max({fastest_, middle, end});
  }

  PlannedMove move_;
  double place_ = 0;
  double square_ = 0;
  double seconds_ = 0;
  double fastest_ = 0;
};

TEST(MoveProfile, EveryShapeIsThatOfAMachineThatGoesInSmallSteps) {
  AnyMove any;
  for (int i = 0; i < kMoves; ++i) {
    const PlannedMove move = any.Next();
    const auto profile = Analyse(move);
    ASSERT_TRUE(profile);
    Machine machine(move);
    double total = 0;
    for (const ProfileRow& row : profile->rows) {
      if (&row == &profile->rows.back()) break;
      const double seconds = machine.GoOn(row.dist);
      total += seconds;
      EXPECT_NEAR(row.time, seconds, 1e-5 * profile->TotalTime()) << row.label;
    }
    EXPECT_NEAR(profile->TotalTime(), total, 1e-5 * total);
    EXPECT_NEAR(profile->peak, machine.Fastest(), 1e-5 * profile->peak);
    if (HasFailure()) FAIL() << ShapeName(profile->shape) << " of move " << i;
  }
}

TEST(OutputTrace, TheTimeOfAChangeDuringTheMove) {
  const struct {
    std::int32_t dist;
    std::int32_t at;
    double time;
  } rows[] = {{20000, 250, 0.05},  {20000, 1000, 0.1},   {20000, 10000, 0.55}, {20000, 18999, 0.99995},
              {20000, 19000, 1.0}, {20000, 19750, 1.05}, {20000, 20000, 1.1},  {2000, 250, 0.05},
              {2000, 1000, 0.1},   {2000, 1750, 0.15}};
  for (const auto& row : rows) {
    const PlannedMove move = OneRev(row.dist);
    MoveProfile profile = *Analyse(move);
    const OutputTrace trace = TraceOutput(move, {.during = true, .dist = row.at}, profile);
    EXPECT_NEAR(trace.time, row.time, 1e-6) << row.dist << ", " << row.at;
    EXPECT_EQ(trace.dist, row.at);
    EXPECT_EQ(profile.points.size(), 22U);
  }
}

TEST(OutputTrace, TheLastStretchGoesByTheAcceleration) {
  PlannedMove move = OneRev(20000);
  move.Decel = 40;
  MoveProfile profile = *Analyse(move);
  const OutputTrace trace = TraceOutput(move, {.during = true, .dist = 19900}, profile);
  EXPECT_NEAR(trace.time, profile.TotalTime() - std::sqrt(2.0 / 200000 * 100), 1e-9);
}

TEST(OutputTrace, DuringTheMoveAPulseIsAStepThatStays) {
  const PlannedMove move = OneRev(20000);
  for (const int state : {0, 1, 2, 3}) {
    MoveProfile profile = *Analyse(move);
    const OutputTrace trace =
        TraceOutput(move, {.during = true, .dist = 250, .state = state, .pulse = 100}, profile);
    const int before = state % 2;
    ASSERT_EQ(trace.points.size(), 4U);
    EXPECT_EQ(trace.points[0].state, before);
    EXPECT_EQ(trace.points[1].state, before);
    EXPECT_EQ(trace.points[2].state, 1 - before);
    EXPECT_EQ(trace.points[3].state, 1 - before);
    EXPECT_FLOAT_EQ(trace.points[3].time, 1.1F);
    EXPECT_FLOAT_EQ(trace.points[3].dist, 20000);
    EXPECT_EQ(profile.points.size(), state >= 2 ? 23U : 22U) << "the time axis covers the pulse all the same";
  }
}

TEST(OutputTrace, AtTheEndAPulseGoesBackBehindIt) {
  const PlannedMove move = OneRev(20000);
  for (const int state : {0, 1, 2, 3}) {
    MoveProfile profile = *Analyse(move);
    const OutputTrace trace = TraceOutput(move, {.state = state, .pulse = 100}, profile);
    EXPECT_EQ(trace.dist, 20000);
    EXPECT_NEAR(trace.time, 1.1, 1e-9);
    const int before = state % 2;
    std::vector<int> levels;
    for (const OutputPoint& point : trace.points) levels.push_back(point.state);
    const std::vector<int> step = {before, before, 1 - before};
    const std::vector<int> pulse = {before, before, 1 - before, 1 - before, before};
    EXPECT_EQ(levels, state >= 2 ? pulse : step);
    if (state < 2) continue;
    EXPECT_FLOAT_EQ(trace.points[4].time, 1.2F);
    EXPECT_FLOAT_EQ(trace.points[4].dist, 21000);
    EXPECT_FLOAT_EQ(profile.points[22].time, 1.2F);
    EXPECT_EQ(profile.points[22].speed, 0);
    EXPECT_FLOAT_EQ(profile.points[22].dist, 21000);
  }
}

}  // namespace
}  // namespace tavlo
