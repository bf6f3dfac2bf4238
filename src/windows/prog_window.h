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
#include "windows/arrow_zone.h"
#include "windows/prog_counter.h"
#include "windows/row_geometry.h"
#include "windows/row_speech.h"
#include "windows/row_text.h"

namespace tavlo {

/// `ProgWindow`: the tall pane of all 200 rows, painted from `Source`. One row is the current one: the arrow
/// and page keys move it, Enter does what a click on its icon does. An icon that is dragged marks the row on
/// which it would be dropped; a drag that ends in any other way leaves no trace.
class ProgWindow : public QWidget {
  Q_OBJECT

 public:
  ProgWindow(const Source& source, QWidget* parent);

  [[nodiscard]] const RowGeometry& Geometry() const { return geometry_; }
  [[nodiscard]] const Source& Session() const { return source_; }
  [[nodiscard]] int CurrentRow() const { return current_; }
  /// What a screen reader says of a row of 0..199.
  [[nodiscard]] RowSpeech SpeechOfRow(int line) const;
  /// Rows outside 0..199 go to the nearest end.
  void SetCurrentRow(int line);
  /// The same, and the row should be seen.
  void GoTo(int line);
  /// While lines must not be changed clicks, drags and Enter do nothing; the rows can be walked.
  void Hold(bool held);
  /// What a click on the icon of a row does, where a click can do something.
  void Press(int line);
  /// Widths of the part of a row that its text may fill, and of the whole pane.
  void SetWidths(int text_width, int width);

  void RowChanged(int line);
  void AllRowsChanged();
  /// The arrows and the colours of the numbers.
  void ArrowsChanged();
  /// The marker beside a row.
  void ShowProgCounter(std::optional<int> line);

 signals:
  /// The icon of one row was dropped on another; a click, or Enter, is a drop on itself.
  void Dropped(int source_line, int target_line, bool shift);
  /// The current row has moved and should be seen.
  void CurrentRowMoved(int line);
  /// What a screen reader says of a row is another than before.
  void SpeechChanged(int line, QAccessible::Event what);
  /// An icon is dragged, and stands here in the pane; nothing once it is dragged no more.
  void Dragged(std::optional<QPoint> position);

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void moveEvent(QMoveEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void Measure();
  void PaintRow(QPainter& painter, int line);
  void PaintLabel(QPainter& painter, int line) const;
  void PaintIcon(QPainter& painter, int line) const;
  void PaintDesc(QPainter& painter, int line);
  void PaintMark(QPainter& painter, int line) const;
  [[nodiscard]] QColor LabelInk(LabelColour colour) const;
  [[nodiscard]] QString ToolTipAt(QPoint position);
  void Drop(int source_line, int target_line, bool shift);
  /// The row that an icon would be dropped on now: the one under the pointer, where it can be seen.
  void Aim();
  void SetDropTarget(std::optional<int> line);
  void EndDrag();
  void TellReaders(int line, QAccessible::Event what);
  /// Tells what of the row's speech is another than they were told last.
  void TellSpeech(int line);
  void TellAllSpeech();

  const Source& source_;
  RowGeometry geometry_;
  ArrowZone* arrow_zone_;
  ProgCounterMarker* prog_counter_;
  RowTexts texts_;
  std::optional<int> counter_;
  std::array<RowSpeech, kLines> told_;
  int current_ = 0;
  std::optional<int> pressed_icon_;
  QPoint pressed_at_;
  bool dragging_ = false;
  /// On the screen: the pane may be scrolled away under a pointer that rests.
  QPoint pointer_;
  std::optional<int> drop_target_;
  bool held_ = false;
};

}  // namespace tavlo
