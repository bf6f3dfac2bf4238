// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string>
#include <utility>

#include "support/fake_desk.h"

namespace tavlo::testing {

/// A line in simulated time: bytes are taken in when somebody looks, and time passes only in waits.
class WaitingPort : public SerialPort {
 public:
  void CommPort(int value) override { number_ = value; }
  [[nodiscard]] int CommPort() const override { return number_; }
  void Settings(std::string_view) override {}
  void RThreshold(int bytes) override { threshold_ = bytes; }
  [[nodiscard]] int RThreshold() const override { return threshold_; }
  void ParityReplace(std::string_view) override {}
  [[nodiscard]] int InBufferCount() override {
    Collect();
    return static_cast<int>(buffer_.size());
  }
  [[nodiscard]] std::string Input() override {
    Collect();
    return std::exchange(buffer_, {});
  }
  void WaitForInput(double seconds) override {
    const double limit = clock_.now + seconds;
    const std::size_t before = buffer_.size();
    while (PortOpen() && buffer_.size() == before && PassUntil(limit)) Collect();
  }
  [[nodiscard]] int CommEvent() const override { return kCommEventReceive; }

  /// Lets so much time pass in the event loop, which hands over what comes.
  void RunEventLoop(double seconds) {
    const double limit = clock_.now + seconds;
    do {
      DeliverEvents();
    } while (PassUntil(limit));
    DeliverEvents();
  }
  /// Hands over what waits, and what the hub says to the answers.
  void DeliverEvents() {
    for (Collect(); threshold_ > 0 && !buffer_.empty() && OnComm; Collect()) OnComm();
  }

 protected:
  explicit WaitingPort(FakeClock& clock) : clock_(clock) {}

  /// Takes what has arrived by now into the buffer.
  virtual void Collect() = 0;
  /// Goes to the next thing that happens, or to the limit; false once it is there.
  virtual bool PassUntil(double limit) = 0;

  FakeClock& clock_;
  std::string buffer_;

 private:
  int number_ = 1;
  int threshold_ = 1;
};

}  // namespace tavlo::testing
