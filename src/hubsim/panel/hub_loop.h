// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <QObject>
#include <memory>

#include "hubsim/mount/server.h"
#include "hubsim/mount/unique_fd.h"

class QSocketNotifier;

namespace tavlo::hubsim {

/// The stop signals as something that can be read. To be made while the process has one thread, for a thread
/// inherits that they are blocked.
class StopSignals {
 public:
  /// Throws std::runtime_error.
  StopSignals();
  [[nodiscard]] int Fd() const { return fd_.Get(); }

 private:
  UniqueFd fd_;
};

/// Serves a hub from the toolkit's event loop, nested ones too.
class HubLoop : public QObject {
  Q_OBJECT

 public:
  /// Throws std::runtime_error. `server` and `stop_signals` outlive the loop.
  HubLoop(Server& server, const StopSignals& stop_signals);
  ~HubLoop() override;

  /// Lets the hub do what is due. To be called after everything that was done to the hub.
  void Serve();

 signals:
  /// `quit` was typed, or a stop signal came.
  void Ended();

 private:
  std::unique_ptr<QSocketNotifier> ServeOn(int fd);
  void Rearm();

  Server& server_;
  // The toolkit's own timers count milliseconds, twice the time of a byte on the wire.
  UniqueFd timer_;
  std::unique_ptr<QSocketNotifier> on_time_;
  std::unique_ptr<QSocketNotifier> on_stop_;
  std::unique_ptr<QSocketNotifier> on_console_;
  std::unique_ptr<QSocketNotifier> on_pty_;
};

}  // namespace tavlo::hubsim
