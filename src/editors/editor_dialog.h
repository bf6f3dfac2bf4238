// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <memory>

#include "editors/form_dialog.h"
#include "forms/registry.h"
#include "session/views.h"

namespace tavlo {

/// The dialog of a line.
class EditorDialog : public FormDialog {
  Q_OBJECT

 public:
  EditorDialog(const FormRow& row, MessageBoxes& boxes, Help& help, QWidget* parent);

  /// Lets the operator edit a line of the program. True if it was written. Modal.
  [[nodiscard]] bool Edit(Program& program, int line, DialogPage page = DialogPage::AsLeft);
};

}  // namespace tavlo
