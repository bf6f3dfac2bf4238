// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

class QApplication;

namespace tavlo {

/// Gives the program a readable font where no desktop has chosen one. Style and colours are the desktop's.
void SetLook(QApplication& application);

}  // namespace tavlo
