// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "qt/gui/held_key.h"

#include <QKeyEvent>

namespace tavlo {
namespace {

constexpr quint64 kSameMoment = 2;  ///< milliseconds

}  // namespace

bool HeldKey::Repeats(const QKeyEvent& event) {
  if (event.type() == QEvent::KeyRelease) {
    released_ = event.key();
    released_at_ = event.timestamp();
    return false;
  }
  if (event.isAutoRepeat()) return true;
  return released_at_ != 0 && event.key() == released_ && event.timestamp() - released_at_ <= kSameMoment;
}

}  // namespace tavlo
