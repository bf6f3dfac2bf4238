// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "session/source.h"

namespace tavlo {

/// While it lives, a dialog is up and `CurLine` stays.
class EditingNow {
 public:
  explicit EditingNow(Source& source) : source_(source) { source_.Editing = true; }
  ~EditingNow() { source_.Editing = false; }
  EditingNow(const EditingNow&) = delete;
  EditingNow& operator=(const EditingNow&) = delete;

 private:
  Source& source_;
};

}  // namespace tavlo
