// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <array>

#include "link/execution.h"
#include "qt/gui/held_key.h"
#include "windows/run_form.h"

class QKeyEvent;

namespace tavlo {

/// `fakeMMI`: stands in for the hub's operator terminal. It shows only what the hub sends, and all keys go to
/// the hub.
class MmiForm : public RunForm {
  Q_OBJECT

 public:
  MmiForm(Desk& desk, QWidget* main_window, std::function<void(bool)> hold);
  /// The text of the display has changed. It is painted in the next turn of the event loop.
  void TextLinesChanged();

 protected:
  /// The keyboard acts as the keypad, whichever control has the focus.
  bool eventFilter(QObject* watched, QEvent* event) override;
  /// Not a control, so that a typed blank cannot press one by accident.
  [[nodiscard]] QWidget* FirstFocus() override { return glass_; }
  void keyPressEvent(QKeyEvent* event) override;

 private:
  class DisplayRow;

  [[nodiscard]] QWidget* MakeDisplay();
  [[nodiscard]] QWidget* MakeKeypad();
  void ShowTextLines();
  [[nodiscard]] bool TakeKey(const QKeyEvent& event);

  HeldKey held_;
  QWidget* glass_ = nullptr;
  std::array<DisplayRow*, 4> textline_{};
  bool text_due_ = false;
};

}  // namespace tavlo
