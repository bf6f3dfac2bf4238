// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/prog_window.h"

#include <QAccessible>
#include <QApplication>
#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QToolTip>
#include <algorithm>
#include <array>
#include <utility>

#include "widgets/takes_input.h"
#include "windows/row_accessible.h"

namespace tavlo {
namespace {

constexpr int kLinesOfPage = 10;
/// A drag does not outlast what takes the mouse away from the pane.
constexpr std::array kEndsOfDrag = {QEvent::WindowBlocked, QEvent::WindowDeactivate, QEvent::Hide,
                                    QEvent::EnabledChange};

bool AsksForMenu(const QKeyEvent& event) {
  if (event.isAutoRepeat()) return false;
  const bool shift = event.modifiers().testFlag(Qt::ShiftModifier);
  return event.key() == Qt::Key_Menu || (event.key() == Qt::Key_F10 && shift);
}

}  // namespace

ProgWindow::ProgWindow(const Source& source, QWidget* parent)
    : QWidget(parent),
      source_(source),
      arrow_zone_(new ArrowZone(source, geometry_, this)),
      prog_counter_(new ProgCounterMarker(this)) {
  InstallRowAccessibility();
  setObjectName(QStringLiteral("ProgWindow"));
  setAccessibleName(QStringLiteral("Program lines"));
  setFocusPolicy(Qt::StrongFocus);
  connect(this, &ProgWindow::SpeechChanged, this, &ProgWindow::TellReaders);
  Measure();
}

void ProgWindow::Measure() {
  geometry_.pitch = std::max(kIconSize + 2, fontMetrics().height() + 6);
  geometry_.icon = geometry_.pitch - 2;
  QFont widest = font();
  widest.setBold(true);
  geometry_.label_width = QFontMetrics(widest).horizontalAdvance(QStringLiteral("000")) + 2;
  texts_.Forget();
  arrow_zone_->setGeometry(geometry_.Zone());
  setFixedSize(geometry_.width, geometry_.Height());
}

void ProgWindow::SetWidths(int text_width, int width) {
  if (geometry_.text_width == text_width && geometry_.width == width) return;
  geometry_.text_width = text_width;
  geometry_.width = width;
  setFixedSize(geometry_.width, geometry_.Height());
  update();
}

void ProgWindow::SetCurrentRow(int line) {
  Walk(line, false);
}

void ProgWindow::Walk(int line, bool extend) {
  RowSelection to = selection_;
  extend ? to.ExtendTo(line) : to.GoTo(line);
  Select(to);
}

void ProgWindow::Select(const RowSelection& selection) {
  if (selection == selection_) return;
  const RowSelection before = std::exchange(selection_, selection);
  for (const LineRange& rows : {before.Rows(), selection_.Rows()}) {
    update(geometry_.Row(rows.first) | geometry_.Row(rows.Last()));
  }
  arrow_zone_->SetCurrentRow(CurrentRow());
  if (CurrentRow() != before.Current()) TellReaders(CurrentRow(), QAccessible::Focus);
  if (!before.IsRange() && !selection_.IsRange()) return;
  for (int line = 0; line < kLines; ++line) {
    if (selection_.Holds(line) == before.Holds(line)) continue;
    emit SpeechChanged(line,
                       selection_.Holds(line) ? QAccessible::SelectionAdd : QAccessible::SelectionRemove);
  }
}

void ProgWindow::RowChanged(int line) {
  const QRect row = geometry_.Row(line);
  update(row.adjusted(geometry_.IconLeft(), 0, 0, 0));
  TellSpeech(line);
}

void ProgWindow::AllRowsChanged() {
  update();
  TellAllSpeech();
}

void ProgWindow::ArrowsChanged() {
  arrow_zone_->update();
  update(0, 0, geometry_.ZoneLeft(), height());
  TellAllSpeech();
}

void ProgWindow::ShowProgCounter(std::optional<int> line) {
  if (line && (*line < 0 || *line >= kLines)) line.reset();
  if (line) {
    prog_counter_->StandAt(geometry_, *line);
  } else {
    prog_counter_->hide();
  }
  const std::optional<int> before = std::exchange(counter_, line);
  if (before) TellSpeech(*before);
  if (counter_) TellSpeech(*counter_);
}

RowSpeech ProgWindow::SpeechOfRow(int line) const {
  return SpeechOf(source_.shown.rows[line], line, counter_ == line);
}

void ProgWindow::TellReaders(int line, QAccessible::Event what) {
  if (!QAccessible::isActive()) return;
  QAccessibleEvent told(this, what);
  told.setChild(line);
  QAccessible::updateAccessibility(&told);
}

void ProgWindow::TellSpeech(int line) {
  const RowSpeech now = SpeechOfRow(line);
  const RowSpeech before = std::exchange(told_[line], now);
  if (now.name != before.name) emit SpeechChanged(line, QAccessible::NameChanged);
  if (now.description != before.description) emit SpeechChanged(line, QAccessible::DescriptionChanged);
}

void ProgWindow::TellAllSpeech() {
  for (int line = 0; line < kLines; ++line) TellSpeech(line);
}

bool ProgWindow::event(QEvent* event) {
  if (event->type() == QEvent::ToolTip) {
    const auto* help = static_cast<QHelpEvent*>(event);
    QToolTip::showText(help->globalPos(), ToolTipAt(help->pos()), this);
    return true;
  }
  if (std::ranges::find(kEndsOfDrag, event->type()) != kEndsOfDrag.end()) EndDrag();
  return QWidget::event(event);
}

void ProgWindow::Hold(bool held) {
  held_ = held;
  EndDrag();
}

void ProgWindow::mousePressEvent(QMouseEvent* event) {
  EndDrag();
  if (event->button() != Qt::LeftButton || held_) return;
  const QPoint position = event->position().toPoint();
  const int line = geometry_.RowAt(position.y());
  pressed_at_ = position;
  if (geometry_.Icon(line).contains(position)) {
    pressed_icon_ = line;
    return;
  }
  pressed_text_ = true;
  Walk(line, event->modifiers().testFlag(Qt::ShiftModifier));
}

void ProgWindow::mouseMoveEvent(QMouseEvent* event) {
  if (!pressed_icon_ && !pressed_text_) return;
  // The release went elsewhere.
  if (!event->buttons().testFlag(Qt::LeftButton)) return EndDrag();
  const QPoint position = event->position().toPoint();
  const bool moved = dragging_ || stretching_;
  if (!moved && (position - pressed_at_).manhattanLength() < QApplication::startDragDistance()) return;
  pointer_ = event->globalPosition().toPoint();
  if (pressed_text_) {
    stretching_ = true;
    return Stretch();
  }
  dragging_ = true;
  setMouseTracking(true);
  Aim();
}

void ProgWindow::Stretch() {
  const QPoint position = mapFromGlobal(pointer_);
  Walk(geometry_.RowAt(position.y()), true);
  emit Dragged(position);
}

void ProgWindow::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  if (!pressed_icon_) return EndDrag();
  const int source_line = *pressed_icon_;
  std::optional<int> target_line;
  if (dragging_) {
    pointer_ = event->globalPosition().toPoint();
    Aim();
    target_line = drop_target_;
  } else if (geometry_.Icon(source_line).contains(event->position().toPoint())) {
    target_line = source_line;
  }
  EndDrag();
  if (target_line) Drop(source_line, *target_line, event->modifiers().testFlag(Qt::ShiftModifier));
}

