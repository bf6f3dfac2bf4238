// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/panel/lamp.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <algorithm>

#include "hubsim/panel/look.h"

namespace tavlo::hubsim {
namespace {

constexpr int kLeastWidth = 18;
constexpr int kLeastHeight = 22;
constexpr int kGap = 8;

/// Room for the longest caption.
QSize LampSize(const QWidget& parent) {
  const QFontMetrics letters = parent.fontMetrics();
  return {std::max(kLeastWidth, letters.horizontalAdvance(QStringLiteral("X0")) + 3),
          std::max(kLeastHeight, letters.height() + 2)};
}

void PaintLamp(QPainter& painter, const QRect& place, bool on, const QPalette& palette) {
  painter.setRenderHint(QPainter::Antialiasing);
  const QPointF centre = QRectF(place).center();
  const qreal disc = place.width() / 2.0 - 3;
  const qreal square = disc * 0.6;
  if (on) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(LampColour(palette));
    painter.drawEllipse(centre, disc, disc);
    return;
  }
  painter.setPen(QPen(palette.color(QPalette::WindowText), 1));
  painter.setBrush(Qt::NoBrush);
  painter.drawRect(QRectF(centre.x() - square, centre.y() - square, 2 * square, 2 * square));
}

class ShownLamp : public QWidget {
 public:
  explicit ShownLamp(QWidget* parent) : QWidget(parent) { setFixedSize(LampSize(*parent)); }
  void SetOn(bool on) {
    on_ = on;
    update();
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    PaintLamp(painter, rect(), on_, palette());
  }

 private:
  bool on_ = false;
};

/// Its state is the hub's: a click asks, and the hub's answer turns it.
class ClickLamp : public QAbstractButton {
 public:
  explicit ClickLamp(QWidget* parent) : QAbstractButton(parent) {
    setFixedSize(LampSize(*parent));
    setFocusPolicy(Qt::ClickFocus);
    setAttribute(Qt::WA_Hover);
  }
  void SetOn(bool on) {
    on_ = on;
    update();
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF frame = QRectF(rect()).adjusted(1, 1, -1, -1);
    const bool marked = hasFocus() || underMouse();
    painter.setPen(
        QPen(marked ? palette().color(QPalette::Highlight) : FrameColour(palette()), hasFocus() ? 2 : 1));
    painter.setBrush(palette().color(isDown() ? QPalette::Mid : QPalette::Base));
    painter.drawRoundedRect(frame, 3, 3);
    PaintLamp(painter, rect(), on_, palette());
  }
  // The arrows belong to the row.
  void keyPressEvent(QKeyEvent* event) override {
    if (event->key() == Qt::Key_Space || event->key() == Qt::Key_Select) {
      QAbstractButton::keyPressEvent(event);
    } else {
      event->ignore();
    }
  }

 private:
  bool on_ = false;
};

QHBoxLayout* MakeRow(QWidget* row) {
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  return layout;
}

}  // namespace

LampRow::LampRow(const std::vector<QString>& names, int gap_at, Use use, QWidget* parent)
    : QWidget(parent), names_(names) {
  auto* layout = MakeRow(this);
  for (int lamp = 0; lamp < static_cast<int>(names_.size()); ++lamp) {
    if (lamp == gap_at) layout->addSpacing(kGap);
    QWidget* made = nullptr;
    if (use == Use::Click) {
      auto* button = new ClickLamp(this);
      connect(button, &QAbstractButton::clicked, this,
              [this, lamp] { emit Clicked(lamp, On(static_cast<std::size_t>(lamp))); });
      made = button;
    } else {
      made = new ShownLamp(this);
    }
    lamps_.push_back(made);
    layout->addWidget(made);
    Tell(static_cast<std::size_t>(lamp));
  }
  if (use == Use::Click && !lamps_.empty()) lamps_[0]->setFocusPolicy(Qt::StrongFocus);
}

void LampRow::Show(unsigned levels) {
  const unsigned changed = levels ^ levels_;
  levels_ = levels;
  for (std::size_t lamp = 0; lamp < lamps_.size(); ++lamp) {
    if ((changed >> lamp & 1U) != 0) Tell(lamp);
  }
}

void LampRow::Tell(std::size_t lamp) {
  const bool on = On(lamp);
  const QString text = names_[lamp] + (on ? QStringLiteral(": on") : QStringLiteral(": off"));
  lamps_[lamp]->setAccessibleName(text);
  lamps_[lamp]->setToolTip(text);
  if (auto* button = dynamic_cast<ClickLamp*>(lamps_[lamp])) button->SetOn(on);
  if (auto* shown = dynamic_cast<ShownLamp*>(lamps_[lamp])) shown->SetOn(on);
}

void LampRow::keyPressEvent(QKeyEvent* event) {
  const auto focused = std::ranges::find_if(lamps_, [](QWidget* lamp) { return lamp->hasFocus(); });
  const int at = static_cast<int>(focused - lamps_.begin());
  const int last = static_cast<int>(lamps_.size()) - 1;
  if (at > last) return QWidget::keyPressEvent(event);
  switch (event->key()) {
    case Qt::Key_Left: MoveFocus(std::max(at - 1, 0)); break;
    case Qt::Key_Right: MoveFocus(std::min(at + 1, last)); break;
    case Qt::Key_Home: MoveFocus(0); break;
    case Qt::Key_End: MoveFocus(last); break;
    default: QWidget::keyPressEvent(event);
  }
}

/// The tab order comes back to the lamp that had the focus last.
void LampRow::MoveFocus(int to) {
  for (QWidget* lamp : lamps_) lamp->setFocusPolicy(Qt::ClickFocus);
  QWidget* next = lamps_[static_cast<std::size_t>(to)];
  next->setFocusPolicy(Qt::StrongFocus);
  next->setFocus(Qt::OtherFocusReason);
}

QWidget* LampRow::MakeCaptions(const std::vector<QString>& captions, int gap_at, QWidget* parent) {
  auto* row = new QWidget(parent);
  auto* layout = MakeRow(row);
  for (int i = 0; i < static_cast<int>(captions.size()); ++i) {
    if (i == gap_at) layout->addSpacing(kGap);
    auto* caption = new QLabel(captions[static_cast<std::size_t>(i)], row);
    caption->setAlignment(Qt::AlignCenter);
    caption->setFixedWidth(LampSize(*parent).width());
    layout->addWidget(caption);
  }
  return row;
}

}  // namespace tavlo::hubsim
