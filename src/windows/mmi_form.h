// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <array>

#include "link/execution.h"
#include "qt/gui/held_key.h"
#include "windows/run_form.h"

class QKeyEvent;

namespace tavlo {

/// `fakeMMI`: stands in for the hub's operator terminal. All that it shows is the hub's, and all that is
/// pressed goes there.
class MmiForm : public RunForm {
  Q_OBJECT

 public:
  MmiForm(Desk& desk, QWidget* main_window, std::function<void(bool)> hold);
  /// The display's text has changed; it is painted in the next turn of the event loop.
  void TextLinesChanged();

 protected:
  /// The keyboard is the keypad, whatever control has the focus.
  bool eventFilter(QObject* watched, QEvent* event) override;
  /// No control: a blank that is typed presses none by accident.
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
