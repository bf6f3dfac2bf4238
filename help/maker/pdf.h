// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QByteArray>

#include "maker/sources.h"

namespace tavlo::help {

/// Returns the finished document: the same bytes each time it is made on a machine of the same fonts.
[[nodiscard]] QByteArray MakePdf(const Source& source);

}  // namespace tavlo::help
