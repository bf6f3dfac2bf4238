// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string>
#include <vector>

#include "platform/help.h"

namespace tavlo::testing {

/// Remembers the documents that the operator was shown.
class FakeHelp : public Help {
 public:
  /// What keeps the viewer from running.
  int error = 0;
  bool has_documents = true;
  std::vector<std::string> shown;

 protected:
  int StartViewer() override { return error; }
  bool SetIndex(std::string_view file) override {
    if (has_documents) shown.emplace_back(file);
    return has_documents;
  }
};

}  // namespace tavlo::testing
