// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "hubsim/hub.h"
#include "link/receive.h"
#include "support/waiting_port.h"

namespace tavlo::testing {

enum class Way { ToHub, FromHub };

enum class LineFault {
  Drop,
  FlipBit,    ///< the bit of the plan
  Duplicate,  ///< the copy comes in the same read
  Echo,       ///< the copy comes by itself, when the PC has next sent something
  ExtraByte,  ///< in front; which one goes with the position
  ExtraZero,  ///< in front
  Delay,      ///< of the byte and of all behind it, past the limit of whoever waits
  PortGone,   ///< the byte does not arrive any more, and nothing does until the port is opened again
};

/// One fault at one byte, counted from 0 since `Start`.
struct FaultPlan {
  Way way = Way::ToHub;
  std::size_t at = 0;
  LineFault fault = LineFault::Drop;
  int bit = 0;
};

/// The simulated hub in memory behind a line on which one byte suffers. Time passes only in waits. Short
/// answers come at once, a long one at the pace of the line, its last bytes one by one.
class FaultyLine : public WaitingPort {
 public:
  explicit FaultyLine(FakeClock& clock) : WaitingPort(clock) { hub_.emplace(hubsim::HubOptions{}); }

  Outcome PortOpen(bool open) override {
    if (open) gone_ = false;
    is_open_ = open;
    to_hub_.clear();
    from_hub_.clear();
    buffer_.clear();
    own_read_ = 0;
    return {};
  }
  [[nodiscard]] bool PortOpen() const override { return is_open_ && !gone_; }
  [[nodiscard]] std::string Input() override {
    if (own_read_ == 0) return WaitingPort::Input();
    Collect();
    std::string first = buffer_.substr(0, own_read_);
    buffer_.erase(0, own_read_);
    own_read_ = 0;
    return first;
  }
  void Output(std::string_view bytes) override {
    if (!PortOpen()) return;
    if (!echo_.empty()) {
      own_read_ = buffer_.size() + echo_.size();
      buffer_ += std::exchange(echo_, {});
    }
    Send(Way::ToHub, std::string(bytes));
    Collect();
  }
  /// Counts bytes from here on, and lets one of them suffer.
  void Start(const std::optional<FaultPlan>& plan, double delay = 0) {
    plan_ = plan;
    delay_ = delay;
    carried_ = {};
    echo_.clear();
    struck_.reset();
  }
  /// Another hub, with an empty memory.
  void FreshHub(const hubsim::HubOptions& options = {}) {
    hub_.emplace(options);
    asked_hub_ = false;
    hub_spoke_ = true;
    to_hub_.clear();
    from_hub_.clear();
    buffer_.clear();
    own_read_ = 0;
  }

  [[nodiscard]] hubsim::Hub& TheHub() {
    asked_hub_ = false;
    hub_spoke_ = true;
    return *hub_;
  }
  [[nodiscard]] std::size_t Carried(Way way) const { return carried_[static_cast<std::size_t>(way)]; }
  /// The byte that the fault came upon; nothing before it has.
  [[nodiscard]] std::optional<char> Struck() const { return struck_; }

  /// Changes bytes on their way beside the plan; `first` is the place of the first of them.
  std::function<void(Way way, std::size_t first, std::string& bytes)> garble;

 private:
  struct Lot {
    double when;
    std::string bytes;
  };

  static constexpr double kBytesPerSecond = 1920;
  static constexpr std::size_t kLot = 512;
  static constexpr std::size_t kLastBytes = 20;
  static constexpr std::array<unsigned char, 8> kExtraBytes = {'Y', 0xFF, 'F', 'K', 'X', 0x0B, 'U', 'H'};

  [[nodiscard]] std::deque<Lot>& QueueOf(Way way) { return way == Way::ToHub ? to_hub_ : from_hub_; }

  void Put(Way way, double when, std::string bytes) {
    if (bytes.empty()) return;
    std::deque<Lot>& queue = QueueOf(way);
    if (!queue.empty()) when = std::max(when, queue.back().when);
    queue.push_back({when, std::move(bytes)});
  }

  /// What the hub says comes at the line's pace: in lots first, the last bytes of a long answer one by one.
  /// Without a pace a hub that runs and a PC that acknowledges would never let time pass.
  void Pace(Way way, double start, const std::string& bytes) {
    if (way == Way::ToHub) return Put(way, start, bytes);
    for (std::size_t at = 0; at < bytes.size();) {
      const std::size_t left = bytes.size() - at;
      const bool in_lots = bytes.size() <= kLastBytes || left > kLastBytes;
      const std::size_t size = !in_lots                     ? 1
                               : bytes.size() <= kLastBytes ? left
                                                            : std::min(kLot, left - kLastBytes);
      at += size;
      Put(way, start + static_cast<double>(at) / kBytesPerSecond, bytes.substr(at - size, size));
    }
  }

