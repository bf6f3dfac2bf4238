// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <algorithm>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "hubsim/hub.h"
#include "hubsim/wire/line_pacer.h"
#include "link/receive.h"
#include "support/fake_desk.h"
#include "support/waiting_port.h"

namespace tavlo::testing {

/// A hub of the model that a program is for.
inline hubsim::HubOptions OptionsFor(const Program& program) {
  hubsim::HubOptions options;
  if (program.HubIndex == HubQuad) options.model = hubsim::HubModel::Quad;
  return options;
}

/// How a line carries its bytes: each in its time on the wire or at once, and what the hub says so much
/// later.
struct LineTiming {
  bool paced = false;
  double latency_s = 0;
};

/// The simulated hub in memory, at the other end of a line. Time passes only in waits.
class SimPort : public WaitingPort {
 public:
  SimPort(FakeClock& clock, hubsim::HubOptions options, LineTiming timing = {})
      : WaitingPort(clock),
        hub(std::move(options)),
        to_hub_(timing.paced, 0),
        from_hub_(timing.paced, timing.latency_s) {}

  Outcome PortOpen(bool open) override {
    is_open_ = open;
    return {};
  }
  [[nodiscard]] bool PortOpen() const override { return is_open_ && !hub.Unplugged(); }
  void Output(std::string_view bytes) override {
    if (!PortOpen()) return;
    sent += bytes;
    to_hub_.Send(bytes, clock_.now);
    Collect();
  }

  hubsim::Hub hub;
  std::string sent;
  /// The hub's journal: what it takes and what it says, as it does so.
  std::function<void(bool to_hub, std::string_view bytes, double at)> on_traffic;

 private:
  void Collect() override {
    while (const auto arrival = to_hub_.Take(clock_.now)) {
      if (on_traffic) on_traffic(true, arrival->bytes, arrival->at);
      hub.Receive(arrival->bytes, arrival->at);
      Send(arrival->at);
    }
    Send(clock_.now);
    while (const auto arrival = from_hub_.Take(clock_.now)) buffer_ += arrival->bytes;
  }
  bool PassUntil(double limit) override {
    if (clock_.now >= limit) return false;
    double next = limit;
    for (const auto& when : {hub.NextEvent(), to_hub_.NextArrival(), from_hub_.NextArrival()}) {
      if (when) next = std::min(next, *when);
    }
    clock_.now = std::max(clock_.now, next);
    hub.Advance(clock_.now);
    return true;
  }

  void Send(double at) {
    const std::string bytes = hub.TakeOutput();
    if (on_traffic && !bytes.empty()) on_traffic(false, bytes, at);
    from_hub_.Send(bytes, at);
  }

  hubsim::LinePacer to_hub_;
  hubsim::LinePacer from_hub_;
  bool is_open_ = true;
};

/// A session whose hub is simulated in memory. `road` is the Desk to work with.
struct SimDesk : FakeDesk {
  explicit SimDesk(hubsim::HubOptions options = {}, LineTiming timing = {})
      : sim(clock, std::move(options), timing) {
    sim.OnComm = [this] { NewOnComm(road); };
    loop.on_yield = [this] { sim.DeliverEvents(); };
    loop.pass = [this](double seconds) { sim.RunEventLoop(seconds); };
  }

  SimPort sim;
  Desk road = DeskOn(sim, files);
};

}  // namespace tavlo::testing
