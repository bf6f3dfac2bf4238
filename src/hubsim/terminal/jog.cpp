// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/terminal/jog.h"

#include <algorithm>
#include <array>
#include <vector>

#include "hubsim/machine/jog_motor.h"
#include "hubsim/terminal/keys.h"

namespace tavlo::hubsim {
namespace {

/// The wire tells of a key's press and never of its release, so a press counts for so long. It is longer than
/// the pause in which a keyboard that is held down repeats its keys.
constexpr double kPressSeconds = 0.3;

struct ArrowRow {
  char key;
  bool up_down;  ///< else left and right
  int direction;
};
constexpr std::array<ArrowRow, 4> kArrows{
    {{'A', true, 1}, {'B', true, -1}, {'C', false, -1}, {'D', false, 1}}};

struct JogInputs {
  int clockwise;
  int counter_clockwise;
};
constexpr JogInputs kUsualJogInputs{4, 5};
constexpr JogInputs kFirstInputs{0, 1};
constexpr JogInputs kOwnInputs{kFirstXInput + 1, kFirstXInput + 2};
constexpr std::array<int, 8> kJogOnFirstInputs{10, 12, 14, 15, 16, 18, 26, 28};
constexpr std::array<int, 8> kJogOnOwnInputs{20, 21, 22, 23, 24, 25, 27, 29};

JogInputs JogInputsOf(int model) {
  if (std::ranges::find(kJogOnFirstInputs, model) != kJogOnFirstInputs.end()) return kFirstInputs;
  if (std::ranges::find(kJogOnOwnInputs, model) != kJogOnOwnInputs.end()) return kOwnInputs;
  return kUsualJogInputs;
}

class EnterWait : public Interaction {
 public:
  EnterWait(const EnterStatement& prompt, int line, Machine& machine, const DriveBay& bay) : next_(line + 1) {
    if (prompt.left_right) arms_.push_back({JogMotor(machine, bay, *prompt.left_right), false});
    if (prompt.up_down) arms_.push_back({JogMotor(machine, bay, *prompt.up_down), true});
  }

  [[nodiscard]] WaitsFor Waits() const override { return WaitsFor::Enter; }

  void Key(char key, double now) override {
    if (key == kEnterKey) {
      entered_ = true;
      Leave(now);
      return;
    }
    const auto arrow = std::ranges::find(kArrows, key, &ArrowRow::key);
    if (entered_ || arrow == kArrows.end()) return;
    for (Arm& arm : arms_) {
      if (arm.up_down == arrow->up_down) Press(arm, arrow->direction, now);
    }
  }

  void Advance(double now) override {
    for (Arm& arm : arms_) {
      if (arm.motor.Wanted() != 0 && arm.until <= now) arm.motor.Want(0);
      if (const auto halt = arm.motor.Advance(now)) trouble_ = halt;
    }
  }

  [[nodiscard]] std::optional<double> NextEvent() const override {
    std::optional<double> next;
    for (const Arm& arm : arms_) {
      if (arm.motor.Wanted() != 0 && (!next || arm.until < *next)) next = arm.until;
    }
    return next;
  }

  void Leave(double now) override {
    for (Arm& arm : arms_) arm.motor.Want(0);
    Advance(now);
  }

  [[nodiscard]] std::optional<int> Next() const override {
    const bool standing = std::ranges::all_of(arms_, [](const Arm& arm) { return arm.motor.Standing(); });
    return entered_ && standing ? std::optional(next_) : std::nullopt;
  }

  [[nodiscard]] std::optional<Halt> Trouble() const override { return trouble_; }

 private:
  /// The arrow keys of one direction and the axis that they turn.
  struct Arm {
    JogMotor motor;
    bool up_down;
    double until = 0;
  };

  /// Where both pairs of keys turn the same axis the last key rules.
  void Press(Arm& arm, int direction, double now) {
    for (Arm& other : arms_) {
      if (&other != &arm && other.motor.AxisNumber() == arm.motor.AxisNumber()) other.motor.Want(0);
    }
    arm.motor.Want(direction);
    arm.until = now + kPressSeconds;
  }

  int next_;
  std::vector<Arm> arms_;
  bool entered_ = false;
  std::optional<Halt> trouble_;
};

class JoggedWait : public Interaction {
 public:
  JoggedWait(const WaitInputStatement& wait, int line, Machine& machine, const DriveBay& bay)
      : io_(machine.Io()),
        wait_(wait),
        motor_(machine, bay, *wait.jog),
        inputs_(JogInputsOf(bay.PluggedModel(wait.jog->axis))),
        next_(line + 1) {
    io_.ForgetEdges(wait.input);
  }

  [[nodiscard]] WaitsFor Waits() const override { return WaitsFor::Input; }

  void Advance(double now) override {
    if (io_.Holds(wait_.input, wait_.condition)) seen_ = true;
    motor_.Want(seen_ ? 0 : Direction());
    if (const auto halt = motor_.Advance(now)) trouble_ = halt;
  }

  void Leave(double now) override {
    seen_ = true;
    Advance(now);
  }

  [[nodiscard]] std::optional<int> Next() const override {
    return seen_ && motor_.Standing() ? std::optional(next_) : std::nullopt;
  }

  [[nodiscard]] std::optional<Halt> Trouble() const override { return trouble_; }

 private:
  /// An input that is low is on; with both on the axis stands.
  [[nodiscard]] int Direction() const {
    const int axis = motor_.AxisNumber();
    return (io_.Input(axis, inputs_.clockwise) ? 0 : 1) -
           (io_.Input(axis, inputs_.counter_clockwise) ? 0 : 1);
  }

  IoBoard& io_;
  WaitInputStatement wait_;
  JogMotor motor_;
  JogInputs inputs_;
  int next_;
  bool seen_ = false;
  std::optional<Halt> trouble_;
};

}  // namespace

std::unique_ptr<Interaction> WaitForEnter(const EnterStatement& prompt, int line, Machine& machine,
                                          const DriveBay& bay) {
  return std::make_unique<EnterWait>(prompt, line, machine, bay);
}

std::unique_ptr<Interaction> WaitWithJog(const WaitInputStatement& wait, int line, Machine& machine,
                                         const DriveBay& bay) {
  return std::make_unique<JoggedWait>(wait, line, machine, bay);
}

}  // namespace tavlo::hubsim
