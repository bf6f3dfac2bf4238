// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QLineEdit>

namespace tavlo {

/// A box in which a number is typed. Its whole text is selected when it gets the focus, so what is selected
/// stands out as any other text does, whatever colour the desktop has for it.
class EntryBox : public QLineEdit {
  Q_OBJECT

 public:
  /// As wide as so many digits.
  explicit EntryBox(int digits, QWidget* parent = nullptr);

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

 signals:
  /// The focus has gone to another control of the program. A window that merely stops being the active one
  /// leaves no entry.
  void Left();

 protected:
  void changeEvent(QEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  int digits_;
};

}  // namespace tavlo
