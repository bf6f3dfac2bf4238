// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QPoint>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

class QWidget;

namespace tavlo::testing {

/// Somebody who presses, types, clicks, drags and closes whatever is before him. The same seed does the same
/// acts on the same windows.
class RandomOperator {
 public:
  explicit RandomOperator(std::uint32_t seed) : engine_(seed) {}

  /// One act on the window that is in front: a list that is open, a dialog, or the main window.
  void Act(QWidget& main_window);
  /// What the last act was, for who reads of a failure.
  [[nodiscard]] const std::string& Last() const { return last_; }
  /// Enter is down.
  [[nodiscard]] bool HoldsEnter() const { return repeats_ > 0; }
  /// Takes the hands off all keys.
  void LetGo(QWidget& main_window);

  /// 0 .. limit - 1
  int Below(int limit) { return static_cast<int>(engine_() % static_cast<std::uint32_t>(limit)); }
  bool OneIn(int chances) { return Below(chances) == 0; }
  template <class Container>
  const auto& OneOf(const Container& all) {
    return all[static_cast<std::size_t>(Below(static_cast<int>(std::size(all))))];
  }

 private:
  struct Way;

  void Key(QWidget& window);
  void Command(QWidget& window);
  void TypeText(QWidget& window);
  void Paste(QWidget& window);
  void Click(QWidget& window);
  void DoubleClick(QWidget& window);
  void ClickButton(QWidget& window);
  void DragAround(QWidget& window);
  void Mnemonic(QWidget& window);
  void CloseWindow(QWidget& window);
  void HoldEnter(QWidget& window);
  void Walk(QWidget& window);
  void Open(QWidget& window);
  void CopyRow(QWidget& window);
  void ClickBehind(QWidget& window);
  void PressAsReader(QWidget& window);
  void TurnWheel(QWidget& window);

  /// A widget that can be seen and clicked, or null.
  [[nodiscard]] QWidget* AnyWidget(QWidget& window);
  template <class Widget>
  [[nodiscard]] std::vector<Widget*> Seen(QWidget& window) const;
  [[nodiscard]] QPoint PointIn(const QWidget& widget);
  [[nodiscard]] Qt::KeyboardModifiers Modifiers();
  void Say(const std::string& act) { last_ = act; }

  std::mt19937 engine_;
  std::string last_;
  QWidget* main_window_ = nullptr;
  int repeats_ = 0;
};

/// The window that takes what the operator does.
[[nodiscard]] QWidget& InFront(QWidget& main_window);

}  // namespace tavlo::testing
