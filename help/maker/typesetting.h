// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QTextDocument>

#include "maker/sources.h"

namespace tavlo::help {

/// Makes of the Markdown what is seen: type, tables with rules, pictures with their captions.
/// `width` is that of the text, in dots of the device that the document is laid out for.
void Typeset(QTextDocument& document, const Source& source, double width);

}  // namespace tavlo::help
