// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string>

#include "platform/outcome.h"
#include "platform/printer.h"

namespace tavlo::cli {

/// Makes the document a PDF file in memory. Needs no display. On success `pdf` holds the whole file.
Outcome MakePdfFile(const PaperDocument& document, std::string& pdf);

}  // namespace tavlo::cli
