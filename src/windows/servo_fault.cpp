// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/servo_fault.h"

#include <QGridLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "qt/gui/shown_text.h"
#include "widgets/contrast.h"
#include "widgets/font_size.h"

namespace tavlo {
namespace {

constexpr int kSquareSize = 18;
constexpr int kRows = 7;
constexpr int kFaultPadding = 14;
constexpr int kMessageWidth = 420;
constexpr QRgb kAlarm = qRgb(255, 0, 0);
constexpr QRgb kNoAlarm = qRgb(192, 192, 192);
constexpr QRgb kQuietEdge = qRgb(90, 90, 90);
constexpr int kAlarmFrame = 2;

}  // namespace

/// An indicator: red with a mark in it and in a thick frame, or grey. Red is darker than grey, so that on a
/// dark ground the frame is what stands out.
class ServoFaultForm::RedSquare : public QLabel {
 public:
  explicit RedSquare(QWidget* parent) : QLabel(parent) {
    const int side = ByFont(fontMetrics(), kSquareSize);
    setFixedSize(side, side);
  }

  void Show(bool alarm, const QString& label) {
    alarm_ = alarm;
    setAccessibleName(label + (alarm ? QStringLiteral(": alarm") : QStringLiteral(": no alarm")));
    update();
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    const int frame = alarm_ ? kAlarmFrame : 1;
    painter.fillRect(rect(), alarm_ ? palette().color(QPalette::WindowText) : QColor(kQuietEdge));
    painter.fillRect(rect().adjusted(frame, frame, -frame, -frame), QColor(alarm_ ? kAlarm : kNoAlarm));
    if (!alarm_) return;
    PaintMark(painter);
  }

 private:
  /// An exclamation mark of whole dots, which a letter of this size would not have.
  void PaintMark(QPainter& painter) const {
    const QColor ink = StandOut(Qt::white, QColor(kAlarm), kTextContrast);
    const int thick = std::max(2, width() / 8);
    const int left = (width() - thick) / 2;
    painter.fillRect(left, height() / 4, thick, height() * 5 / 16, ink);
    painter.fillRect(left, height() * 3 / 4 - thick, thick, thick, ink);
  }

  bool alarm_ = false;
};

ServoFaultForm::ServoFaultForm(QWidget* parent) : QDialog(parent), message_(new QLabel(this)) {
  setObjectName(QStringLiteral("ServoFault"));
  setWindowTitle(QStringLiteral("Servo Error"));
  setModal(true);
  message_->setObjectName(QStringLiteral("FaultMessage"));
  message_->setTextFormat(Qt::PlainText);
  message_->setWordWrap(true);
  message_->setMinimumWidth(ByFont(message_->fontMetrics(), kMessageWidth));
  QFont bold = message_->font();
  bold.setBold(true);
  message_->setFont(bold);

  auto* grid = new QGridLayout;
  grid->setHorizontalSpacing(8);
  grid->setVerticalSpacing(6);
  for (int bit = 0; bit < static_cast<int>(squares_.size()); ++bit) {
    squares_[bit] = new RedSquare(this);
    squares_[bit]->setObjectName(QStringLiteral("RedSquare%1").arg(bit));
    labels_[bit] = new QLabel(this);
    labels_[bit]->setObjectName(QStringLiteral("Label1_%1").arg(bit));
    grid->addWidget(squares_[bit], bit % kRows, bit / kRows * 2);
    grid->addWidget(labels_[bit], bit % kRows, bit / kRows * 2 + 1);
  }
  grid->setColumnStretch(1, 1);
  grid->setColumnStretch(3, 1);

  auto* legend_square = new RedSquare(this);
  legend_square->Show(true, QStringLiteral("This"));
  auto* legend = new QHBoxLayout;
  legend->setSpacing(grid->horizontalSpacing());
  legend->addWidget(legend_square);
  legend->addWidget(new QLabel(QStringLiteral("indicates an alarm."), this), 1);
  auto* close = new QPushButton(QStringLiteral("&Close"), this);
  close->setObjectName(QStringLiteral("Close"));
  close->setDefault(true);
  connect(close, &QPushButton::clicked, this, &QDialog::hide);
  legend->addWidget(close);

  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(kFaultPadding, kFaultPadding, kFaultPadding, kFaultPadding);
  column->setSpacing(kFaultPadding);
  column->addWidget(message_);
  column->addLayout(grid);
  column->addWidget(new QLabel(QStringLiteral("You must cycle power to reset this error."), this));
  column->addLayout(legend);
  column->setSizeConstraint(QLayout::SetFixedSize);
  guard_ = std::make_unique<KeyGuard>(this);
}

void ServoFaultForm::Show(const ServoFaultPanel& panel) {
  setWindowTitle(FromText(panel.caption));
  message_->setText(FromText(panel.FaultMessage));
  for (std::size_t bit = 0; bit < squares_.size(); ++bit) {
    const QString label = FromText(panel.Label1[bit]);
    labels_[bit]->setText(label);
    squares_[bit]->Show((panel.code >> bit & 1) != 0, label);
  }
}

}  // namespace tavlo
