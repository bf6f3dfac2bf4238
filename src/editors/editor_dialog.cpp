// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "editors/editor_dialog.h"

namespace tavlo {
namespace {

constexpr std::string_view kPages = "SSTab1";
constexpr int kAnalysisPage = 1;

}  // namespace

EditorDialog::EditorDialog(const FormRow& row, MessageBoxes& boxes, Help& help, QWidget* parent)
    : FormDialog({.name = row.name, .title = row.title, .help = row.help}, row.make(), boxes, help, parent) {}

bool EditorDialog::Edit(Program& program, int line, DialogPage page) {
  auto& form = static_cast<Form&>(this->form());
  form.Load(program, line);
  if (page == DialogPage::Analysis && form.Analysis() != nullptr) {
    form.Turn(form.Controls().Find(kPages), kAnalysisPage);
  }
  return Run();
}

}  // namespace tavlo
