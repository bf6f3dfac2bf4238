// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QAccessible>
#include <QColor>
#include <QPoint>
#include <QWidget>
#include <array>
#include <optional>

#include "session/desk.h"
#include "session/row_selection.h"
#include "windows/arrow_zone.h"
#include "windows/prog_counter.h"
#include "windows/row_geometry.h"
#include "windows/row_speech.h"
#include "windows/row_text.h"

namespace tavlo {

/// `ProgWindow`: the tall pane of all 200 rows, painted from `Source`. One row is the current one: the arrow
/// and page keys move it, and Enter does what a click on its icon does. With Shift the keys and a click
/// beside the icons select the rows up to there; so does the mouse that is drawn over their texts. While an
/// icon is dragged, the row on which it would be dropped is marked; a drag that ends in any other way leaves
/// no trace.
class ProgWindow : public QWidget {
  Q_OBJECT

 public:
  ProgWindow(const Source& source, QWidget* parent);

  [[nodiscard]] const RowGeometry& Geometry() const { return geometry_; }
  [[nodiscard]] const Source& Session() const { return source_; }
  [[nodiscard]] int CurrentRow() const { return selection_.Current(); }
  [[nodiscard]] const RowSelection& Selection() const { return selection_; }
  /// Returns what a screen reader says of a row, 0..199.
  [[nodiscard]] RowSpeech SpeechOfRow(int line) const;
  /// Selects nothing else. A row outside 0..199 is replaced by the nearest one.
  void SetCurrentRow(int line);
  void Select(const RowSelection& selection);
  /// The same, and asks for the row to be brought into view.
  void GoTo(int line);
  /// While held, lines cannot be changed: clicks, drags and Enter do nothing, but the rows can still be
  /// walked.
  void Hold(bool held);
  /// Does what a click on the icon of a row does, if a click could reach it.
  void Press(int line);
  /// Sets the width of the part of a row that its text may fill, and the width of the whole pane.
  void SetWidths(int text_width, int width);

  void RowChanged(int line);
  void AllRowsChanged();
  /// The arrows or the colours of the numbers have changed.
  void ArrowsChanged();
  /// Shows the marker beside a row; without a line, hides it.
  void ShowProgCounter(std::optional<int> line);

 signals:
  /// The icon of one row was dropped on another. A click, or Enter, is a drop on the row itself.
  void Dropped(int source_line, int target_line, bool shift);
  /// The current row has moved and should be brought into view.
  void CurrentRowMoved(int line);
  /// The operator asked for the menu of the current row, to stand at this position of the screen.
  void MenuAsked(QPoint position);
  /// What a screen reader says of a row, or whether the row is selected, has changed.
  void SpeechChanged(int line, QAccessible::Event what);
  /// An icon or the end of a selection is being dragged and is at this position of the pane; nothing when the
  /// drag is over.
  void Dragged(std::optional<QPoint> position);

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void moveEvent(QMoveEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void Measure();
  void PaintRow(QPainter& painter, int line);
  void PaintLabel(QPainter& painter, int line) const;
  void PaintSelected(QPainter& painter, int line) const;
  void PaintIcon(QPainter& painter, int line) const;
  void PaintDesc(QPainter& painter, int line);
  void PaintMark(QPainter& painter, int line) const;
  /// What the number of the row stands on.
  [[nodiscard]] QColor LabelGround(int line) const;
  [[nodiscard]] QColor LabelInk(int line) const;
  /// Whether the row is one of several that are selected.
  [[nodiscard]] bool InRange(int line) const { return selection_.IsRange() && selection_.Holds(line); }
  [[nodiscard]] QString ToolTipAt(QPoint position);
  /// Returns the row to which a key goes from the current one; nothing for any other key.
  [[nodiscard]] std::optional<int> RowOfKey(int key) const;
  /// Makes the row the current one; with `extend`, selects the rows up to there.
  void Walk(int line, bool extend);
  /// Selects the rows up to the pointer.
  void Stretch();
  void Drop(int source_line, int target_line, bool shift);
  /// Finds the row on which an icon would be dropped now: the row under the pointer, if it can be seen.
  void Aim();
  void SetDropTarget(std::optional<int> line);
  void EndDrag();
  void TellReaders(int line, QAccessible::Event what);
  /// Reports what has changed in the row's speech since it was last reported.
  void TellSpeech(int line);
  void TellAllSpeech();

  const Source& source_;
  RowGeometry geometry_;
  ArrowZone* arrow_zone_;
  ProgCounterMarker* prog_counter_;
  RowTexts texts_;
  std::optional<int> counter_;
  std::array<RowSpeech, kLines> told_;
  RowSelection selection_;
  std::optional<int> pressed_icon_;
  QPoint pressed_at_;
  /// The mouse was pressed beside the icons, and has been moved since.
  bool pressed_text_ = false;
  bool stretching_ = false;
  bool dragging_ = false;
  /// In screen coordinates: the pane may be scrolled under a pointer that rests.
  QPoint pointer_;
  std::optional<int> drop_target_;
  bool held_ = false;
};

}  // namespace tavlo
