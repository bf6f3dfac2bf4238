// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/panel/fault_dialog.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "hubsim/machine/faults.h"
#include "hubsim/panel/shown_text.h"

namespace tavlo::hubsim {
namespace {

static_assert(kFaultLabels.size() == kFaultNames.size(), "a label for each fault");
constexpr int kRows = static_cast<int>(kFaultLabels.size()) / 2;

}  // namespace

FaultDialog::FaultDialog(int axis, QWidget* parent) : QDialog(parent), code_(new QLabel(this)) {
  setObjectName(QStringLiteral("FaultDialog"));
  setWindowTitle(QStringLiteral("Fault of axis %1").arg(axis + 1));
  auto* grid = new QGridLayout;
  grid->setHorizontalSpacing(18);
  for (int bit = 0; bit < static_cast<int>(boxes_.size()); ++bit) {
    auto* box = new QCheckBox(ShownText(kFaultLabels[static_cast<std::size_t>(bit)]), this);
    box->setObjectName(QStringLiteral("fault%1").arg(bit));
    connect(box, &QCheckBox::toggled, this, &FaultDialog::ShowCode);
    boxes_[static_cast<std::size_t>(bit)] = box;
    grid->addWidget(box, bit % kRows, bit / kRows);
  }
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
  auto* report = buttons->addButton(QStringLiteral("&Report fault"), QDialogButtonBox::AcceptRole);
  report->setObjectName(QStringLiteral("btnReport"));
  report->setDefault(true);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* column = new QVBoxLayout(this);
  column->setSpacing(10);
  column->addWidget(new QLabel(
      QStringLiteral("The drive stops at once and reports these faults; the hub halts the program."), this));
  column->addLayout(grid);
  column->addWidget(code_);
  column->addWidget(buttons);
  ShowCode();
}

int FaultDialog::Code() const {
  int code = 0;
  for (std::size_t bit = 0; bit < boxes_.size(); ++bit) {
    if (boxes_[bit]->isChecked()) code |= 1 << bit;
  }
  return code;
}

void FaultDialog::ShowCode() {
  code_->setText(QStringLiteral("Code: %1").arg(Code()));
}

}  // namespace tavlo::hubsim
