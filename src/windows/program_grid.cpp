// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/program_grid.h"

#include <QAccessible>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>

#include "widgets/font_size.h"
#include "windows/find_bar.h"

namespace tavlo {
namespace {

/// The window for which the grid was designed, and the narrowest that the text column follows.
constexpr int kNarrowWindow = 640;
constexpr int kLeastTextWidth = 80;
/// Between two steps of the rows while an icon is held at an edge.
constexpr int kDragScrollMs = 50;
/// How long a word in passing stays.
constexpr int kNoteMs = 6000;

/// The pane's scroll area. The usual one would show the middle of the pane whenever the Tab key leaves it.
class RowsArea : public QScrollArea {
 public:
  using QScrollArea::QScrollArea;

 protected:
  bool focusNextPrevChild(bool next) override { return QAbstractScrollArea::focusNextPrevChild(next); }
};

QLabel* Heading(const char* name, const QString& text, QWidget* parent) {
  auto* label = new QLabel(text, parent);
  label->setObjectName(QLatin1String(name));
  return label;
}

}  // namespace

ProgramGrid::ProgramGrid(const Source& source, QWidget* parent)
    : QWidget(parent),
      scroll_(new RowsArea(this)),
      pane_(new ProgWindow(source, scroll_)),
      search_(new FindBar(*pane_, this)),
      heading_(Heading("LblDesc", QStringLiteral("Instruction"), this)),
      notice_(Heading("LblHeld", {}, this)) {
  scroll_->setWidget(pane_);
  scroll_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  scroll_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
  scroll_->setFocusProxy(pane_);
  scroll_->setAccessibleName(QStringLiteral("Program"));
  ScrollProg().setObjectName(QStringLiteral("ScrollProg"));
  ScrollProg().setAccessibleName(QStringLiteral("Scroll program lines"));
  ScrollProg().setSingleStep(pane_->Geometry().pitch);

  auto* headings = new QHBoxLayout;
  const int frame = scroll_->frameWidth();
  QLabel* line = Heading("LblLine", QStringLiteral("Line"), this);
  line->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  line->setFixedWidth(frame + RowGeometry::kMarkerWidth + pane_->Geometry().label_width);
  headings->setContentsMargins(0, 0, 0, 0);
  headings->setSpacing(0);
  headings->addWidget(line);
  headings->addSpacing(pane_->Geometry().DescLeft() + frame + RowGeometry::kGap - line->width());
  headings->addWidget(heading_, 1);
  headings->addWidget(notice_, 1);
  // To the right, where a run window beside the rows leaves it to be seen.
  notice_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  notice_->hide();

  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(2);
  column->addLayout(headings);
  column->addWidget(scroll_, 1);
  column->addWidget(search_);

  scroll_->viewport()->installEventFilter(this);
  connect(pane_, &ProgWindow::CurrentRowMoved, this, &ProgramGrid::EnsureRowVisible);
  connect(pane_, &ProgWindow::Dragged, this, &ProgramGrid::FollowDrag);
}

void ProgramGrid::Hold(const QString& why) {
  held_ = !why.isEmpty();
  pane_->Hold(held_);
  ShowNotice(why);
}

void ProgramGrid::Note(const QString& text) {
  if (!held_) {
    ShowNotice(text);
    note_timer_.start(kNoteMs, this);
  }
  notice_->setAccessibleDescription(text);
  QAccessibleEvent told(notice_, QAccessible::Alert);
  QAccessible::updateAccessibility(&told);
}

void ProgramGrid::ShowNotice(const QString& text) {
  note_timer_.stop();
  notice_->setText(text);
  notice_->setAccessibleDescription({});
  notice_->setVisible(!text.isEmpty());
  heading_->setVisible(text.isEmpty());
}

QScrollBar& ProgramGrid::ScrollProg() const {
  return *scroll_->verticalScrollBar();
}

void ProgramGrid::AdjProgWinWidth() {
  if (window()->isMinimized()) return;
  // As wide as it would be beside a text of the usual height: a large text needs more of the room.
  const int window_width = window()->width() * kNarrowWindow / ByFont(fontMetrics(), kNarrowWindow);
  const int left_over = std::max(0, window_width - kNarrowWindow - ExtraWidth(window_width));
  const int beyond = ByFont(fontMetrics(), left_over);
  const int width = scroll_->viewport()->width();
  pane_->SetWidths(std::max(width - pane_->Geometry().DescLeft() - beyond, kLeastTextWidth), width);
}

bool ProgramGrid::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Resize) AdjProgWinWidth();
  return QWidget::eventFilter(watched, event);
}

void ProgramGrid::AutoScroll(int line) {
  ScrollProg().setValue(WantedScroll(line, pane_->Geometry().pitch, ScrollProg().value(),
                                     scroll_->viewport()->height(), ScrollProg().maximum()));
}

void ProgramGrid::EnsureRowVisible(int line) {
  const int top = pane_->Geometry().Top(line);
  const int highest = top + pane_->Geometry().pitch - scroll_->viewport()->height();
  ScrollProg().setValue(std::max(std::min(ScrollProg().value(), top), highest));
}

int ProgramGrid::DragScroll(int y) const {
  const int pitch = pane_->Geometry().pitch;
  if (y < pitch / 2) return -pitch;
  return y >= scroll_->viewport()->height() - pitch / 2 ? pitch : 0;
}

void ProgramGrid::FollowDrag(std::optional<QPoint> position) {
  if (position) dragged_to_ = pane_->mapToParent(*position);
  if (!position || DragScroll(dragged_to_.y()) == 0) return drag_timer_.stop();
  if (!drag_timer_.isActive()) drag_timer_.start(kDragScrollMs, this);
}

void ProgramGrid::timerEvent(QTimerEvent* event) {
  if (event->timerId() == note_timer_.timerId()) return ShowNotice({});
  if (event->timerId() != drag_timer_.timerId()) return QWidget::timerEvent(event);
  ScrollProg().setValue(ScrollProg().value() + DragScroll(dragged_to_.y()));
}

}  // namespace tavlo