  void Send(Way way, std::string bytes) {
    if (bytes.empty() || gone_) return;
    std::size_t& carried = carried_[static_cast<std::size_t>(way)];
    const std::size_t first = carried;
    carried += bytes.size();
    if (garble) garble(way, first, bytes);
    if (!plan_ || plan_->way != way || plan_->at < first || plan_->at >= carried)
      return Pace(way, clock_.now, bytes);
    Suffer(way, std::move(bytes), plan_->at - first);
  }

  void Suffer(Way way, std::string bytes, std::size_t at) {
    struck_ = bytes[at];
    switch (plan_->fault) {
      case LineFault::Drop: bytes.erase(at, 1); break;
      case LineFault::FlipBit: bytes[at] = static_cast<char>(bytes[at] ^ (1 << plan_->bit)); break;
      case LineFault::Duplicate: bytes.insert(at, 1, bytes[at]); break;
      case LineFault::Echo: echo_ = bytes[at]; break;
      case LineFault::ExtraByte:
        bytes.insert(at, 1, static_cast<char>(kExtraBytes[plan_->at % kExtraBytes.size()]));
        break;
      case LineFault::ExtraZero: bytes.insert(at, 1, '\0'); break;
      case LineFault::Delay:
        Pace(way, clock_.now, bytes.substr(0, at));
        return Pace(way, (QueueOf(way).empty() ? clock_.now : QueueOf(way).back().when) + delay_,
                    bytes.substr(at));
      case LineFault::PortGone:
        Pace(way, clock_.now, bytes.substr(0, at));
        going_ = true;
        return;
    }
    Pace(way, clock_.now, bytes);
  }

  /// Hands over what is due.
  void Collect() override {
    for (;;) {
      if (!to_hub_.empty() && to_hub_.front().when <= clock_.now) {
        const std::string bytes = std::move(to_hub_.front().bytes);
        to_hub_.pop_front();
        TheHub().Receive(bytes, clock_.now);
      } else if (!from_hub_.empty() && from_hub_.front().when <= clock_.now) {
        buffer_ += from_hub_.front().bytes;
        from_hub_.pop_front();
      } else if (std::exchange(hub_spoke_, false)) {
        Send(Way::FromHub, hub_->TakeOutput());
      } else {
        break;
      }
    }
    if (going_ && to_hub_.empty() && from_hub_.empty()) {
      going_ = false;
      gone_ = true;
      // What had arrived goes with the port.
      buffer_.clear();
      own_read_ = 0;
    }
  }

  bool PassUntil(double limit) override {
    if (clock_.now >= limit) return false;
    double next = limit;
    // Nothing changes it but bytes and its own events.
    if (!std::exchange(asked_hub_, true)) hub_event_ = hub_->NextEvent();
    if (hub_event_) next = std::min(next, *hub_event_);
    if (!to_hub_.empty()) next = std::min(next, to_hub_.front().when);
    if (!from_hub_.empty()) next = std::min(next, from_hub_.front().when);
    clock_.now = std::max(clock_.now, next);
    if (hub_event_ && *hub_event_ <= clock_.now) TheHub().Advance(clock_.now);
    Collect();
    return true;
  }

  std::optional<hubsim::Hub> hub_;
  /// The hub's next event has been asked for since anything reached it.
  bool asked_hub_ = false;
  std::optional<double> hub_event_;
  /// It may have something to say.
  bool hub_spoke_ = false;
  std::deque<Lot> to_hub_;
  std::deque<Lot> from_hub_;
  /// So many bytes at the head of the buffer are a read of their own.
  std::size_t own_read_ = 0;
  std::string echo_;
  std::optional<FaultPlan> plan_;
  std::optional<char> struck_;
  double delay_ = 0;
  std::array<std::size_t, 2> carried_{};
  bool going_ = false;
  bool gone_ = false;
  bool is_open_ = true;
};

/// A session at the end of such a line. `road` is the Desk to work with.
struct FaultyDesk : FakeDesk {
  FaultyDesk() {
    line.OnComm = [this] { NewOnComm(road); };
    loop.on_yield = [this] { line.DeliverEvents(); };
    loop.pass = [this](double seconds) { line.RunEventLoop(seconds); };
  }

  [[nodiscard]] std::string ImageInHub() {
    const auto bytes = line.TheHub().MemoryImage();
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
  }
  /// Drops what the fakes have recorded, of which a sweep makes too much.
  void Forget() {
    boxes.shown.clear();
    for (FakeProgress* form : {&downbox, &upbox}) {
      form->gauges.clear();
      form->phases.clear();
    }
    view.rows.clear();
    view.scrolls.clear();
    view.counters.clear();
    run.faults.clear();
  }

  FaultyLine line{clock};
  Desk road = DeskOn(line, files);
};

}  // namespace tavlo::testing
