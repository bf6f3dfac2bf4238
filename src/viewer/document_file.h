// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QString>

class QPdfDocument;

namespace tavlo::viewer {

/// Opens a help document. Returns an empty text, or a sentence for the operator that says why it cannot be
/// shown; the document is closed then.
[[nodiscard]] QString OpenDocument(QPdfDocument& document, const QString& path);

/// Returns the document's title, or else the name of its file.
[[nodiscard]] QString TitleOf(const QPdfDocument& document, const QString& path);

}  // namespace tavlo::viewer
