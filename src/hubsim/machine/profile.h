// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <vector>

namespace tavlo::hubsim {

/// All above 0. Speed in steps/s, accelerations in steps/s/s.
struct MotionLimits {
  double speed = 1;
  double accel = 1;
  double decel = 1;
};

/// A change of speed on the way.
struct SpeedChange {
  double at = 0;     ///< distance in steps
  double speed = 1;  ///< steps/s from there on
};

/// Under constant acceleration the square of the speed is linear in the distance. So the fastest course of a
/// move is a polyline of squared speeds over the distance, cut by the line of the last braking.
struct ProfilePoint {
  double at;
  double squared;
};

/// Speed over time of one stretch of motion in one direction, made of pieces of constant acceleration.
/// Distances are steps from the stretch's start, times are seconds from its start.
class Profile {
 public:
  /// Covers `distance` and ends at rest, starting at `initial` steps/s. A distance too short to stop in is
  /// stretched to the stopping distance.
  [[nodiscard]] static Profile Travel(double distance, double initial, const MotionLimits& limits);
  /// `Travel` from rest with a second speed. A change that lies after the start of the last braking has no
  /// effect.
  [[nodiscard]] static Profile Travel(double distance, const MotionLimits& limits, const SpeedChange& change);
  /// Goes to `limits.speed` and keeps it for ever.
  [[nodiscard]] static Profile RunOn(double initial, const MotionLimits& limits);
  /// Comes to rest from `initial`.
  [[nodiscard]] static Profile Brake(double initial, double decel);

  /// Infinite for `RunOn`.
  [[nodiscard]] double Duration() const;
  [[nodiscard]] double DistanceAt(double time) const;
  [[nodiscard]] double SpeedAt(double time) const;
  /// When `distance` has been covered: infinite if it never is, 0 for a distance of 0 or less.
  [[nodiscard]] double TimeAt(double distance) const;
  /// When the acceleration changes, in the order of time. The start is among it; a rest at the end is not.
  [[nodiscard]] std::vector<double> Bends() const;

 private:
  struct Piece {
    double start_time;
    double start_distance;
    double speed;
    double accel;
    double duration;
    double distance;
  };

  [[nodiscard]] static Profile FromCourse(const std::vector<ProfilePoint>& course);
  void Append(double length, double speed, double end_speed);

  std::vector<Piece> pieces_;
  double time_ = 0;
  double distance_ = 0;
  double final_speed_ = 0;
};

}  // namespace tavlo::hubsim
