// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <map>
#include <memory>
#include <string_view>

#include "platform/help.h"
#include "platform/services.h"
#include "session/views.h"

class QWidget;

namespace tavlo {

class EditorDialog;
class HardwareDialog;
class PickProg;

/// The picker, the dialogs of the lines and that of the hardware settings. Each is made at its first use and
/// lives as long as this.
class LineDialogs : public EditorWindows {
 public:
  LineDialogs(MessageBoxes& boxes, Help& help, QWidget* main_window);
  ~LineDialogs() override;

  void ShowPickProg(int line, const std::function<bool(const Picked&)>& act) override;
  [[nodiscard]] bool Edit(Program& program, int line, DialogPage page) override;
  [[nodiscard]] bool EditHardware(Program& program, const std::function<DriveScan()>& scan) override;

 private:
  MessageBoxes& boxes_;
  Help& help_;
  QWidget* main_window_;
  std::unique_ptr<PickProg> picker_;
  std::unique_ptr<HardwareDialog> hardware_;
  std::map<std::string_view, std::unique_ptr<EditorDialog>> dialogs_;
};

}  // namespace tavlo
