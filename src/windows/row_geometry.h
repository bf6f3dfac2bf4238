// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QRect>
#include <algorithm>

#include "model/instruction.h"
#include "widgets/icon_images.h"

namespace tavlo {

/// Where things are in the tall pane of all rows. From left to right: the marker of the running line, the
/// number, the arrows, the icon, the text.
struct RowGeometry {
  static constexpr int kMarkerWidth = 12;
  static constexpr int kGap = 4;
  static constexpr int kZoneWidth = 56;
  /// Left of a text.
  static constexpr int kTextMargin = 4;

  int pitch = kIconSize + 2;
  /// Side of the icon.
  int icon = kIconSize;
  int label_width = 28;
  /// Width of the part that the text may fill.
  int text_width = 300;
  /// Width of the pane. To the right of the text, it shows the state of the row too.
  int width = 500;

  [[nodiscard]] int Height() const { return kLines * pitch; }
  [[nodiscard]] int ZoneLeft() const { return kMarkerWidth + label_width + kGap; }
  [[nodiscard]] int IconLeft() const { return ZoneLeft() + kZoneWidth + 1; }
  [[nodiscard]] int DescLeft() const { return IconLeft() + icon + kGap; }

  [[nodiscard]] int Top(int line) const { return line * pitch; }
  [[nodiscard]] int Middle(int line) const { return Top(line) + pitch / 2; }
  [[nodiscard]] QRect Row(int line) const { return {0, Top(line), width, pitch}; }
  [[nodiscard]] QRect Label(int line) const { return {kMarkerWidth, Top(line), label_width, pitch}; }
  [[nodiscard]] QRect Icon(int line) const {
    return {IconLeft(), Top(line) + (pitch - icon) / 2, icon, icon};
  }
  /// Leaves a thin line of the pane between two texts.
  [[nodiscard]] QRect Desc(int line) const {
    return {DescLeft(), Top(line) + 1, width - DescLeft(), pitch - 1};
  }
  [[nodiscard]] QRect Zone() const { return {ZoneLeft(), 0, kZoneWidth, Height()}; }

  /// Returns the row at this height, or the nearest one.
  [[nodiscard]] int RowAt(int y) const { return std::clamp(y / pitch, 0, kLines - 1); }
};

}  // namespace tavlo
