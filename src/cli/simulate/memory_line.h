// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string>

#include "cli/console/environment.h"
#include "hubsim/hub.h"

namespace tavlo::cli {

/// The line to a simulated hub in memory. Bytes take no time on it, and what is waited for is there at once:
/// time is the hub's own and passes only in waits.
class MemoryLine : public HubLine, private SerialPort, private Clock, private EventLoop {
 public:
  explicit MemoryLine(const hubsim::HubOptions& options) : hub_(options) {}

  [[nodiscard]] hubsim::Hub& Hub() { return hub_; }
  /// Seconds since the line was made.
  [[nodiscard]] double Now() const { return now_; }

  [[nodiscard]] SerialPort& Port() override { return *this; }
  [[nodiscard]] Clock& Time() override { return *this; }
  [[nodiscard]] EventLoop& Loop() override { return *this; }
  void Wait(double seconds, const Feed*) override { WaitForInput(seconds); }
  [[nodiscard]] bool IsInterrupted() const override { return false; }

 private:
  void CommPort(int) override {}
  [[nodiscard]] int CommPort() const override { return 1; }
  void Settings(std::string_view) override {}
  Outcome PortOpen(bool) override { return {}; }
  [[nodiscard]] bool PortOpen() const override { return true; }
  void RThreshold(int bytes) override { threshold_ = bytes; }
  [[nodiscard]] int RThreshold() const override { return threshold_; }
  void ParityReplace(std::string_view) override {}
  [[nodiscard]] int InBufferCount() override { return static_cast<int>(received_.size()); }
  [[nodiscard]] std::string Input() override;
  void Output(std::string_view bytes) override;
  void WaitForInput(double seconds) override;
  [[nodiscard]] int CommEvent() const override { return 0; }
  [[nodiscard]] double Timer() override { return now_; }
  void Yield() override {}
  void WaitSecs(double seconds) override { PassUntil(now_ + seconds); }

  void PassUntil(double when);

  hubsim::Hub hub_;
  double now_ = 0;
  int threshold_ = 0;
  std::string received_;
};

}  // namespace tavlo::cli
