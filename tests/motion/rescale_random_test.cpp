// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <random>

#include "motion/units.h"

// Programs at random from one setting of their axes to another, against the formulae of rescaling as they
// read, written here once more without the functions of the program.

namespace tavlo {
namespace {

constexpr std::array kFixedSteps = {200,   400,   1000,  2000,  5000,  10000, 12800, 18000,
                                    20000, 21600, 25000, 25400, 25600, 36000, 50000, 50800};

/// An axis as the formulae see it.
struct Scale {
  int model;
  int code;
  int free_steps;
  double U;

  [[nodiscard]] double R() const { return code == 16 ? free_steps : kFixedSteps[code]; }
  [[nodiscard]] double SlowestSpeed() const {
    if (model != 3 || free_steps >= 2000) return 0.025;
    return free_steps < 400 ? 0.25 : 0.125;
  }
  [[nodiscard]] double FastestSpeed() const {
    const bool fast = model == 3 || (model >= 8 && model <= 18) || (model >= 48 && model <= 50);
    return fast && R() < 25401 ? 100 : 50;
  }
  [[nodiscard]] double LeastAccel() const {
    if (model != 3 || free_steps >= 2000) return 1;
    return free_steps < 400 ? 10 : 5;
  }
};
using Scales = std::array<Scale, kAxes>;

double Limited(double value, double least, double most) {
  if (value < least) return least;
  return value > most ? most : value;
}

/// To the nearest whole number, ties to even: the way in which the machine rounds by itself.
double Whole(double value) {
  return std::nearbyint(value);
}

class Formulae {
 public:
  Formulae(const Scales& old, const Scales& now) : old_(old), now_(now) {}

  void Distance(std::int32_t& steps, int axis) const {
    steps = static_cast<std::int32_t>(Limited(Whole(steps * (now_[axis].U / old_[axis].U)), 1, 16000000));
  }
  void Limit(std::int32_t& whole, std::int32_t& fraction, int axis) const {
    const double m = std::floor(16000000 / now_[axis].U * 10000) / 10000;
    if (whole + fraction / 10000.0 <= m) return;
    whole = static_cast<std::int32_t>(std::floor(m));
    fraction = static_cast<std::int32_t>(Whole((m - std::floor(m)) * 10000));
  }
  void Speed(float& speed, int axis) const {
    speed =
        static_cast<float>(Limited(speed * Rate(axis), now_[axis].SlowestSpeed(), now_[axis].FastestSpeed()));
  }
  void Accel(std::int32_t& accel, int axis) const {
    accel = static_cast<std::int32_t>(Limited(Whole(accel * Rate(axis)), now_[axis].LeastAccel(), 3000));
  }

  [[nodiscard]] Instruction Of(Instruction line) const {
    const int a = line.Drive;
    Distance(line.Dist, a);
    Distance(line.SafetyDist, a);
    Distance(line.Dist2, a);
    Limit(line.LowerInt, line.LowerFrac, a);
    Limit(line.UpperInt, line.UpperFrac, a);
    for (float* speed : {&line.Speed, &line.RetSpeed, &line.Speed2, &line.JogSpeed}) Speed(*speed, a);
    Speed(line.JogLRSpeed, line.JogLRDrive);
    Speed(line.JogUDSpeed, line.JogUDDrive);
    for (std::int32_t* accel : {&line.Accel, &line.Decel, &line.JogAccel}) Accel(*accel, a);
    Accel(line.JogLRAccel, line.JogLRDrive);
    Accel(line.JogUDAccel, line.JogUDDrive);
    return line;
  }

 private:
  [[nodiscard]] double Rate(int axis) const {
    return (now_[axis].U / old_[axis].U) * old_[axis].R() / now_[axis].R();
  }

  const Scales& old_;
  const Scales& now_;
};

class Chance {
 public:
  explicit Chance(std::uint32_t seed) : random_(seed) {}

  [[nodiscard]] int Upto(int most) { return static_cast<int>(random_() % (static_cast<unsigned>(most) + 1)); }
  /// Small numbers as often as large ones.
  [[nodiscard]] int Sized(int most) { return std::max(1, Upto(most) >> Upto(23)); }
  [[nodiscard]] Scale Any() {
    return {.model = Upto(50), .code = Upto(16), .free_steps = Sized(65535), .U = double(Sized(16000000))};
  }
  [[nodiscard]] Instruction Line() {
    Instruction line;
    line.Type = static_cast<std::int16_t>(Upto(31));
    line.Drive = static_cast<std::int16_t>(Upto(7));
    line.JogLRDrive = static_cast<std::int16_t>(Upto(7));
    line.JogUDDrive = static_cast<std::int16_t>(Upto(7));
    for (std::int32_t* steps : {&line.Dist, &line.Dist2, &line.SafetyDist}) *steps = Sized(16000000);
    for (float* speed :
         {&line.Speed, &line.Speed2, &line.RetSpeed, &line.JogSpeed, &line.JogLRSpeed, &line.JogUDSpeed}) {
      *speed = static_cast<float>(Sized(4000) * 0.025);
    }
    for (std::int32_t* accel :
         {&line.Accel, &line.Decel, &line.JogAccel, &line.JogLRAccel, &line.JogUDAccel}) {
      *accel = Sized(3000);
    }
    for (std::int32_t* whole : {&line.UpperInt, &line.LowerInt}) *whole = Sized(16000000);
    for (std::int32_t* fraction : {&line.UpperFrac, &line.LowerFrac}) *fraction = Upto(9999);
    return line;
  }

 private:
  std::mt19937 random_;
};

void Put(const Scales& scales, AxisConfig& axes) {
  for (int axis = 0; axis < kAxes; ++axis) {
    axes.DriveModel[axis] = static_cast<std::int16_t>(scales[axis].model);
    axes.StepResCode[axis] = static_cast<std::int16_t>(scales[axis].code);
    axes.StepsPerRev[axis] = scales[axis].free_steps;
    axes.StepsPerUnit[axis] = static_cast<std::int32_t>(scales[axis].U);
  }
}

TEST(Rescale, RandomProgramsFollowTheFormulaeFromAnySettingToAnyOther) {
  for (std::uint32_t seed = 1; seed <= 200; ++seed) {
    Chance chance(seed);
    Scales old{};
    Scales now{};
    for (Scale& scale : old) scale = chance.Any();
    // Some axes stay as they were.
    for (int axis = 0; axis < kAxes; ++axis) now[axis] = chance.Upto(3) == 0 ? old[axis] : chance.Any();
    Program program;
    for (int i = 0; i < kLines; ++i) program.Prog[i] = chance.Line();
    Put(old, program.Axis);
    const auto before = program.Prog;
    const OldUnits units = UnitsOf(program);
    Put(now, program.Axis);
    ScaleDist(program, units);
    ScaleSpeed(program, units);
    ScaleAccel(program, units);
    const Formulae formulae(old, now);
    for (int i = 0; i < kLines; ++i) {
      ASSERT_EQ(program.Prog[i], formulae.Of(before[i])) << "seed " << seed << ", line " << i + 1;
    }
  }
}

}  // namespace
}  // namespace tavlo
