// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QDialog>
#include <functional>
#include <memory>
#include <vector>

#include "forms/registry.h"
#include "platform/help.h"

class QPushButton;
class QVBoxLayout;

namespace tavlo {

/// The window of a form: passes on what the operator does and shows what the form says. Its controls are
/// bound to those of the form by their names.
class EditorDialog : public QDialog {
  Q_OBJECT

 public:
  EditorDialog(const FormRow& row, MessageBoxes& boxes, Help& help, QWidget* parent);
  ~EditorDialog() override;

  /// Lets the operator edit a line of the program. True if it was written. Modal.
  [[nodiscard]] bool Edit(Program& program, int line);

  void reject() override;

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  void BindAll();
  void Bind(const Bound& bound, QWidget* widget);
  /// What the operator does, after which everything is shown anew.
  template <class What>
  [[nodiscard]] auto Act(What what);
  template <class Widget, class State>
  void Show(Widget* widget, const State* state);
  void OrderTabs();
  void AddButtons(QVBoxLayout& column);
  void Confirm();
  void OpenHelp() { help_.OpenHelp(row_.help, boxes_); }
  /// Enter, by way of the button that nobody sees.
  void TakeEntry();
  void ShowState();
  void PutIntoPane();
  void GoToFirst();
  void GoTo(QWidget* entry);

  const FormRow& row_;
  MessageBoxes& boxes_;
  Help& help_;
  std::unique_ptr<Form> form_;
  QWidget* body_;
  /// Only where the screen is too small for the body.
  class FittedPane* pane_ = nullptr;
  /// Each shows the state of one control.
  std::vector<std::function<void()>> shows_;
  std::function<void()> align_;
};

}  // namespace tavlo