void ProgWindow::Drop(int source_line, int target_line, bool shift) {
  SetCurrentRow(target_line);
  emit Dropped(source_line, target_line, shift);
}

void ProgWindow::Press(int line) {
  if (!held_ && TakesInput(*this)) Drop(line, line, false);
}

void ProgWindow::Aim() {
  const QPoint position = mapFromGlobal(pointer_);
  const bool on_a_row = visibleRegion().contains(position);
  SetDropTarget(on_a_row ? std::optional(geometry_.RowAt(position.y())) : std::nullopt);
  setCursor(on_a_row ? Qt::DragCopyCursor : Qt::ForbiddenCursor);
  emit Dragged(position);
}

void ProgWindow::moveEvent(QMoveEvent* event) {
  if (dragging_) Aim();
  if (stretching_) Stretch();
  QWidget::moveEvent(event);
}

void ProgWindow::SetDropTarget(std::optional<int> line) {
  if (drop_target_ == line) return;
  for (const auto& changed : {drop_target_, line, std::optional(CurrentRow())}) {
    if (changed) update(geometry_.Row(*changed));
  }
  drop_target_ = line;
}

void ProgWindow::EndDrag() {
  pressed_icon_.reset();
  pressed_text_ = false;
  if (std::exchange(stretching_, false)) emit Dragged(std::nullopt);
  if (!std::exchange(dragging_, false)) return;
  SetDropTarget(std::nullopt);
  update(geometry_.Row(CurrentRow()));
  setMouseTracking(false);
  unsetCursor();
  emit Dragged(std::nullopt);
}

void ProgWindow::GoTo(int line) {
  SetCurrentRow(line);
  emit CurrentRowMoved(CurrentRow());
}

std::optional<int> ProgWindow::RowOfKey(int key) const {
  const int page =
      parentWidget() == nullptr ? kLinesOfPage : std::max(1, parentWidget()->height() / geometry_.pitch - 1);
  switch (key) {
    case Qt::Key_Up: return CurrentRow() - 1;
    case Qt::Key_Down: return CurrentRow() + 1;
    case Qt::Key_PageUp: return CurrentRow() - page;
    case Qt::Key_PageDown: return CurrentRow() + page;
    case Qt::Key_Home: return 0;
    case Qt::Key_End: return kLines - 1;
    default: return std::nullopt;
  }
}

void ProgWindow::keyPressEvent(QKeyEvent* event) {
  if (pressed_icon_ || pressed_text_) {
    if (event->key() == Qt::Key_Escape) EndDrag();
    return;
  }
  const bool shift = event->modifiers().testFlag(Qt::ShiftModifier);
  if (const auto line = RowOfKey(event->key())) {
    Walk(*line, shift);
    emit CurrentRowMoved(CurrentRow());
  } else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    if (!held_) Drop(CurrentRow(), CurrentRow(), shift);
  } else if (AsksForMenu(*event)) {
    emit CurrentRowMoved(CurrentRow());
    emit MenuAsked(mapToGlobal(geometry_.Desc(CurrentRow()).bottomLeft()));
  } else {
    QWidget::keyPressEvent(event);
  }
}

void ProgWindow::contextMenuEvent(QContextMenuEvent* event) {
  // The key of the menu is a key of the rows.
  if (event->reason() == QContextMenuEvent::Keyboard) return;
  const int line = geometry_.RowAt(event->pos().y());
  if (!selection_.Holds(line)) SetCurrentRow(line);
  emit MenuAsked(event->globalPos());
}

void ProgWindow::focusInEvent(QFocusEvent*) {
  update(geometry_.Row(CurrentRow()));
  TellReaders(CurrentRow(), QAccessible::Focus);
}

void ProgWindow::focusOutEvent(QFocusEvent*) {
  update(geometry_.Row(CurrentRow()));
}

void ProgWindow::changeEvent(QEvent* event) {
  if (event->type() == QEvent::FontChange) Measure();
  QWidget::changeEvent(event);
}

}  // namespace tavlo
