// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QSize>
#include <QWidget>
#include <functional>
#include <string_view>

class QToolButton;

namespace tavlo {

/// The tool bar of the main window: labelled buttons in three groups, of the program, the hub and the
/// machine. Where it is too narrow for their captions they are left out; the tool tips stay.
class CommandBar : public QWidget {
  Q_OBJECT

 public:
  explicit CommandBar(QWidget* parent);

  /// Runs this at each click on the button of this name, and at its mnemonic.
  void OnClick(std::string_view button, std::function<void()> command);

  /// As wide as with the captions, and at least as without them.
  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void changeEvent(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void DrawImages();
  /// Works out both sizes for the font.
  void Measure();
  void ShowCaptions(bool shown);
  [[nodiscard]] int Height() const;
  [[nodiscard]] QToolButton* Button(std::string_view name) const;

  QSize with_captions_;
  QSize without_captions_;
  bool captions_shown_ = true;
};

}  // namespace tavlo
