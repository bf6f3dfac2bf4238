// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QtGlobal>

class QKeyEvent;

namespace tavlo {

/// Tells the repeats of a held key from a key that is pressed again. An event's own mark of a repeat is not
/// reliable: X sends a release and a press for each repeat, and they are marked only if both have arrived
/// when the first is looked at. But both carry the same time, which no finger can do.
class HeldKey {
 public:
  /// Must see every press and release of a key in order. Returns true for a press that is a repeat.
  [[nodiscard]] bool Repeats(const QKeyEvent& event);

 private:
  int released_ = 0;
  quint64 released_at_ = 0;  ///< milliseconds; 0 if events carry no time
};

}  // namespace tavlo
