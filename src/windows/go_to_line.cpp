// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/go_to_line.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QSpinBox>

#include "model/instruction.h"

namespace tavlo {

std::optional<int> AskForLine(QWidget* parent, int present) {
  QDialog dialog(parent);
  dialog.setObjectName(QStringLiteral("GoToLine"));
  dialog.setWindowTitle(QStringLiteral("Go to line"));
  auto* number = new QSpinBox(&dialog);
  number->setObjectName(QStringLiteral("LineNumber"));
  number->setAccessibleName(QStringLiteral("Line number"));
  number->setRange(1, kLines);
  number->setValue(present + 1);
  number->selectAll();
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dialog);
  auto* form = new QFormLayout(&dialog);
  form->addRow(QStringLiteral("&Line number"), number);
  form->addRow(buttons);
  QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
  QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return number->value() - 1;
}

}  // namespace tavlo
