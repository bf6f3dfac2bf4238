// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/wire/reporter.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace tavlo::hubsim {
namespace {

constexpr int kGreeting = 255;
constexpr int kLineStarted = 254;
constexpr int kStepDone = 253;
constexpr int kLimitHit = 252;
constexpr int kStopButton = 251;
constexpr int kStatus = 241;
constexpr int kDriveLost = 240;
constexpr int kStackOverflow = 239;
constexpr int kStackUnderflow = 238;
constexpr int kLineFinished = 237;
constexpr int kLineConcurrent = 236;
constexpr int kProgramCounter = 235;
constexpr int kExtendedOutputs = 221;
constexpr int kExtendedInputs = 213;
constexpr int kDriveDisabled = 212;
constexpr int kDriveFault = 211;

constexpr int kLargestPayload = 127;
constexpr int kNoHub = 16;

}  // namespace

bool Reporter::Silent() const {
  return failure_.mode == Failure::SilentRun && sent_ >= failure_.at;
}

void Reporter::Send(int header, int b2, int b3, int b4) {
  if (Silent()) return;
  ++sent_;
  const std::array<char, 4> message{static_cast<char>(header), static_cast<char>(b2 & kLargestPayload),
                                    static_cast<char>(b3 & kLargestPayload),
                                    static_cast<char>(b4 & kLargestPayload)};
  Tell(std::string_view(message.data(), message.size()));
}

void Reporter::Text(std::string_view bytes) {
  if (!Silent()) Tell(bytes);
}

/// Some failures come in the middle of a message.
void Reporter::Tell(std::string_view bytes) {
  const auto size = static_cast<std::int64_t>(bytes.size());
  const std::int64_t before = std::clamp<std::int64_t>(failure_.at - told_bytes_, 0, size);
  const bool here = told_bytes_ < failure_.at && failure_.at <= told_bytes_ + size;
  told_bytes_ += size;
  const auto split = static_cast<std::size_t>(before);
  if (failure_.mode == Failure::CutRun) return outbox_.Put(bytes.substr(0, split));
  if (failure_.mode != Failure::StallRun || !here) return outbox_.Put(bytes);
  outbox_.Put(bytes.substr(0, split));
  outbox_.Stall(kStallSeconds);
  outbox_.Put(bytes.substr(split));
}

void Reporter::Greeting(std::uint8_t firmware, std::uint8_t model) {
  const bool strange = failure_.mode == Failure::UnknownModel;
  Send(kGreeting, firmware, strange ? kNoHub : model);
}

void Reporter::LineStarted(int line) {
  Send(kLineStarted, line / 16, line % 16);
}
void Reporter::LineFinished(int line) {
  Send(kLineFinished, line / 16, line % 16);
}
void Reporter::LineConcurrent(int line) {
  Send(kLineConcurrent, line / 16, line % 16);
}
void Reporter::StepDone() {
  Send(kStepDone);
}

void Reporter::ProgramCounter(std::optional<int> line) {
  if (line) {
    Send(kProgramCounter, 1, *line / 16, *line % 16);
  } else {
    Send(kProgramCounter);
  }
}

void Reporter::Halted(const Halt& halt, int line) {
  // One payload byte cannot tell the lines behind the 128th apart.
  const int told_line = std::min(line, kLargestPayload);
  switch (halt.kind) {
    case HaltKind::Limit: Send(kLimitHit, halt.axis); break;
    case HaltKind::StopButton: Send(kStopButton); break;
    case HaltKind::StackOverflow: Send(kStackOverflow, told_line); break;
    case HaltKind::StackUnderflow: Send(kStackUnderflow, told_line); break;
    case HaltKind::Fault: Send(kDriveFault, halt.axis, halt.code / 128, halt.code % 128); break;
    case HaltKind::DriveDisabled: Send(kDriveDisabled, halt.axis); break;
    case HaltKind::DriveLost: Send(kDriveLost, halt.axis); break;
  }
}

void Reporter::Status(int axis, std::uint8_t inputs, std::uint8_t outputs) {
  Send(kStatus + axis, inputs % 16, inputs / 16, outputs);
}

void Reporter::ExtendedStatus(int axis, std::uint8_t inputs, std::uint8_t outputs) {
  // The drives count X1 to X7 from bit 0 on and put X0 last.
  const int turned = inputs >> 1 | (inputs & 1) << 7;
  Send(kExtendedInputs + axis, turned % 16, turned / 16);
  Send(kExtendedOutputs + axis, outputs);
}

}  // namespace tavlo::hubsim
