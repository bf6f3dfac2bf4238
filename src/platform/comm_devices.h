// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <functional>
#include <string>

namespace tavlo {

/// The device that a Comm leads to at one moment.
struct CommDevice {
  /// A path, or a name on Windows. If no device exists, the place that was looked at first.
  std::string device;
  bool there = false;
  /// Why the Comm may lead to another device in other programs: this user's links could not be looked for
  /// where the system keeps such things. A sentence without its full stop; empty if there is no doubt.
  std::string doubt;
};

/// The devices behind Comm 1 to 8. They come and go while the program runs.
class CommDevices {
 public:
  virtual ~CommDevices() = default;
  /// Returns the state at this moment. `number` is 1 to 8.
  [[nodiscard]] virtual CommDevice Look(int number) const = 0;
  /// Called, only from the event loop, when a device may have come or gone since the last call.
  std::function<void()> OnChange;
};

}  // namespace tavlo
