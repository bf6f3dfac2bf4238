// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QWidget>
#include <functional>
#include <string_view>

class QToolButton;

namespace tavlo {

/// The tool bar of the main window: labelled buttons in three groups, of the program, the hub and the
/// machine.
class CommandBar : public QWidget {
  Q_OBJECT

 public:
  explicit CommandBar(QWidget* parent);

  /// Runs this at each click on the button of this name, and at its mnemonic.
  void OnClick(std::string_view button, std::function<void()> command);

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void DrawImages();
  [[nodiscard]] QToolButton* Button(std::string_view name) const;
};

}  // namespace tavlo
