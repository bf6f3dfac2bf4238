// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "motion/move_profile.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace tavlo {
namespace {

/// Points of a phase in which the speed changes: at its ends and at nine equal times between.
constexpr int kSteps = 10;
/// How far behind its end a move is drawn while a pulse goes on, as a share of its length.
constexpr double kBehindEnd = 1.05;

/// The move in steps and seconds.
struct Kinematics {
  explicit Kinematics(const PlannedMove& move)
      : R(move.R),
        V1(R * move.Speed),
        V2(R * move.Speed2),
        A(R * move.Accel),
        D(R * move.Decel),
        S(move.Dist) {
    // Behind the end of the move nothing changes any more.
    S2 = std::min<double>(move.Dist2, S);
  }

  [[nodiscard]] double AccelDist(double v) const { return v * v / 2 / A; }
  [[nodiscard]] double DecelDist(double v) const { return v * v / 2 / D; }

  double R;
  double V1;
  double V2;
  double A;
  double D;
  double S;
  double S2;
};

Shape ShapeOf(const PlannedMove& move, const Kinematics& k) {
  const bool no_room_for_first = k.AccelDist(k.V1) + k.DecelDist(k.V1) >= k.S;
  if (!move.changes_speed) return no_room_for_first ? Shape::PlotTri1 : Shape::PlotTrap1;
  if (k.S < k.AccelDist(k.V2) + k.DecelDist(k.V2)) return Shape::PlotV2Tri;
  if (k.S2 < k.AccelDist(k.V2)) return Shape::PlotV2Trap;
  if (k.S < k.AccelDist(k.V1) + k.DecelDist(k.V1)) {
    // A change after the point at which a pure triangle peaks has no effect.
    return k.S2 > k.S * k.D / (k.A + k.D) ? Shape::PlotV2Tri : Shape::PlotTriTrap;
  }
  if (k.S - k.S2 < k.DecelDist(k.V1)) return Shape::PlotV1Trap;
  return k.S2 > k.AccelDist(k.V1) ? Shape::PlotDblTrap : Shape::PlotTriTrap;
}

/// Lays out the curve, phase by phase.
class Curve {
 public:
  Curve(double r, std::vector<ProfilePoint>& points) : r_(r), points_(points) {}

  /// From a start at rest with this acceleration for so long.
  void SpeedUp(double acceleration, double duration) { Bend(0, duration, 0, acceleration, 0); }
  /// From this time, speed and distance on with this acceleration, negative to slow down, for so long.
  void Bend(double start, double duration, double speed, double acceleration, double dist) {
    for (int i = 0; i <= kSteps; ++i) {
      const double t = i * duration / kSteps;
      points_.push_back({static_cast<float>(start + t), static_cast<float>((speed + acceleration * t) / r_),
                         static_cast<float>(dist + speed * t + acceleration / 2 * t * t)});
    }
  }

