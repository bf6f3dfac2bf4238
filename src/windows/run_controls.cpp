// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/run_controls.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPixmap>
#include <QToolButton>
#include <QVBoxLayout>

#include "qt/gui/shown_text.h"

namespace tavlo {
namespace {

constexpr int kPictureSize = 24;
constexpr QRgb kLitGreen = qRgb(0, 150, 56);
constexpr QRgb kLitRed = qRgb(208, 24, 24);
constexpr QRgb kLitYellow = qRgb(230, 160, 0);
constexpr QRgb kGray = qRgb(120, 120, 120);

enum class Glyph { Play, Pause, Step, Reset, Stop };

struct PictureLook {
  Glyph glyph;
  QRgb colour;
  /// What the control says of the run, for those who do not see it.
  std::string_view state;
};

PictureLook LookOf(Picture picture) {
  switch (picture) {
    case Picture::PlayGreen: return {Glyph::Play, kLitGreen, "the program runs"};
    case Picture::PlayGray: return {Glyph::Play, kGray, "the program does not run"};
    case Picture::PauseRed: return {Glyph::Pause, kLitRed, "the program is paused"};
    case Picture::PauseGray: return {Glyph::Pause, kGray, "the program is not paused"};
    case Picture::StepYellow: return {Glyph::Step, kLitYellow, "a line is being executed"};
    case Picture::StepGray: return {Glyph::Step, kGray, "no single step is under way"};
  }
  return {Glyph::Play, kGray, ""};
}

/// A dark edge stands around what is lit, so that it is told from grey without its colour too.
QIcon Draw(Glyph glyph, QRgb colour, qreal ratio) {
  QPixmap pixmap(QSize(kPictureSize, kPictureSize) * ratio);
  pixmap.setDevicePixelRatio(ratio);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  painter.setRenderHint(QPainter::Antialiasing);
  const QColor fill(colour);
  painter.setPen(colour == kGray ? QPen(fill, 1.5) : QPen(fill.darker(170), 1.5));
  painter.setBrush(colour == kGray ? QBrush(Qt::NoBrush) : QBrush(fill));
  const auto triangle = [&](qreal left) {
    painter.drawPolygon(QPolygonF{{QPointF(left, 4), QPointF(left + 13, 12), QPointF(left, 20)}});
  };
  switch (glyph) {
    case Glyph::Play: triangle(6); break;
    case Glyph::Pause:
      painter.drawRect(QRectF(5.5, 4, 4.5, 16));
      painter.drawRect(QRectF(14, 4, 4.5, 16));
      break;
    case Glyph::Step:
      triangle(3.5);
      painter.drawRect(QRectF(18, 4, 3, 16));
      break;
    case Glyph::Reset:
      painter.drawRect(QRectF(3, 4, 3, 16));
      painter.drawPolygon(QPolygonF{{QPointF(20.5, 4), QPointF(7.5, 12), QPointF(20.5, 20)}});
      break;
    case Glyph::Stop: painter.drawRect(QRectF(5, 5, 14, 14)); break;
  }
  return {pixmap};
}

void SetPicture(QToolButton* button, Picture picture) {
  const PictureLook look = LookOf(picture);
  button->setIcon(Draw(look.glyph, look.colour, button->devicePixelRatioF()));
  button->setAccessibleDescription(FromText(look.state));
}

}  // namespace

RunControls::RunControls(QWidget* parent)
    : QWidget(parent),
      play_(Add("Play", QStringLiteral("&Play"), QStringLiteral("Go on with the program"))),
      pause_(Add("Pause", QStringLiteral("P&ause"), QStringLiteral("Stop in front of the next line"))),
      single_step_(Add("SingleStep", QStringLiteral("S&ingle step"),
                       QStringLiteral("Execute one line of a paused program"))),
      reset_(Add("btnReset", QStringLiteral("&Reset"), QStringLiteral("Go to the first line"))),
      stop_(Add("btnStop", QStringLiteral("&Stop (Esc)"), QStringLiteral("Stop the program on the hub"))),
      update_(new QLabel(this)) {
  update_->setObjectName(QStringLiteral("lblUpdate"));
  reset_->setIcon(Draw(Glyph::Reset, qRgb(31, 45, 61), devicePixelRatioF()));
  stop_->setIcon(Draw(Glyph::Stop, kLitRed, devicePixelRatioF()));
  auto* row = new QHBoxLayout;
  row->setSpacing(4);
  for (QToolButton* button : {play_, pause_, single_step_, reset_}) row->addWidget(button);
  row->addStretch(1);
  row->addWidget(stop_);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addLayout(row);
  column->addWidget(update_);
  connect(play_, &QToolButton::clicked, this, &RunControls::PlayClicked);
  connect(pause_, &QToolButton::clicked, this, &RunControls::PauseClicked);
  connect(single_step_, &QToolButton::clicked, this, &RunControls::SingleStepClicked);
  connect(reset_, &QToolButton::clicked, this, &RunControls::ResetClicked);
  connect(stop_, &QToolButton::clicked, this, &RunControls::StopClicked);
}

QToolButton* RunControls::Add(const char* name, const QString& caption, const QString& tool_tip) {
  auto* button = new QToolButton(this);
  button->setObjectName(QLatin1String(name));
  button->setText(caption);
  button->setToolTip(tool_tip);
  button->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
  button->setIconSize({kPictureSize, kPictureSize});
  button->setFocusPolicy(Qt::StrongFocus);
  return button;
}

void RunControls::Show(const RunPanel& panel) {
  SetPicture(play_, panel.Play);
  SetPicture(pause_, panel.Pause);
  SetPicture(single_step_, panel.SingleStep);
  update_->setText(FromText(panel.lblUpdate));
}

}  // namespace tavlo
