// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tavlo::hubsim {

/// Bytes on their way to the PC. What is put in by one call is meant to leave in one write.
class Outbox {
 public:
  void Put(std::string_view bytes);
  /// Holds back what is put in from now on, until `seconds` after the time of the last `Advance`.
  void Stall(double seconds) { stalled_until_ = now_ + seconds; }
  /// Puts `bytes` in when `Advance` reaches `when`.
  void PutAt(std::string bytes, double when);
  [[nodiscard]] std::optional<double> NextEvent() const;
  void Advance(double now);
  [[nodiscard]] std::string Take();
  /// Forgets what has not been taken.
  void Clear();

  /// Lets only `bytes` more bytes through.
  void LimitTo(std::int64_t bytes) { room_ = bytes; }
  void Unlimit() { room_.reset(); }
  /// The limit has been reached.
  [[nodiscard]] bool Exhausted() const { return room_ && *room_ <= 0; }

 private:
  struct Late {
    double when;
    std::string bytes;
  };

  void LetOut(std::string_view bytes);

  double now_ = 0;
  std::string ready_;
  std::vector<Late> late_;
  std::optional<double> stalled_until_;
  std::vector<std::string> stalled_;
  std::optional<std::int64_t> room_;
};

}  // namespace tavlo::hubsim
