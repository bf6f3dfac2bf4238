// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "editors/form_dialog.h"
#include "forms/hardware.h"

namespace tavlo {

/// The window of the hardware settings.
class HardwareDialog : public FormDialog {
  Q_OBJECT

 public:
  HardwareDialog(MessageBoxes& boxes, Help& help, QWidget* parent);

  /// Lets the operator edit the settings of the axes. True if they were written. Modal.
  [[nodiscard]] bool Edit(Program& program, Hardware::Scan scan);

 protected:
  /// Escape closes a panel of currents before it closes the dialog; Enter leaves the caret where it is.
  void keyPressEvent(QKeyEvent* event) override;
  void TakeEntry() override;

 private:
  [[nodiscard]] Hardware& hardware() { return static_cast<Hardware&>(form()); }
};

}  // namespace tavlo
