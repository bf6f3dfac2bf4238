// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "forms/branch_table.h"
#include "forms/jog_block.h"
#include "forms/prompt_limits.h"

namespace tavlo {

/// `MMIprompt`: a text on the operator's terminal, and what the operator is asked for.
class MMIprompt : public Form {
 public:
  MMIprompt();

 protected:
  void Fill() override;
  void CleanUp() override;
  void ShowHide() override;
  [[nodiscard]] bool MayWrite(MessageBoxes& boxes) override;
  void Write(Instruction& record) const override;

 private:
  void AddBlocks();
  [[nodiscard]] int Function() const { return function_.Chosen(); }
  /// A text that nobody edited stays as it is, however it was broken.
  [[nodiscard]] bool KeepsText() const;
  [[nodiscard]] bool PoolWouldOverflow(std::size_t text_length) const;
  void ShowText();

  TextArea text_;
  Display display_;
  Label left_over_;
  Label line_4_is_reserved_{{}, "Line 4 reserved for data entry"};
  Gauge pool_;
  OptionGroup<7> function_;
  std::string text_before_;

  Frame variable_frame_;
  VariableList variable_{"Save data as"};
  PromptLimits limits_;
  Frame drive_frame_;
  AxisList drive_;
  Frame line_frame_;
  LineField target_;
  Frame table_frame_;
  BranchTable table_;
  Frame jog_frame_;
  JogBlock jog_lr_;
  JogBlock jog_ud_;
};

}  // namespace tavlo
