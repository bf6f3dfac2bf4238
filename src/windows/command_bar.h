// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QSize>
#include <QWidget>
#include <functional>
#include <string_view>

class QMenu;
class QToolButton;

namespace tavlo {

/// The tool bar of the main window: labelled buttons in three groups, for the program, the hub and the
/// machine. If it is too narrow for the captions, they are left out; the tool tips remain.
class CommandBar : public QWidget {
  Q_OBJECT

 public:
  explicit CommandBar(QWidget* parent);

  /// Runs `command` when the button with this name is clicked, and at its mnemonic.
  void OnClick(std::string_view button, std::function<void()> command);
  /// Gives the button an arrow that opens the menu.
  void SetMenu(std::string_view button, QMenu* menu);

  /// The preferred width has room for the captions, the minimum only for the buttons.
  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void changeEvent(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void DrawImages();
  /// Works out both sizes for the current font.
  void Measure();
  void ShowCaptions(bool shown);
  [[nodiscard]] int Height() const;
  [[nodiscard]] QToolButton* Button(std::string_view name) const;

  QSize with_captions_;
  QSize without_captions_;
  bool captions_shown_ = true;
};

}  // namespace tavlo
