// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <algorithm>
#include <string>
#include <utility>

#include "hubsim/hub.h"
#include "link/receive.h"
#include "support/fake_desk.h"

namespace tavlo::testing {

/// The simulated hub in memory, at the other end of a line without a pace. Time passes only in waits.
class SimPort : public SerialPort {
 public:
  SimPort(FakeClock& clock, hubsim::HubOptions options) : hub(std::move(options)), clock_(clock) {}

  void CommPort(int value) override { number_ = value; }
  [[nodiscard]] int CommPort() const override { return number_; }
  void Settings(std::string_view) override {}
  [[nodiscard]] std::optional<std::string> PortOpen(bool open) override {
    is_open_ = open;
    return std::nullopt;
  }
  [[nodiscard]] bool PortOpen() const override { return is_open_ && !hub.Unplugged(); }
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
  void Output(std::string_view bytes) override {
    if (!PortOpen()) return;
    sent += bytes;
    hub.Receive(bytes, clock_.now);
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

  hubsim::Hub hub;
  std::string sent;

 private:
  void Collect() { buffer_ += hub.TakeOutput(); }
  /// Goes to the hub's next event, or to the limit; false once it is there.
  bool PassUntil(double limit) {
    if (clock_.now >= limit) return false;
    const auto next = hub.NextEvent();
    clock_.now = next && *next < limit ? std::max(clock_.now, *next) : limit;
    hub.Advance(clock_.now);
    return true;
  }

  FakeClock& clock_;
  std::string buffer_;
  int number_ = 1;
  int threshold_ = 1;
  bool is_open_ = true;
};

/// A session whose hub is simulated in memory. `road` is the Desk to work with.
struct SimDesk : FakeDesk {
  explicit SimDesk(hubsim::HubOptions options = {}) : sim(clock, std::move(options)) {
    sim.OnComm = [this] { NewOnComm(road); };
    loop.on_yield = [this] { sim.DeliverEvents(); };
  }

  SimPort sim;
  Desk road{source, sim,     boxes, clock,    loop,    beeper, view,
            run,    downbox, upbox, settings, dialogs, files,  loading};
};

}  // namespace tavlo::testing
