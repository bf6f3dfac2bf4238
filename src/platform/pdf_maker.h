// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string>

#include "platform/outcome.h"
#include "platform/printer.h"

namespace tavlo {

// Making a PDF takes fonts and a painter, which take longer to load than most commands take to run. So the
// companion finds them in a module that it loads when a PDF is asked for.

/// Makes the document a PDF file on the paper of the operator's country. On success `pdf` holds the whole
/// file.
using PdfMaker = void (*)(const PaperDocument& document, std::string& pdf, Outcome& outcome);

inline constexpr const char* kPdfModule = "tavlo-paper.so";
/// The name of the one function in it, a PdfMaker.
inline constexpr const char* kPdfMakerName = "TavloMakePdf";

}  // namespace tavlo
