// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string_view>

#include "forms/control_form.h"
#include "model/program.h"

namespace tavlo {

/// A dialog that edits a line.
class Form : public ControlForm {
 public:
  /// The dialog comes up for a line 0..199 of a program, which must outlive its stay.
  void Load(Program& program, int line);
  /// Gives the line back as it was when the dialog came up.
  void Cancel() override;

 protected:
  explicit Form(std::string_view first) : ControlForm(first) {}

  /// From the record to the controls.
  virtual void Fill() = 0;
  /// Tells what keeps the line from being written, after which the dialog stays. May say which entry it is.
  [[nodiscard]] virtual bool MayWrite(MessageBoxes& boxes);
  /// From the controls to the record.
  virtual void Write(Instruction& record) const = 0;

  [[nodiscard]] const Program& program() const { return *program_; }
  [[nodiscard]] int line() const { return line_; }
  [[nodiscard]] const Instruction& record() const { return program_->Prog[line_]; }

 private:
  [[nodiscard]] bool Accept(MessageBoxes& boxes) override;

  Program* program_ = nullptr;
  int line_ = 0;
  Instruction before_;
};

}  // namespace tavlo
