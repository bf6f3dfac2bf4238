// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QDialog>
#include <functional>
#include <memory>
#include <string_view>
#include <vector>

#include "forms/control_form.h"
#include "platform/help.h"

class QPushButton;
class QVBoxLayout;

namespace tavlo {

/// What a dialog is called.
struct DialogNames {
  /// The told name of the form, its window's object name too.
  std::string_view name;
  std::string_view title;
  /// Its help document.
  std::string_view help;
};

/// The window of a form: passes on what the operator does and shows what the form says. Its controls are
/// bound to those of the form by their names.
class FormDialog : public QDialog {
  Q_OBJECT

 public:
  FormDialog(const DialogNames& names, std::unique_ptr<ControlForm> form, MessageBoxes& boxes, Help& help,
             QWidget* parent);
  ~FormDialog() override;

  void reject() override;

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void showEvent(QShowEvent* event) override;

  /// Brings the dialog up for what its form has been filled with. True if it was confirmed. Modal.
  [[nodiscard]] bool Run();
  [[nodiscard]] ControlForm& form() { return *form_; }
  /// What the operator does to the form, after which everything is shown anew.
  template <class What>
  [[nodiscard]] auto Act(What what) {
    return [this, what](auto... of) {
      what(of...);
      ShowStateAndGo();
    };
  }
  /// Enter, by way of the button that nobody sees: takes what was being typed and goes to the first entry.
  virtual void TakeEntry();
  void ShowState();
  /// And the caret goes where the form sends it.
  void ShowStateAndGo();
  /// Gives the focus to a control, or to the next that can have it, with its text selected.
  void GoTo(QWidget* entry);

 private:
  void BindAll();
  void Bind(const Bound& bound, QWidget* widget);
  template <class Widget, class State>
  void Show(Widget* widget, const State* state);
  void OrderTabs();
  void AddButtons(QVBoxLayout& column);
  void Confirm();
  void OpenHelp() { help_.OpenHelp(document_, boxes_); }
  void PutIntoPane();
  void GoToFirst();

  std::string_view document_;
  MessageBoxes& boxes_;
  Help& help_;
  std::unique_ptr<ControlForm> form_;
  QWidget* body_;
  /// Only where the screen is too small for the body.
  class FittedPane* pane_ = nullptr;
  /// Each shows the state of one control.
  std::vector<std::function<void()>> shows_;
  std::function<void()> align_;
};

}  // namespace tavlo
