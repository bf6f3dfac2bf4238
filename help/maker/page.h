// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QRectF>
#include <QSizeF>

namespace tavlo::help {

// The sheet and what stands where on it. Measures of a text document count in 96ths of an inch, whatever it
// is painted on.

inline constexpr double kMmPerInch = 25.4;
inline constexpr double kUnitsPerInch = 96;

inline constexpr QSizeF kSheetMm(210, 297);
inline constexpr double kSideMm = 22;
inline constexpr double kTopMm = 20;
inline constexpr double kBottomMm = 26;

/// The place of the text.
inline constexpr QRectF kTextMm(kSideMm, kTopMm, kSheetMm.width() - 2 * kSideMm,
                                kSheetMm.height() - kTopMm - kBottomMm);

constexpr double Units(double mm) {
  return mm / kMmPerInch * kUnitsPerInch;
}

}  // namespace tavlo::help
