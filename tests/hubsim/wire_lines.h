// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <string>
#include <vector>

#include "hubsim/program/memory.h"

namespace tavlo::hubsim {

/// Lines of a program as they go over the wire, written out by hand. Lines and axes are 0-based.

inline std::string Bytes(const std::vector<int>& values) {
  std::string bytes;
  for (const int value : values) bytes += static_cast<char>(value);
  return bytes;
}

inline std::string Big2(int value) {
  return Bytes({value / 256, value % 256});
}
inline std::string Big3(int value) {
  return Bytes({value / 65536, value / 256 % 256, value % 256});
}

inline constexpr int kProceed = 0x40;
inline constexpr int kWaitThis = 0x80;

/// The feed's common head with the usual 3 rev/s and 100 rev/s/s.
struct Feed {
  int axis = 0;
  int distance = 20000;
  int flags = 0;
  int wait = 0;
  int speed = 120;
  int accel = 100;
  int decel = 100;
};

inline std::string FeedHead(int code, const Feed& feed) {
  return Bytes({code | feed.wait, feed.flags}) + Big2(feed.speed) + Big2(feed.accel) + Big2(feed.decel) +
         Big3(feed.distance);
}

inline std::string FeedLength(const Feed& feed) {
  return FeedHead(0, feed) + Bytes({feed.axis});
}
inline std::string FeedPosition(const Feed& feed) {
  return FeedHead(15, feed) + Bytes({feed.axis});
}
inline std::string FeedReturn(const Feed& feed, int speed, int hundredths) {
  return FeedHead(1, feed) + Big2(speed) + Big2(hundredths) + Bytes({feed.axis});
}
inline std::string FeedSensor(const Feed& feed, int input, int condition) {
  return FeedHead(2, feed) + Bytes({input, condition, feed.axis});
}
inline std::string FeedSensorReturn(const Feed& feed, int input, int condition, int speed, int hundredths) {
  return FeedHead(3, feed) + Bytes({input, condition}) + Big2(speed) + Big2(hundredths) + Bytes({feed.axis});
}
inline std::string FeedSafety(const Feed& feed, int input, int condition, int safety, int line) {
  return FeedHead(24, feed) + Bytes({input, condition}) + Big3(safety) + Bytes({line, feed.axis});
}
inline std::string FeedOutput(const Feed& feed, int at, int output, int action, int width_2ms) {
  return FeedHead(21, feed) + Big3(at) + Bytes({output, action, width_2ms, feed.axis});
}
inline std::string FeedChange(const Feed& feed, int at, int speed) {
  return FeedHead(22, feed) + Big3(at) + Big2(speed) + Bytes({feed.axis});
}
inline std::string SeekHome(int axis, int direction, int input, int condition) {
  return Bytes({12, direction}) + Big2(120) + Big2(100) + Big2(100) + Bytes({input, condition, axis});
}
inline std::string StartStop(int kind, int axis, int direction = 0, int speed = 120, int accel = 100) {
  return Bytes({31, kind * 16 + direction}) + Big2(speed) + Big2(accel) + Bytes({axis});
}
inline std::string WaitTime(int hundredths) {
  return Bytes({4}) + Big2(hundredths);
}
inline std::string WaitInput(int axis, int input, int condition) {
  return Bytes({5, input, condition, 0}) + Big2(40) + Big2(100) + Bytes({axis});
}
inline std::string GoTo(int line, int wait = 0) {
  return Bytes({6 | wait, line});
}
inline std::string Repeat(int loop, int count, int flags = 0) {
  return Bytes({7, flags}) + Big2(count) + Bytes({loop});
}
inline std::string EndRepeat(int loop, int line) {
  return Bytes({8, line, loop});
}
inline std::string ResetLoop(int loop, int line) {
  return Bytes({25, line, loop});
}
inline std::string SetOutput(int axis, int output, int action, int ticks = 1) {
  return Bytes({9, output, action}) + Big2(ticks) + Bytes({axis});
}
inline std::string IfInput(int axis, int input, int condition, int line, int wait = 0) {
  return Bytes({10 | wait, input, condition, line, axis});
}
inline std::string IfInputs(int axis, int states, int mask, int line, int mode, int drive_states = 0,
                            int drive_mask = 0) {
  return Bytes({20, states, mask, line, mode, axis, drive_states, drive_mask});
}
inline std::string WaitInputs(int axis, int states, int mask, int mode, int drive_states = 0,
                              int drive_mask = 0) {
  return Bytes({23, states, mask, mode, axis, drive_states, drive_mask});
}
inline std::string IfMoving(int axis, int line) {
  return Bytes({30, line, axis});
}
inline std::string Call(int line) {
  return Bytes({28, line});
}
inline std::string Return() {
  return Bytes({29});
}
inline std::string Empty() {
  return Bytes({11});
}
inline std::string Comment(const std::string& text) {
  return Bytes({13}) + text + (text.size() < 27 ? "\xFF" : "");
}
inline std::string SetPosition(int axis, int direction, int distance) {
  return Bytes({17, direction}) + Big3(distance) + Bytes({axis});
}
inline std::string LearnPosition(int axis, int variable) {
  return Bytes({27, variable, axis});
}
inline std::string MotorPower(int axis, bool on) {
  return Bytes({16, on ? 1 : 0, 1, 0, axis});
}
inline std::string MotorCurrent(int axis, int whole, int hundredths) {
  return Bytes({19, whole, hundredths, axis});
}
inline std::string Display(int pool_offset) {
  return Bytes({14, 3}) + Big2(pool_offset) + Bytes({0});
}

/// One axis's block: a model with 20000 steps per revolution and per unit, limit switches closed.
inline std::string AxisBlockOf(int model, int settings = 0, char limits = '5') {
  return Bytes({1, 50, 2, limits, model}) + Big2(8000) + Bytes({0}) + Big3(20000) + Bytes({3}) +
         "rev Axis 1  " + Big3(40) + Bytes({0, 0, 0, 0, settings});
}

/// Blocks of eight axes of one model; `settings` are the last bytes.
inline std::string SystemOf(int model, const std::vector<int>& settings = {}) {
  std::string system;
  for (int axis = 0; axis < kAxisCount; ++axis) {
    const auto index = static_cast<std::size_t>(axis);
    system += AxisBlockOf(model, index < settings.size() ? settings[index] : 0);
  }
  return system;
}

}  // namespace tavlo::hubsim
