// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <signal.h>

#include <array>
#include <memory>
#include <optional>
#include <string>

#include "hubsim/hub.h"
#include "hubsim/mount/console.h"
#include "hubsim/mount/device_link.h"
#include "hubsim/mount/journal.h"
#include "hubsim/mount/pty.h"
#include "hubsim/wire/line_pacer.h"

namespace tavlo::hubsim {

struct ServerOptions {
  std::string link;
  bool pace = false;
  double latency_s = 0;  ///< added to what goes to the PC
  std::string journal;   ///< file name, empty for none
};

/// The signals that end the hub in order, link and lock taken away.
inline constexpr std::array<int, 3> kStopSignals{SIGINT, SIGTERM, SIGHUP};

/// Mounts a hub on a pseudo terminal and on this process's standard input and output.
class Server {
 public:
  /// Throws std::runtime_error if the link, the terminal or the journal cannot be had.
  Server(Hub& hub, const ServerOptions& options);

  /// "{link} -> {terminal}".
  [[nodiscard]] std::string Where() const;
  /// Says on standard output that the hub is ready for a PC.
  void Announce() const;
  /// Serves until `quit`, SIGINT, SIGTERM or SIGHUP. Blocks in the system while there is nothing to do.
  void Run();

  // In place of `Run`, for an event loop of the caller's. The caller must call `Serve` when one of the two
  // inputs can be read, at `NextEvent`, and after everything that it did to the hub itself. The stop signals
  // are blocked; the caller looks after them.

  /// Does what there is to do and returns.
  void Serve();
  /// When there is something to do next, on the clock of `Now`; empty if nothing is to do before bytes come.
  [[nodiscard]] std::optional<double> NextEvent() const;
  /// -1 while the cable is off.
  [[nodiscard]] int PtyFd() const { return pty_ ? pty_->Fd() : -1; }
  /// Whether standard input is to be read: it has not ended, and it does not rest after too long a line.
  [[nodiscard]] bool ReadsConsole() const { return stdin_open_ && !console_rests_until_; }
  /// `quit` was given.
  [[nodiscard]] bool Quitting() const { return console_.Quitting(); }
  /// Seconds on the clock that the hub lives by, CLOCK_MONOTONIC.
  [[nodiscard]] static double Now();

 private:
  void Wait();
  void DoRound();
  void ServePty(double now);
  void ServeConsole(double now);
  void ServeCable(double now);
  void CollectOutput(double at);
  void WriteOut();

  sigset_t wait_mask_;  ///< first, so that no signal can leave a link behind
  Hub& hub_;
  Console console_;
  DeviceLink link_;
  std::unique_ptr<Pty> pty_;  ///< empty while the cable is off
  LinePacer from_pc_;
  LinePacer to_pc_;
  Journal journal_;
  std::string unsent_;
  double unsent_since_ = 0;
  double last_progress_ = 0;  ///< when something of it last went out
  std::string typed_;
  bool stdin_open_ = true;
  bool stdin_ready_ = false;
  std::optional<double> console_rests_until_;
  std::optional<double> cut_by_;  ///< the cable comes off, at the latest then
};

}  // namespace tavlo::hubsim
