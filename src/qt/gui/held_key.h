// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QtGlobal>

class QKeyEvent;

namespace tavlo {

/// Tells what a held key repeats from a key that is pressed again. The mark that an event has of its own is
/// not always there: X sends a release and a press for each repeat, and they are marked only where both have
/// come in by the time the first is looked at. But they are of the same moment, which no finger manages.
class HeldKey {
 public:
  /// To be shown every press and release of a key in their order. True for a press that is a repeat.
  [[nodiscard]] bool Repeats(const QKeyEvent& event);

 private:
  int released_ = 0;
  quint64 released_at_ = 0;  ///< milliseconds; 0 where events bear no time
};

}  // namespace tavlo
