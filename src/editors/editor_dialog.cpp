// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "editors/editor_dialog.h"

namespace tavlo {

EditorDialog::EditorDialog(const FormRow& row, MessageBoxes& boxes, Help& help, QWidget* parent)
    : FormDialog({.name = row.name, .title = row.title, .help = row.help}, row.make(), boxes, help, parent) {}

bool EditorDialog::Edit(Program& program, int line) {
  static_cast<Form&>(form()).Load(program, line);
  return Run();
}

}  // namespace tavlo
