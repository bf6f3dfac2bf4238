// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QWidget>
#include <functional>

#include "text/find_line.h"

class QLabel;
class QLineEdit;

namespace tavlo {

class ProgWindow;

/// Finds words in the rows: a bar at their foot. The row that has them becomes the current one.
class FindBar : public QWidget {
  Q_OBJECT

 public:
  FindBar(ProgWindow& rows, QWidget* parent);

  /// Shows the bar and goes to its words.
  void Begin();
  /// Goes to the next row that has the words, or to the one before. Shows the bar if there are no words yet.
  void Step(SearchWay way);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  void Close();
  /// Looks from this row on, and says what became of it. `beyond` is the row that a search which has gone
  /// round reaches again; nothing for a search that begins anew.
  void Look(int from, SearchWay way, std::optional<int> beyond);
  void Say(const QString& text);

  ProgWindow& rows_;
  QLineEdit* words_;
  QLabel* state_;
  /// The row from which the words that are being typed are looked for.
  int began_at_ = 0;
};

}  // namespace tavlo
