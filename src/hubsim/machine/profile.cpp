// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/machine/profile.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tavlo::hubsim {
namespace {

using Course = std::vector<ProfilePoint>;

/// Goes on from the course's end to `speed` and keeps it up to `until`.
void Reach(Course& course, double speed, double until, const MotionLimits& limits) {
  const ProfilePoint from = course.back();
  const double wanted = speed * speed;
  const double slope = from.squared < wanted ? 2 * limits.accel : -2 * limits.decel;
  const double ramp_end = from.at + (wanted - from.squared) / slope;
  if (ramp_end >= until) {
    course.push_back({until, from.squared + slope * (until - from.at)});
    return;
  }
  course.push_back({ramp_end, wanted});
  course.push_back({until, wanted});
}

/// Cuts the course where it meets the braking line and follows that line to rest at `distance`. After the
/// first meeting the course cannot come below the line again, for nothing falls more steeply than braking.
void BrakeAtEnd(Course& course, double distance, double decel) {
  for (std::size_t i = 1; i < course.size(); ++i) {
    const ProfilePoint& from = course[i - 1];
    ProfilePoint& to = course[i];
    if (to.squared <= 2 * decel * (distance - to.at)) continue;
    const double length = to.at - from.at;
    const double slope = length > 0 ? (to.squared - from.squared) / length : 0;
    const double closing = slope + 2 * decel;
    const double gap = 2 * decel * (distance - from.at) - from.squared;
    const double ahead = closing > 0 ? std::clamp(gap / closing, 0.0, length) : 0.0;
    to = {from.at + ahead, std::max(0.0, from.squared + slope * ahead)};
    course.resize(i + 1);
    break;
  }
  course.push_back({distance, 0});
}

}  // namespace

void Profile::Append(double length, double speed, double end_speed) {
  if (length <= 0 || speed + end_speed <= 0) return;
  const double duration = 2 * length / (speed + end_speed);
  pieces_.push_back({time_, distance_, speed, (end_speed - speed) / duration, duration, length});
  time_ += duration;
  distance_ += length;
}

Profile Profile::FromCourse(const std::vector<ProfilePoint>& course) {
  Profile profile;
  for (std::size_t i = 1; i < course.size(); ++i) {
    profile.Append(course[i].at - course[i - 1].at, std::sqrt(std::max(0.0, course[i - 1].squared)),
                   std::sqrt(std::max(0.0, course[i].squared)));
  }
  return profile;
}

Profile Profile::Travel(double distance, double initial, const MotionLimits& limits) {
  const double total = std::max(distance, initial * initial / (2 * limits.decel));
  Course course{{0, initial * initial}};
  Reach(course, limits.speed, total, limits);
  BrakeAtEnd(course, total, limits.decel);
  return FromCourse(course);
}

Profile Profile::Travel(double distance, const MotionLimits& limits, const SpeedChange& change) {
  Course course{{0, 0}};
  Reach(course, limits.speed, std::min(change.at, distance), limits);
  Reach(course, change.speed, distance, limits);
  BrakeAtEnd(course, distance, limits.decel);
  return FromCourse(course);
}

Profile Profile::RunOn(double initial, const MotionLimits& limits) {
  Profile profile;
  const double rate = limits.speed >= initial ? limits.accel : -limits.decel;
  const double ramp = (limits.speed * limits.speed - initial * initial) / (2 * rate);
  profile.Append(ramp, initial, limits.speed);
  profile.final_speed_ = limits.speed;
  return profile;
}

Profile Profile::Brake(double initial, double decel) {
  Profile profile;
  profile.Append(initial * initial / (2 * decel), initial, 0);
  return profile;
}

double Profile::Duration() const {
  return final_speed_ > 0 ? std::numeric_limits<double>::infinity() : time_;
}

double Profile::DistanceAt(double time) const {
  if (time <= 0) return 0;
  if (time >= time_) return distance_ + final_speed_ * (time - time_);
  for (const Piece& piece : pieces_) {
    const double inside = time - piece.start_time;
    if (inside <= piece.duration) {
      return piece.start_distance + piece.speed * inside + piece.accel * inside * inside / 2;
    }
  }
  return distance_;
}

double Profile::SpeedAt(double time) const {
  if (time >= time_) return final_speed_;
  for (const Piece& piece : pieces_) {
    const double inside = time - piece.start_time;
    if (inside <= piece.duration) return std::max(0.0, piece.speed + piece.accel * std::max(0.0, inside));
  }
  return final_speed_;
}

std::vector<double> Profile::Bends() const {
  std::vector<double> times;
  for (const Piece& piece : pieces_) times.push_back(piece.start_time);
  if (final_speed_ > 0) times.push_back(time_);
  return times;
}

double Profile::TimeAt(double distance) const {
  if (distance <= 0) return 0;
  for (const Piece& piece : pieces_) {
    const double inside = distance - piece.start_distance;
    if (inside > piece.distance) continue;
    const double end_speed = std::sqrt(std::max(0.0, piece.speed * piece.speed + 2 * piece.accel * inside));
    return piece.start_time + (piece.speed + end_speed > 0 ? 2 * inside / (piece.speed + end_speed) : 0.0);
  }
  if (final_speed_ > 0) return time_ + (distance - distance_) / final_speed_;
  return std::numeric_limits<double>::infinity();
}

}  // namespace tavlo::hubsim
