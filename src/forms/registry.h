// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <memory>
#include <string_view>

#include "forms/form.h"

namespace tavlo {

/// A dialog that edits a line.
struct FormRow {
  /// The told name of the form, its window's object name too.
  std::string_view name;
  std::string_view title;
  /// Its help document.
  std::string_view help;
  std::unique_ptr<Form> (*make)();
};

/// The dialog for lines of a type; nothing for those that have none.
[[nodiscard]] const FormRow* FormOf(int type);

}  // namespace tavlo
