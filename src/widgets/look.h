// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

class QApplication;

namespace tavlo {

/// Sets a readable font if no desktop has chosen one. Style and colours stay the desktop's.
void SetLook(QApplication& application);

}  // namespace tavlo
