// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "session/desk.h"

namespace tavlo {

/// `PrintButton`: asks for the printer and prints the listing of the program. Nothing is printed if the
/// operator cancels; a box tells of a printer or a file that fails.
void PrintListing(Desk& desk);

}  // namespace tavlo
