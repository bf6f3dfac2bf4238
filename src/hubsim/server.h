// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <signal.h>

#include <memory>
#include <optional>
#include <string>

#include "hubsim/console.h"
#include "hubsim/device_link.h"
#include "hubsim/hub.h"
#include "hubsim/journal.h"
#include "hubsim/line_pacer.h"
#include "hubsim/pty.h"

namespace tavlo::hubsim {

struct ServerOptions {
  std::string link;
  bool pace = false;
  double latency_s = 0;  ///< added to what goes to the PC
  std::string journal;   ///< file name, empty for none
};

/// Mounts a hub on a pseudo terminal and on this process's standard input and output.
class Server {
 public:
  /// Throws std::runtime_error if the link, the terminal or the journal cannot be had.
  Server(Hub& hub, const ServerOptions& options);

  /// "{link} -> {terminal}".
  [[nodiscard]] std::string Where() const;
  /// Serves until `quit`, SIGINT, SIGTERM or SIGHUP. Blocks in the system while there is nothing to do.
  void Run();

 private:
  void Wait();
  [[nodiscard]] std::optional<double> NextEvent() const;
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
  std::optional<double> cut_by_;  ///< the cable comes off, at the latest then
};

}  // namespace tavlo::hubsim
