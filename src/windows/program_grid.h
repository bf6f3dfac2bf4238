// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QWidget>

#include "desk/desk.h"
#include "windows/prog_window.h"

class QScrollArea;
class QScrollBar;

namespace tavlo {

/// The grid: its headings, the pane of rows and the scroll bar `ScrollProg`.
class ProgramGrid : public QWidget {
  Q_OBJECT

 public:
  ProgramGrid(const Source& source, QWidget* parent);

  [[nodiscard]] ProgWindow& Pane() { return *pane_; }
  /// Brings a row into view, while a program runs.
  void AutoScroll(int line);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  /// Gives the text column what it gets of the main window's width. Does nothing while that is minimised.
  void AdjProgWinWidth();
  void EnsureRowVisible(int line);
  [[nodiscard]] QScrollBar& ScrollProg() const;

  QScrollArea* scroll_;
  ProgWindow* pane_;
};

}  // namespace tavlo
