// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <functional>
#include <string>

namespace tavlo {

/// What a Comm stands for at one moment.
struct CommDevice {
  /// A path, or a name on Windows. Where nothing is there, what was looked for first.
  std::string device;
  bool there = false;
  /// A sentence without its end where the Comm may stand for another device elsewhere, because the links of
  /// this user could not be looked for where the system keeps such things; else empty.
  std::string doubt;
};

/// The devices behind Comm 1 to 8. They come and go while the program runs.
class CommDevices {
 public:
  virtual ~CommDevices() = default;
  /// Looks at this moment. `number` is 1 to 8.
  [[nodiscard]] virtual CommDevice Look(int number) const = 0;
  /// A device may have come or gone since the last call. Called from the event loop only.
  std::function<void()> OnChange;
};

}  // namespace tavlo
