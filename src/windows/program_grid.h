// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QBasicTimer>
#include <QPoint>
#include <QString>
#include <QWidget>
#include <optional>

#include "session/desk.h"
#include "windows/prog_window.h"

class QLabel;
class QScrollArea;
class QScrollBar;

namespace tavlo {

class FindBar;

/// The grid: its headings, the pane of rows and the scroll bar `ScrollProg`, and the search at their foot.
class ProgramGrid : public QWidget {
  Q_OBJECT

 public:
  ProgramGrid(const Source& source, QWidget* parent);

  [[nodiscard]] ProgWindow& Pane() { return *pane_; }
  /// Finds words in the rows.
  [[nodiscard]] FindBar& Search() { return *search_; }
  /// Brings a row into view while a program runs.
  void AutoScroll(int line);
  /// Blocks clicks and drops, and shows why in place of the heading. An empty text lets them through again.
  void Hold(const QString& why);
  /// Shows a word in passing in place of the heading, and has it read out. While a reason to hold is shown
  /// there it is only read out.
  void Note(const QString& text);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void timerEvent(QTimerEvent* event) override;

 private:
  /// Gives the text column its share of the main window's width. Does nothing while the main window is
  /// minimised.
  void AdjProgWinWidth();
  void EnsureRowVisible(int line);
  void ShowNotice(const QString& text);
  void FollowDrag(std::optional<QPoint> position);
  /// Returns how far the rows move at a time while an icon is held at this height of the view: 0 away from
  /// the edges.
  [[nodiscard]] int DragScroll(int y) const;
  [[nodiscard]] QScrollBar& ScrollProg() const;

  QScrollArea* scroll_;
  ProgWindow* pane_;
  FindBar* search_;
  QLabel* heading_;
  QLabel* notice_;
  QBasicTimer drag_timer_;
  QBasicTimer note_timer_;
  bool held_ = false;
  /// Where an icon is being held, in coordinates of the view.
  QPoint dragged_to_;
};

}  // namespace tavlo
