// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string>

#include "session/desk.h"

namespace tavlo {

/// Makes one edit, which the operator can take back, of all that is changed in the program and its file name
/// while it lives. Steps do not nest.
class EditStep {
 public:
  /// Whether the hub's model and firmware are the edit's, or may only be what a hub says of itself meanwhile.
  enum class Hub { Edited, Reported };

  /// `name` follows on "Undo ", such as "delete line 12".
  EditStep(Desk& desk, std::string name, Hub hub = Hub::Reported);
  ~EditStep();
  EditStep(const EditStep&) = delete;
  EditStep& operator=(const EditStep&) = delete;

 private:
  Desk& desk_;
  std::string name_;
  Hub hub_;
  Edited before_;
};

/// The program counts as unchanged from now on.
void MarkUnchanged(Desk& desk, Unchanged why);
/// What follows on every edit, and whenever the program begins or ceases to count as unchanged.
void TellEdited(Desk& desk);

/// Whether something would be lost that no file holds. It may count as unchanged nevertheless: as sent to a
/// hub.
[[nodiscard]] bool Unsaved(const Source& source);

}  // namespace tavlo
