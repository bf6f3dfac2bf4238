// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/terminal/knob.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "hubsim/machine/cannot_move.h"
#include "hubsim/terminal/keys.h"

namespace tavlo::hubsim {
namespace {

/// No line of this kind tells a speed: 3 rev/s and 100 rev/s/s, what a fresh feed has.
constexpr int kKnobSpeed = 120;
constexpr int kKnobAccel = 100;
/// What a move on the wire can cover at most; a wheel that is turned on and on runs no further ahead.
constexpr double kFarthest = 16777215;

class KnobWait : public Interaction {
 public:
  KnobWait(const FollowKnobStatement& knob, int line, Machine& machine, const DriveBay& bay)
      : machine_(machine), bay_(bay), knob_(knob), line_(line) {
    if (!knob_.until_enter) machine_.Io().ForgetEdges(knob_.input);
  }

  [[nodiscard]] WaitsFor Waits() const override {
    return knob_.until_enter ? WaitsFor::Enter : WaitsFor::Input;
  }

  void Key(char key, double now) override {
    if (knob_.until_enter && key == kEnterKey) Leave(now);
  }

  bool TurnKnob(int axis, int counts, double now) override {
    if (ending_ || (!knob_.until_enter && axis != knob_.input.axis)) return false;
    Wheel& wheel = At(axis);
    const double steps = wheel.ahead + static_cast<double>(counts) * knob_.steps_per_count;
    wheel.ahead = std::clamp(steps, -kFarthest, kFarthest);
    Follow(axis, now);
    return true;
  }

  void Advance(double now) override {
    if (!ending_ && !knob_.until_enter && machine_.Io().Holds(knob_.input, knob_.condition))
      return Leave(now);
    for (int axis = 0; axis < kAxisCount; ++axis) Follow(axis, now);
  }

  void Leave(double now) override {
    ending_ = true;
    for (int axis = 0; axis < kAxisCount; ++axis) {
      At(axis).ahead = 0;
      if (At(axis).moving) machine_.At(axis).Stop(now);
      Follow(axis, now);
    }
  }

  [[nodiscard]] std::optional<int> Next() const override {
    const bool standing = std::ranges::none_of(wheels_, &Wheel::moving);
    return ending_ && standing ? std::optional(line_ + 1) : std::nullopt;
  }

  [[nodiscard]] std::optional<Halt> Trouble() const override { return trouble_; }

 private:
  struct Wheel {
    double ahead = 0;     ///< steps that the wheel was turned and the axis has not been sent
    bool moving = false;  ///< the axis is under way for the wheel
  };

  Wheel& At(int axis) { return wheels_[static_cast<std::size_t>(axis)]; }

  void Follow(int axis, double now) {
    Wheel& wheel = At(axis);
    if (!machine_.At(axis).Idle()) return;
    wheel.moving = false;
    if (wheel.ahead == 0) return;
    if (const auto halt = CannotMove(axis, machine_, bay_)) {
      trouble_ = halt;
      return;
    }
    const double accel = machine_.StepsPerSecond2(axis, kKnobAccel);
    MoveOrder order;
    order.line = line_;
    order.direction = wheel.ahead < 0 ? -1 : 1;
    order.distance = std::abs(wheel.ahead);
    order.limits = {machine_.StepsPerSecond(axis, kKnobSpeed), accel, accel};
    machine_.Begin(axis, order, now);
    wheel = {0, true};
  }

  Machine& machine_;
  const DriveBay& bay_;
  FollowKnobStatement knob_;
  int line_;
  std::array<Wheel, kAxisCount> wheels_{};
  bool ending_ = false;
  std::optional<Halt> trouble_;
};

}  // namespace

std::unique_ptr<Interaction> FollowKnob(const FollowKnobStatement& knob, int line, Machine& machine,
                                        const DriveBay& bay) {
  return std::make_unique<KnobWait>(knob, line, machine, bay);
}

}  // namespace tavlo::hubsim
