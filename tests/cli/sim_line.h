// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <functional>
#include <limits>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>

#include "cli/console/environment.h"
#include "support/sim_desk.h"

namespace tavlo::testing {

/// The simulated hub in memory for the companion: it outlives the commands, as a hub does. Whatever is
/// planned for a time happens in the waits.
class SimHub {
 public:
  explicit SimHub(hubsim::HubOptions options = {}, LineTiming timing = {})
      : port(*this, std::move(options), timing) {}

  /// A line to this hub.
  [[nodiscard]] std::unique_ptr<cli::HubLine> Line() { return std::make_unique<LineToSim>(*this); }

  /// Does something so many seconds from now.
  void In(double seconds, std::function<void()> action) {
    plans_.emplace(clock.now + seconds, std::move(action));
  }
  void InterruptIn(double seconds) {
    In(seconds, [this] { interrupted = true; });
  }

  class Port : public SimPort {
   public:
    Port(SimHub& sim, hubsim::HubOptions options, LineTiming timing)
        : SimPort(sim.clock, std::move(options), timing), sim_(sim) {}

    using SimPort::PortOpen;
    Outcome PortOpen(bool open) override {
      if (open && sim_.open_error) return Outcome::Failed(*sim_.open_error);
      return SimPort::PortOpen(open);
    }
    [[nodiscard]] std::string Device() const override { return sim_.device; }
    void Output(std::string_view bytes) override {
      if (sim_.traffic) sim_.traffic(true, bytes);
      SimPort::Output(bytes);
    }
    [[nodiscard]] std::string Input() override {
      std::string bytes = SimPort::Input();
      if (sim_.traffic && !bytes.empty()) sim_.traffic(false, bytes);
      return bytes;
    }
    void WaitForInput(double seconds) override {
      sim_.Pass(seconds);
      if (sim_.interrupted) throw cli::Interrupted();
    }
    void PassTime(double seconds) { SimPort::WaitForInput(seconds); }

   private:
    SimHub& sim_;
  };

  FakeClock clock;
  Port port;
  bool interrupted = false;
  std::optional<std::string> open_error;
  /// The device that it says it is.
  std::string device;
  std::string doubt;
  std::function<void(bool out, std::string_view bytes)> traffic;
  /// What the line was asked for.
  cli::PortName name;

 private:
  class Loop : public EventLoop {
   public:
    explicit Loop(SimHub& sim) : sim_(sim) {}
    void Yield() override {
      if (sim_.interrupted) throw cli::Interrupted();
    }
    void WaitSecs(double seconds) override { sim_.clock.now += seconds; }

   private:
    SimHub& sim_;
  };

  class LineToSim : public cli::HubLine {
   public:
    explicit LineToSim(SimHub& sim) : sim_(sim), loop_(sim) {
      sim_.traffic = [this](bool out, std::string_view bytes) {
        if (OnTraffic) OnTraffic(out, bytes);
      };
    }
    ~LineToSim() override { sim_.traffic = nullptr; }
    [[nodiscard]] SerialPort& Port() override { return sim_.port; }
    [[nodiscard]] Clock& Time() override { return sim_.clock; }
    [[nodiscard]] EventLoop& Loop() override { return loop_; }
    void Wait(double seconds, const cli::Feed*) override {
      if (!sim_.interrupted && sim_.port.PortOpen() && sim_.port.InBufferCount() == 0) sim_.Pass(seconds);
    }
    [[nodiscard]] bool IsInterrupted() const override { return sim_.interrupted; }
    [[nodiscard]] std::string Doubt() const override { return sim_.doubt; }

   private:
    SimHub& sim_;
    SimHub::Loop loop_;
  };

  /// Waits for bytes, or for the next plan and carries it out.
  void Pass(double seconds) {
    if (clock.now > kPatience) throw std::runtime_error("the command does not come to its end");
    const bool planned = !plans_.empty() && plans_.begin()->first <= clock.now + seconds;
    port.PassTime(planned ? std::max(plans_.begin()->first - clock.now, 0.0) : seconds);
    if (!planned || clock.now < plans_.begin()->first) return;
    const auto action = plans_.extract(plans_.begin());
    action.mapped()();
  }

  static constexpr double kPatience = 50000;
  std::multimap<double, std::function<void()>> plans_;
};

}  // namespace tavlo::testing
