// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QList>
#include <QWidget>
#include <utility>

#include "viewer/bar_button.h"
#include "viewer/text_search.h"

class QLabel;
class QLineEdit;

namespace tavlo::viewer {

/// The text that is looked for, and how often it was found.
class SearchBar : public QWidget {
  Q_OBJECT

 public:
  SearchBar(TextSearch& search, QWidget* parent);
  /// Shows the bar and goes to its text.
  void Begin();
  /// What is to be looked for in a document that was just opened.
  [[nodiscard]] QString Text() const;

 signals:
  /// The operator typed another text.
  void Typed(const QString& text);
  void Closed();

 protected:
  void changeEvent(QEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  void ShowState();

  TextSearch& search_;
  QLineEdit* text_;
  QLabel* state_;
  QList<std::pair<QToolButton*, Sign>> buttons_;
};

}  // namespace tavlo::viewer