 private:
  double r_;
  std::vector<ProfilePoint>& points_;
};

/// Up to a speed, along at it, down to rest.
MoveProfile Trapezoid(const Kinematics& k, double v) {
  MoveProfile profile;
  const double up = k.AccelDist(v);
  const double down = k.DecelDist(v);
  const double ta = v / k.A;
  const double tc = (k.S - up - down) / v;
  const double td = v / k.D;
  profile.peak = v / k.R;
  profile.rows = {{"Accel", ta, up},
                  {"at Speed", tc, k.S - up - down},
                  {"Decel", td, down},
                  {"Total", ta + tc + td, k.S}};
  Curve curve(k.R, profile.points);
  curve.SpeedUp(k.A, ta);
  curve.Bend(ta + tc, td, v, -k.D, k.S - down);
  return profile;
}

/// Up to the speed from which the rest of the way just suffices, and down to rest.
MoveProfile Triangle(const Kinematics& k) {
  MoveProfile profile;
  const double peak = std::sqrt(2 * k.A * k.D * k.S / (k.A + k.D));
  const double up = k.AccelDist(peak);
  const double ta = peak / k.A;
  const double td = peak / k.D;
  profile.peak = peak / k.R;
  profile.rows = {{"Accel", ta, up}, {"Decel", td, k.DecelDist(peak)}, {"Total", ta + td, k.S}};
  Curve curve(k.R, profile.points);
  curve.SpeedUp(k.A, ta);
  curve.Bend(ta, td, peak, -k.D, up);
  return profile;
}

/// Two plateaus.
MoveProfile DoubleTrapezoid(const Kinematics& k) {
  MoveProfile profile;
  const double up = k.AccelDist(k.V1);
  const double change = (k.V1 - k.V2) / k.D;
  const double changed = k.S2 + (k.V1 - k.V2) * (k.V1 - k.V2) / 2 / k.D + change * k.V2;
  const double last = k.S - k.DecelDist(k.V2);
  const double t1 = k.V1 / k.A;
  const double t2 = t1 + (k.S2 - up) / k.V1;
  const double t3 = t2 + change;
  const double t4 = t3 + (last - changed) / k.V2;
  const double t5 = t4 + k.V2 / k.D;
  profile.peak = k.V1 / k.R;
  profile.rows = {{"Accel", t1, up},
                  {"at Speed", t2 - t1, k.S2 - up},
                  {"Decel", t3 - t2, changed - k.S2},
                  {"at Speed2", t4 - t3, last - changed},
                  {"Final Decel", t5 - t4, k.S - last},
                  {"Total", t5, k.S}};
  Curve curve(k.R, profile.points);
  curve.SpeedUp(k.A, t1);
  curve.Bend(t2, t3 - t2, k.V1, -k.D, k.S2);
  curve.Bend(t4, t5 - t4, k.V2, -k.D, last);
  return profile;
}

/// A peak at the change, then a plateau.
MoveProfile TriangleTrapezoid(const Kinematics& k) {
  MoveProfile profile;
  const double peak = std::sqrt(2 * k.A * k.S2);
  const double t1 = peak / k.A;
  const double t2 = t1 + (peak - k.V2) / k.D;
  const double changed = k.S2 + peak * (t2 - t1) - k.D * (t2 - t1) * (t2 - t1) / 2;
  const double last = k.S - k.DecelDist(k.V2);
  const double t3 = t2 + (last - changed) / k.V2;
  const double t4 = t3 + k.V2 / k.D;
  profile.peak = peak / k.R;
  profile.rows = {{"Accel", t1, k.S2},
                  {"Decel", t2 - t1, changed - k.S2},
                  {"at Speed2", t3 - t2, last - changed},
                  {"Final Decel", t4 - t3, k.S - last},
                  {"Total", t4, k.S}};
  Curve curve(k.R, profile.points);
  curve.SpeedUp(k.A, t1);
  curve.Bend(t1, t2 - t1, peak, -k.D, k.S2);
  curve.Bend(t3, t4 - t3, k.V2, -k.D, last);
  return profile;
}

MoveProfile ProfileOf(Shape shape, const Kinematics& k) {
  switch (shape) {
    case Shape::PlotTri1:
    case Shape::PlotV2Tri: return Triangle(k);
    case Shape::PlotTrap1:
    case Shape::PlotV1Trap: return Trapezoid(k, k.V1);
    case Shape::PlotV2Trap: return Trapezoid(k, k.V2);
    case Shape::PlotDblTrap: return DoubleTrapezoid(k);
    case Shape::PlotTriTrap: return TriangleTrapezoid(k);
  }
  return {};
}

/// Returns the moment at which this distance is covered. The last stretch is computed from the acceleration,
/// as the dialogs always computed it.
double TimeAt(const Kinematics& k, const MoveProfile& profile, double dist) {
  const double total = profile.TotalTime();
  const double up = profile.rows.front().dist;
  if (dist <= up) return std::sqrt(2 * dist / k.A);
  if (profile.shape == Shape::PlotTrap1 && dist < k.S - k.DecelDist(k.V1)) {
    return profile.rows.front().time + (dist - up) / k.V1;
  }
  return total - std::sqrt(2 / k.A * (k.S - dist));
}

}  // namespace

std::string_view ShapeName(Shape shape) {
  constexpr std::array<std::string_view, 7> kNames = {
      "PlotTri1", "PlotTrap1", "PlotDblTrap", "PlotTriTrap", "PlotV1Trap", "PlotV2Trap", "PlotV2Tri"};
  return kNames[static_cast<std::size_t>(shape)];
}

std::optional<MoveProfile> Analyse(const PlannedMove& move) {
  const Kinematics k(move);
  if (!(k.R > 0) || !(k.A > 0) || !(k.D > 0) || !(k.S > 0)) return std::nullopt;
  const Shape shape = ShapeOf(move, k);
  MoveProfile profile = ProfileOf(shape, k);
  profile.shape = shape;
  const bool finite = std::ranges::all_of(
      profile.rows, [](const ProfileRow& row) { return std::isfinite(row.time) && std::isfinite(row.dist); });
  return finite ? std::optional(profile) : std::nullopt;
}

OutputTrace TraceOutput(const PlannedMove& move, const OutputChange& change, MoveProfile& profile) {
  const Kinematics k(move);
  const bool low = change.state == 1 || change.state == 3;
  const bool pulse = change.state >= 2;
  const int before = low ? 1 : 0;
  const int after = 1 - before;
  const double total = profile.TotalTime();
  const auto end = static_cast<float>(total);
  const auto whole = static_cast<float>(k.S);
  const auto behind = static_cast<float>(kBehindEnd * k.S);
  const auto pulse_end = static_cast<float>(total + change.pulse / 1000);
  if (pulse) profile.points.push_back({pulse_end, 0, behind});
  OutputTrace trace;
  if (change.during) {
    trace.dist = std::min<double>(change.dist, k.S);
    trace.time = TimeAt(k, profile, trace.dist);
    const auto time = static_cast<float>(trace.time);
    const auto dist = static_cast<float>(trace.dist);
    trace.points = {{0, before, 0}, {time, before, dist}, {time, after, dist}, {end, after, whole}};
    return trace;
  }
  trace.dist = k.S;
  trace.time = total;
  trace.points = {{0, before, 0}, {end, before, whole}, {end, after, whole}};
  if (pulse)
    trace.points.insert(trace.points.end(), {{pulse_end, after, behind}, {pulse_end, before, behind}});
  return trace;
}

}  // namespace tavlo
