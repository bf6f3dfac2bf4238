// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "hubsim/program/halt.h"
#include "hubsim/wire/failure.h"
#include "hubsim/wire/outbox.h"

namespace tavlo::hubsim {

/// Words the messages that the hub sends of its own accord: a header of 128 or more and three bytes below
/// 128. Lines and axes are 0-based.
class Reporter {
 public:
  Reporter(Outbox& outbox, const FailurePlan& failure) : outbox_(outbox), failure_(failure) {}

  /// A failure that counts messages or bytes counts from here on.
  void CountAnew() { sent_ = told_bytes_ = 0; }

  /// The two bytes of the hub's identity.
  void Greeting(std::uint8_t firmware, std::uint8_t model);
  void LineStarted(int line);
  void LineFinished(int line);
  void LineConcurrent(int line);
  void StepDone();
  /// Shows the marker beside a line, or hides it.
  void ProgramCounter(std::optional<int> line);
  /// `line` is the line that ran.
  void Halted(const Halt& halt, int line);
  void Status(int axis, std::uint8_t inputs, std::uint8_t outputs);
  /// `inputs` has bit i for Xi.
  void ExtendedStatus(int axis, std::uint8_t inputs, std::uint8_t outputs);
  /// Bytes for the operator terminal, all below 128. They are not counted as messages.
  void Text(std::string_view bytes);

 private:
  [[nodiscard]] bool Silent() const;
  void Send(int header, int b2 = 0, int b3 = 0, int b4 = 0);
  void Tell(std::string_view bytes);

  Outbox& outbox_;
  const FailurePlan& failure_;
  std::int64_t sent_ = 0;
  std::int64_t told_bytes_ = 0;
};

}  // namespace tavlo::hubsim
