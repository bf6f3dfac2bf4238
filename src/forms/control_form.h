// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "forms/controls.h"
#include "platform/services.h"

namespace tavlo {

class AnalysisTab;

/// The name of an element of an array of controls, such as "OptIn(3)".
[[nodiscard]] inline std::string Element(std::string_view array, int index) {
  return std::string(array) + "(" + std::to_string(index) + ")";
}

/// A control of a form by its name, an element of an array as "OptIn(3)".
struct Bound {
  std::string name;
  AnyControl control;
  /// What follows on what the operator did with it: a box was left, a text area changed, a slider moved, a
  /// check box, an option or a button clicked, an entry of a list chosen, a spin button pressed, a page
  /// turned to. May be empty.
  std::function<void()> rule;
};

/// The controls of a form. Blocks that several forms share add theirs.
class ControlTable {
 public:
  void Add(std::string name, AnyControl control, std::function<void()> rule = {});
  /// What a block shows by what its controls hold; runs after every act.
  void AddShown(std::function<void()> show) { shown_.push_back(std::move(show)); }
  [[nodiscard]] const std::vector<Bound>& Rows() const { return rows_; }
  /// The control of that name; there must be one.
  [[nodiscard]] const Bound& Find(std::string_view name) const;

 private:
  friend class ControlForm;

  std::vector<Bound> rows_;
  std::vector<std::function<void()>> shown_;
};

/// A dialog without its window: what its controls show, and what follows on each act of the operator. A
/// window binds to it by the names of the controls, passes on what the operator does and then shows the state
/// anew.
///
/// It is filled each time the dialog comes up, so nothing of an earlier use is left.
class ControlForm {
 public:
  virtual ~ControlForm() = default;
  ControlForm(const ControlForm&) = delete;
  ControlForm& operator=(const ControlForm&) = delete;

  /// OK: writes what is edited. False if the dialog stays, after its message.
  [[nodiscard]] bool Confirm(MessageBoxes& boxes);
  /// Whatever is edited is then as it was when the dialog came up.
  virtual void Cancel() = 0;
  /// Enter: takes what was being typed.
  void Enter();

  [[nodiscard]] const ControlTable& Controls() const { return controls_; }
  /// What the move will do; nothing in a dialog that does not show it.
  [[nodiscard]] virtual const AnalysisTab* Analysis() const { return nullptr; }
  /// The entry that has the caret when the dialog comes up, its text selected.
  [[nodiscard]] const Bound& First() const { return controls_.Find(first_); }
  /// Where the caret goes after the last act, if it has to go anywhere: to an entry that kept the dialog from
  /// being confirmed, to what has come up.
  [[nodiscard]] const Bound* Caret() const { return caret_.empty() ? nullptr : &controls_.Find(caret_); }

  // What the operator does.
  void Type(const Bound& box, std::string text);
  void Leave(const Bound& box);
  void Move(const Bound& slider, int value);
  void Click(const Bound& what);
  void Choose(const Bound& list, int index);
  void Spin(const Bound& button, int way);
  void Turn(const Bound& tab_strip, int page);

 protected:
  /// `first` names the entry that the dialog begins with.
  explicit ControlForm(std::string_view first) : first_(first) {}

  /// The controls have been filled from what is edited.
  void Begin();
  /// Takes every entry that was typed into, and forces into range what is not.
  virtual void CleanUp() = 0;
  /// Shows or hides, enables or dims by what the controls say. Runs after every act.
  virtual void ShowHide() {}
  /// Writes what is edited. False, after a message, if something keeps it from that; may say which entry.
  [[nodiscard]] virtual bool Accept(MessageBoxes& boxes) = 0;
  void ShowAnew();
  void SendCaretTo(std::string_view control) { caret_ = control; }

  ControlTable controls_;

 private:
  void Follow(const Bound& bound);

  std::string first_;
  std::string caret_;
};

}  // namespace tavlo
