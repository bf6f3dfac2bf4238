// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/printer.h"
#include "text/cross_reference.h"
#include "text/listing.h"

namespace tavlo {

// A listing as it is read, in UTF-8, control characters spelled out. The cross-reference follows if there is
// one.

/// Returns it in letters of one width, each row with its line end.
[[nodiscard]] std::string AsText(const Listing& listing, const std::vector<ReferenceSection>& reference = {});

/// Returns it as a document for paper, each program line in one piece.
[[nodiscard]] PaperDocument OnPaper(const Listing& listing, std::string_view file_name,
                                    const std::vector<ReferenceSection>& reference = {});

}  // namespace tavlo
