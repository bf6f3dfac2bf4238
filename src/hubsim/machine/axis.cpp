// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/machine/axis.h"

#include <algorithm>
#include <cmath>

namespace tavlo::hubsim {

void Axis::Enter(Phase phase, const Profile& profile, int direction, double now) {
  phase_ = phase;
  profile_ = profile;
  direction_ = direction;
  started_ = now;
  phase_end_ = now + profile.Duration();
}

void Axis::Begin(const MoveOrder& order, double now) {
  order_ = order;
  owned_ = true;
  limits_ = order.limits;
  origin_ = position_;
  marked_ = true;
  if (order.sensor) {
    Enter(Phase::Seek, Profile::RunOn(0, limits_), order.direction, now);
    if (order.safety) phase_end_ = now + profile_.TimeAt(order.safety->distance);
    return;
  }
  const Profile profile = order.change ? Profile::Travel(order.distance, limits_, *order.change)
                                       : Profile::Travel(order.distance, 0, limits_);
  Enter(Phase::Travel, profile, order.direction, now);
  if (order.output) {
    marked_ = false;
    mark_time_ = now + std::min(profile_.TimeAt(order.output->at), profile_.Duration());
  }
}

void Axis::RunOn(int direction, const MotionLimits& limits, double now) {
  const double speed = std::abs(Speed(now));
  Settle(now);
  limits_ = limits;
  order_ = MoveOrder{};
  owned_ = false;
  marked_ = true;
  Enter(Phase::Endless, Profile::RunOn(speed, limits_), direction, now);
}

void Axis::ChangeSpeed(double speed, double now) {
  if (!Endless()) return;
  MotionLimits limits = limits_;
  limits.speed = speed;
  RunOn(direction_, limits, now);
}

void Axis::Stop(double now) {
  if (Idle() || phase_ == Phase::Stop || phase_ == Phase::GiveUp) return;
  const double speed = std::abs(Speed(now));
  Settle(now);
  marked_ = true;
  order_.trip.reset();
  order_.home = false;
  Enter(Phase::Stop, Profile::Brake(speed, limits_.decel), direction_, now);
}

void Axis::Cut(double now) {
  if (Idle()) return;
  Settle(now);
  marked_ = true;
  phase_ = Phase::Idle;
}

void Axis::SensorSeen(double now) {
  if (!Seeking()) return;
  const double speed = std::abs(Speed(now));
  Settle(now);
  sensor_at_ = position_;
  if (order_.home) {
    Enter(Phase::Stop, Profile::Brake(speed, limits_.decel), direction_, now);
  } else {
    Enter(Phase::RunOut, Profile::Travel(order_.distance, speed, limits_), direction_, now);
  }
}

double Axis::Position(double now) const {
  if (Idle() || phase_ == Phase::Rest) return position_;
  return position_ + direction_ * profile_.DistanceAt(std::min(now, phase_end_) - started_);
}

double Axis::Speed(double now) const {
  if (Idle() || phase_ == Phase::Rest) return 0;
  return direction_ * profile_.SpeedAt(now - started_);
}

std::vector<SpeedPoint> Axis::Course(double now, double until) const {
  std::vector<SpeedPoint> points{{now, Speed(now)}};
  const bool changes = !Idle() && phase_ != Phase::Rest;
  for (const double bend : changes ? profile_.Bends() : std::vector<double>()) {
    const double time = started_ + bend;
    if (time > now && time < until) points.push_back({time, Speed(time)});
  }
  points.push_back({until, Speed(until)});
  return points;
}

/// A motor stands on whole steps wherever a stretch ends.
void Axis::Settle(double now) {
  position_ = std::round(Position(now));
  started_ = now;
}

std::optional<double> Axis::NextEvent() const {
  if (Idle()) return std::nullopt;
  const double next = marked_ ? phase_end_ : std::min(mark_time_, phase_end_);
  if (std::isinf(next)) return std::nullopt;
  return next;
}

std::optional<AxisEvent> Axis::Advance(double now) {
  while (!Idle()) {
    if (!marked_ && mark_time_ <= now) {
      marked_ = true;
      return AxisEvent::Mark;
    }
    if (phase_end_ > now) return std::nullopt;
    if (const auto event = EndPhase(phase_end_)) return event;
  }
  return std::nullopt;
}

std::optional<AxisEvent> Axis::EndPhase(double now) {
  const double speed = std::abs(Speed(now));
  Settle(now);
  switch (phase_) {
    case Phase::Seek: Enter(Phase::GiveUp, Profile::Brake(speed, limits_.decel), direction_, now); break;
    case Phase::Travel:
    case Phase::RunOut: return AfterOutwardTrip(now);
    case Phase::Rest: {
      const double back = origin_ - position_;
      Enter(Phase::Return, Profile::Travel(std::abs(back), 0, BackLimits(order_.trip->speed)),
            back < 0 ? -1 : 1, now);
      break;
    }
    case Phase::Stop: {
      if (!order_.home) return Finish(AxisEvent::Finished);
      const double back = sensor_at_ - position_;
      Enter(Phase::HomeBack, Profile::Travel(std::abs(back), 0, limits_), back < 0 ? -1 : 1, now);
      break;
    }
    case Phase::HomeBack: position_ = 0; return Finish(AxisEvent::Finished);
    case Phase::Return: return Finish(AxisEvent::Finished);
    case Phase::GiveUp: return Finish(AxisEvent::GaveUp);
    case Phase::Idle:
    case Phase::Endless: break;
  }
  return std::nullopt;
}

std::optional<AxisEvent> Axis::AfterOutwardTrip(double now) {
  if (!order_.trip) return Finish(AxisEvent::Finished);
  EnterRest(now);
  return std::nullopt;
}

void Axis::EnterRest(double now) {
  phase_ = Phase::Rest;
  started_ = now;
  phase_end_ = now + order_.trip->rest_s;
}

std::optional<AxisEvent> Axis::Finish(AxisEvent event) {
  phase_ = Phase::Idle;
  if (!owned_) return std::nullopt;
  return event;
}

MotionLimits Axis::BackLimits(double speed) const {
  MotionLimits limits = limits_;
  limits.speed = speed;
  return limits;
}

}  // namespace tavlo::hubsim
