// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/go_to_line.h"

#include <QDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "model/instruction.h"
#include "widgets/entry_box.h"

namespace tavlo {
namespace {

constexpr int kDigits = 4;

/// As the operator counts, held to the lines that there are.
int LineIn(const EntryBox& number, int present) {
  bool is_number = false;
  const int line = number.text().trimmed().toInt(&is_number);
  return is_number ? std::clamp(line, 1, kLines) - 1 : present;
}

QPushButton* MakeButton(const char* name, QDialog& dialog) {
  auto* button = new QPushButton(QLatin1String(name), &dialog);
  button->setObjectName(QLatin1String(name));
  return button;
}

}  // namespace

std::optional<int> AskForLine(QWidget* parent, int present) {
  // The window that owns it may go while it is up.
  const QPointer<QDialog> asked(new QDialog(parent));
  QDialog& dialog = *asked;
  dialog.setObjectName(QStringLiteral("GoToLine"));
  dialog.setWindowTitle(QStringLiteral("Go to line"));
  auto* number = new EntryBox(kDigits, &dialog);
  number->setObjectName(QStringLiteral("LineNumber"));
  number->setAccessibleName(QStringLiteral("Line number"));
  number->setText(QString::number(present + 1));
  number->selectAll();
  auto* label = new QLabel(QStringLiteral("&Line number"), &dialog);
  label->setBuddy(number);
  QPushButton* ok = MakeButton("OK", dialog);
  QPushButton* cancel = MakeButton("Cancel", dialog);
  ok->setDefault(true);
  auto* entry = new QHBoxLayout;
  entry->addWidget(label);
  entry->addWidget(number);
  entry->addStretch(1);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch(1);
  buttons->addWidget(ok);
  buttons->addWidget(cancel);
  auto* column = new QVBoxLayout(&dialog);
  column->addLayout(entry);
  column->addLayout(buttons);
  QObject::connect(ok, &QPushButton::clicked, &dialog, &QDialog::accept);
  QObject::connect(cancel, &QPushButton::clicked, &dialog, &QDialog::reject);
  const bool accepted = dialog.exec() == QDialog::Accepted;
  if (asked == nullptr) return std::nullopt;
  asked->deleteLater();
  return accepted ? std::optional(LineIn(*number, present)) : std::nullopt;
}

}  // namespace tavlo
