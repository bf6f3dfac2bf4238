// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QTextEdit>

namespace tavlo {

/// The font of the operator terminal's display, as large as the texts around it.
[[nodiscard]] QFont DisplayFont(const QWidget& beside);

/// A box for the text of a prompt, as wide as the operator terminal's display. Enter is a line feed of the
/// text, Tab leaves the box. What is pasted becomes text: a blank stands for each character that would
/// control a display.
class PromptBox : public QTextEdit {
  Q_OBJECT

 public:
  PromptBox(int columns, QWidget* parent);

  /// How many lines high the box is.
  void SetLines(int lines);
  [[nodiscard]] QString Text() const;
  /// Leaves the caret where it is, as far as the text reaches. Not told by Edited().
  void SetText(const QString& text);

  [[nodiscard]] QSize sizeHint() const override { return HintFor(lines_); }
  [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }
  /// The size of a box of so many lines.
  [[nodiscard]] QSize HintFor(int lines) const;

 signals:
  void Edited(const QString& text);

 protected:
  void changeEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void insertFromMimeData(const QMimeData* source) override;

 private:
  void TakeFont();

  int columns_;
  int lines_ = 1;
};

}  // namespace tavlo
