// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <map>
#include <ostream>
#include <string>
#include <vector>

#include "support/bytes.h"
#include "support/fake_desk.h"

namespace tavlo::testing {

inline void PrintTo(const ShownBox& box, std::ostream* out) {
  *out << '"' << box.text << "\" titled \"" << box.title << "\", buttons " << static_cast<int>(box.buttons)
       << ", icon " << static_cast<int>(box.icon);
}

/// A hub at the other end of the fake line. It answers what it is asked at once, unless a test has
/// something else in store for a place: "C", "D", "R", "E", "F", "line 1" to "line 200", "system 1" to
/// "system 8" (each 32nd byte), "pool 1" and up (each block), "K".
///
/// While a program is coming in it takes each output as one line, until it has 200, then 256 single
/// bytes, then blocks of the pool until one ends with 0.
class ScriptedHub {
 public:
  explicit ScriptedHub(FakePort& port) : port_(port) {
    port.on_output = [this](const std::string& bytes) { Take(bytes); };
  }

  /// What is answered at a place instead of the usual; empty for silence.
  std::map<std::string, std::string> instead;
  /// Seconds before the answer at a place.
  std::map<std::string, double> delays;
  /// Called when a place has been reached, before it is answered.
  std::function<void(const std::string& place)> on_place;

  int revision = 38;
  int model = 8;
  /// A pair for each axis: the model that the program expects and the identity that was found.
  std::string drives = Bytes({1, 5, 4, 3, 3, 2, 2, 7, 5, 4, 7, 6, 8, 9, 0, 0});
  /// Three digits for each axis.
  std::string drive_revisions = "189189189189189189189189";
  std::string window = "X";

  std::vector<std::string> lines;
  std::string system;
  /// Sizes of the single outputs that brought the system's bytes.
  std::vector<std::size_t> system_outputs;
  std::vector<std::string> pool_blocks;
  /// What came outside a download.
  std::vector<std::string> commands;

  [[nodiscard]] std::string Pool() const {
    std::string pool;
    for (const std::string& block : pool_blocks) pool += block;
    return pool;
  }
  [[nodiscard]] int Sum() const {
    int sum = Sum(system) + Sum(Pool());
    for (const std::string& line : lines) sum += Sum(line);
    return sum;
  }

 private:
  enum class Phase { Commands, Lines, System, Pool };

  static int Sum(const std::string& bytes) {
    int sum = 0;
    for (const char c : bytes) sum += static_cast<unsigned char>(c);
    return sum;
  }

  void Take(const std::string& bytes) {
    switch (phase_) {
      case Phase::Commands: TakeCommand(bytes); break;
      case Phase::Lines: TakeLine(bytes); break;
      case Phase::System: TakeSystem(bytes); break;
      case Phase::Pool: TakePool(bytes); break;
    }
  }

  void TakeCommand(const std::string& bytes) {
    commands.push_back(bytes);
    if (bytes == "C") Answer("C", Bytes({revision, model}));
    if (bytes == "D") Answer("D", drives);
    if (bytes == "R") Answer("R", drive_revisions);
    if (bytes == "E") Answer("E", window);
    if (bytes == "K") Answer("K", Bytes({Sum() >> 8 & 255, Sum() & 255}));
    if (bytes == "F") {
      phase_ = Phase::Lines;
      lines.clear();
      system.clear();
      pool_blocks.clear();
      Answer("F", "Y");
    }
  }

  void TakeLine(const std::string& bytes) {
    lines.push_back(bytes);
    if (lines.size() == 200) phase_ = Phase::System;
    Answer("line " + std::to_string(lines.size()), "Y");
  }

  void TakeSystem(const std::string& bytes) {
    system += bytes;
    system_outputs.push_back(bytes.size());
    if (system.size() == 256) phase_ = Phase::Pool;
    if (system.size() % 32 == 0) Answer("system " + std::to_string(system.size() / 32), "Y");
  }

  void TakePool(const std::string& bytes) {
    pool_blocks.push_back(bytes);
    if (bytes.empty() || bytes.back() == '\0') phase_ = Phase::Commands;
    Answer("pool " + std::to_string(pool_blocks.size()), "Y");
  }

  void Answer(const std::string& place, const std::string& usual) {
    if (on_place) on_place(place);
    const auto other = instead.find(place);
    const std::string& reply = other == instead.end() ? usual : other->second;
    const auto delay = delays.find(place);
    if (!reply.empty()) port_.Reply(reply, delay == delays.end() ? 0 : delay->second);
  }

  FakePort& port_;
  Phase phase_ = Phase::Commands;
};

}  // namespace tavlo::testing
