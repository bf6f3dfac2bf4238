// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "editors/hardware_dialog.h"

#include <QKeyEvent>
#include <memory>
#include <utility>

namespace tavlo {

HardwareDialog::HardwareDialog(MessageBoxes& boxes, Help& help, QWidget* parent)
    : FormDialog({.name = "Hardware", .title = "Configure Drives", .help = "hardware.pdf"},
                 std::make_unique<Hardware>(boxes), boxes, help, parent) {}

bool HardwareDialog::Edit(Program& program, Hardware::Scan scan) {
  hardware().Load(program, std::move(scan));
  return Run();
}

void HardwareDialog::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape && hardware().PanelIsOpen()) {
    Act([this] { hardware().CancelPanel(); })();
    return;
  }
  FormDialog::keyPressEvent(event);
}

void HardwareDialog::TakeEntry() {
  QWidget* entry = focusWidget();
  form().Enter();
  ShowState();
  if (entry != nullptr) GoTo(entry);
}

}  // namespace tavlo
