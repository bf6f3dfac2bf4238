// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string_view>

#include "platform/services.h"

namespace tavlo {

/// The help documents. A program of its own shows them.
class Help {
 public:
  virtual ~Help() = default;
  /// Shows a document of the folder Help beside the program. If it cannot, a box says so and nothing else
  /// happens.
  void OpenHelp(std::string_view file, MessageBoxes& boxes);

 protected:
  /// Sees to it that the viewer runs. Returns 0, or the number of the system's error that kept it from that.
  [[nodiscard]] virtual int StartViewer() = 0;
  /// Returns false if the viewer cannot show the document.
  [[nodiscard]] virtual bool SetIndex(std::string_view file) = 0;
};

}  // namespace tavlo
