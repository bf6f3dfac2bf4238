// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "hubsim/machine/profile.h"
#include "hubsim/program/io.h"

namespace tavlo::hubsim {

/// How a move ends on an input.
struct SensorStop {
  InputRef input;
  Condition condition = Condition::Low;
};

/// A return to where the move began, after a rest.
struct ReturnTrip {
  double speed = 1;   ///< steps/s
  double rest_s = 0;  ///< seconds at rest before it
};

/// An output that acts once the move has covered `at` steps, or at the end of a move that is shorter.
struct MarkedOutput {
  double at = 0;
  int output = 0;
  OutputAction action = OutputAction::High;
  double width_s = 0;
};

/// If the sensor has not been seen after `distance`, the move ends and the program goes on at `line`.
struct SafetyStop {
  double distance = 0;
  int line = 0;
};

/// One move of an axis, in steps. Without a `sensor` the axis travels `distance`. With one it travels until
/// the sensor's condition holds, and `distance` further.
struct MoveOrder {
  int line = 0;             ///< 0-based line that ordered it
  bool concurrent = false;  ///< the program went on without waiting
  int direction = 1;        ///< 1 clockwise, -1 counter-clockwise
  double distance = 0;
  MotionLimits limits;
  std::optional<SpeedChange> change;
  std::optional<MarkedOutput> output;
  std::optional<SensorStop> sensor;
  std::optional<SafetyStop> safety;
  std::optional<ReturnTrip> trip;
  bool home = false;  ///< go back to where the sensor was seen and call it position 0
};

/// A speed at a moment, signed.
struct SpeedPoint {
  double time = 0;
  double steps_s = 0;
};

enum class AxisEvent : std::uint8_t {
  Mark,      ///< the move's output is due
  Finished,  ///< the move is over
  GaveUp,    ///< the move is over without its sensor
};

/// One motor: where it is, how fast, and which stretch of its move it is in. Times are machine seconds and
/// never run backwards.
class Axis {
 public:
  /// Only while `Idle()`.
  void Begin(const MoveOrder& order, double now);
  /// Turns with no end, from rest or from an earlier `RunOn` in the same direction.
  void RunOn(int direction, const MotionLimits& limits, double now);
  /// Changes the speed of an axis that turns with no end; does nothing to any other.
  void ChangeSpeed(double speed, double now);
  /// Brings the axis to rest with its deceleration. Its move is over when it stands.
  void Stop(double now);
  /// At rest at once; the move is forgotten.
  void Cut(double now);
  /// The condition of the move's sensor holds.
  void SensorSeen(double now);
  /// The end of the move under way is not reported any more.
  void Disown() { owned_ = false; }
  void SetPosition(double steps) { position_ = steps; }

  [[nodiscard]] bool Idle() const { return phase_ == Phase::Idle; }
  /// Turns with no end.
  [[nodiscard]] bool Endless() const { return phase_ == Phase::Endless; }
  [[nodiscard]] bool Seeking() const { return phase_ == Phase::Seek; }
  /// A move is under way whose end is to be reported.
  [[nodiscard]] bool Owned() const { return !Idle() && owned_; }
  [[nodiscard]] int Direction() const { return direction_; }
  /// The last move ordered.
  [[nodiscard]] const MoveOrder& Order() const { return order_; }
  [[nodiscard]] double Position(double now) const;
  /// Signed, steps/s.
  [[nodiscard]] double Speed(double now) const;
  /// The speed from `now` to `until`, as points between which it changes evenly. No event may lie between.
  [[nodiscard]] std::vector<SpeedPoint> Course(double now, double until) const;

  [[nodiscard]] std::optional<double> NextEvent() const;
  /// Carries out what is due at `now` and returns at the first event that the program must be told of. To be
  /// called until it returns nothing.
  [[nodiscard]] std::optional<AxisEvent> Advance(double now);

 private:
  enum class Phase : std::uint8_t {
    Idle,
    Travel,
    Seek,
    RunOut,
    Rest,
    Return,
    HomeBack,
    Endless,
    Stop,
    GiveUp,
  };

  void Enter(Phase phase, const Profile& profile, int direction, double now);
  void EnterRest(double now);
  void Settle(double now);
  [[nodiscard]] std::optional<AxisEvent> EndPhase(double now);
  [[nodiscard]] std::optional<AxisEvent> Finish(AxisEvent event);
  [[nodiscard]] std::optional<AxisEvent> AfterOutwardTrip(double now);
  [[nodiscard]] MotionLimits BackLimits(double speed) const;

  Phase phase_ = Phase::Idle;
  MoveOrder order_;
  MotionLimits limits_;
  Profile profile_;
  int direction_ = 1;
  double started_ = 0;
  double phase_end_ = 0;
  double mark_time_ = 0;
  bool marked_ = true;
  bool owned_ = false;
  double position_ = 0;  ///< at the start of the phase
  double origin_ = 0;    ///< at the start of the move
  double sensor_at_ = 0;
};

}  // namespace tavlo::hubsim
