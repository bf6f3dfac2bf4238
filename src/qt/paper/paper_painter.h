// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QPageLayout>
#include <QPageRanges>
#include <functional>
#include <string>

#include "platform/outcome.h"
#include "platform/printer.h"

class QPagedPaintDevice;

namespace tavlo {

/// Returns the page with margins that are wide enough to file it: its own where they are wider.
[[nodiscard]] QPageLayout WithMargins(QPageLayout layout);

/// Paints the document on the device, each page with the file's name and its number at the head. Prints the
/// pages in `ranges`; all of them if there are none. If the device fails in between, `give_up` is called
/// while the pages before can still be taken back.
Outcome PaintOn(QPagedPaintDevice& device, const PaperDocument& document, const QPageRanges& ranges = {},
                const std::function<void()>& give_up = {});

/// Makes the document a PDF file in memory. On success `pdf` holds the whole file.
Outcome MakePdf(const PaperDocument& document, const QPageLayout& layout, const QPageRanges& ranges,
                std::string& pdf);

}  // namespace tavlo
