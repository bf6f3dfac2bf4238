// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <algorithm>
#include <string>
#include <utility>

#include "hubsim/hub.h"
#include "link/receive.h"
#include "support/fake_desk.h"
#include "support/waiting_port.h"

namespace tavlo::testing {

/// The simulated hub in memory, at the other end of a line without a pace. Time passes only in waits.
class SimPort : public WaitingPort {
 public:
  SimPort(FakeClock& clock, hubsim::HubOptions options) : WaitingPort(clock), hub(std::move(options)) {}

  [[nodiscard]] std::optional<std::string> PortOpen(bool open) override {
    is_open_ = open;
    return std::nullopt;
  }
  [[nodiscard]] bool PortOpen() const override { return is_open_ && !hub.Unplugged(); }
  void Output(std::string_view bytes) override {
    if (!PortOpen()) return;
    sent += bytes;
    hub.Receive(bytes, clock_.now);
  }

  hubsim::Hub hub;
  std::string sent;

 private:
  void Collect() override { buffer_ += hub.TakeOutput(); }
  bool PassUntil(double limit) override {
    if (clock_.now >= limit) return false;
    const auto next = hub.NextEvent();
    clock_.now = next && *next < limit ? std::max(clock_.now, *next) : limit;
    hub.Advance(clock_.now);
    return true;
  }

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
