// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/run_controls.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QToolButton>
#include <QVBoxLayout>

#include "qt/gui/shown_text.h"
#include "widgets/contrast.h"
#include "widgets/drawn_icon.h"
#include "widgets/ringed_button.h"

namespace tavlo {
namespace {

constexpr int kPictureSize = 24;
/// A little more than a state and a symbol must have: styles shade a button, and an outline is thin.
constexpr double kLitContrast = kTextContrast + 1;
constexpr double kGrayContrast = kSymbolContrast + 1.5;
constexpr QRgb kLitGreen = qRgb(0, 150, 56);
constexpr QRgb kLitRed = qRgb(208, 24, 24);
constexpr QRgb kLitYellow = qRgb(230, 160, 0);
constexpr QRgb kGray = qRgb(120, 120, 120);

enum class Glyph { Play, Pause, Step, Reset, Stop };

struct PictureLook {
  Glyph glyph;
  QRgb colour;
};

PictureLook LookOf(Picture picture) {
  switch (picture) {
    case Picture::PlayGreen: return {Glyph::Play, kLitGreen};
    case Picture::PlayGray: return {Glyph::Play, kGray};
    case Picture::PauseRed: return {Glyph::Pause, kLitRed};
    case Picture::PauseGray: return {Glyph::Pause, kGray};
    case Picture::StepYellow: return {Glyph::Step, kLitYellow};
    case Picture::StepGray: return {Glyph::Step, kGray};
  }
  return {Glyph::Play, kGray};
}

/// What the three pictures say together, for those who do not see them. One sentence for all three controls,
/// so that none can say the contrary of another.
QString StateOf(const RunPanel& panel) {
  if (panel.SingleStep == Picture::StepYellow) return QStringLiteral("a single line is being executed");
  if (panel.Running) return QStringLiteral("the program runs");
  if (panel.Pause == Picture::PauseRed) return QStringLiteral("the program is paused");
  return QStringLiteral("the program is about to pause");
}

/// What is lit is filled, what is not is an outline, so that they are told apart without their colours too.
void DrawGlyph(QPainter& painter, const QRectF& place, Glyph glyph, const QColor& ink, bool filled) {
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(place.topLeft());
  painter.scale(place.width() / kPictureSize, place.height() / kPictureSize);
  painter.setPen(QPen(ink, 1.5));
  painter.setBrush(filled ? QBrush(ink) : QBrush(Qt::NoBrush));
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
}

QIcon GlyphIcon(Glyph glyph, const QColor& ink, bool filled) {
  return DrawnIcon([=](QPainter& painter, const QRectF& place, QIcon::Mode) {
    painter.save();
    DrawGlyph(painter, place, glyph, ink, filled);
    painter.restore();
  });
}

/// In this colour as far as it can be seen on a button of this palette.
QIcon GlyphIcon(Glyph glyph, QRgb colour, const QPalette& palette) {
  const bool lit = colour != kGray;
  const QColor ground = palette.color(QPalette::Button);
  return GlyphIcon(glyph, StandOut(QColor(colour), ground, lit ? kLitContrast : kGrayContrast), lit);
}

void SetPicture(QToolButton* button, Picture picture, const QPalette& palette) {
  const PictureLook look = LookOf(picture);
  button->setIcon(GlyphIcon(look.glyph, look.colour, palette));
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
  DrawPictures();
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
  auto* button = new RingedButton(kPictureSize, this);
  button->setObjectName(QLatin1String(name));
  button->setText(caption);
  button->setToolTip(tool_tip);
  button->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
  return button;
}

void RunControls::Show(const RunPanel& panel) {
  shown_ = {panel.Play, panel.Pause, panel.SingleStep};
  DrawPictures();
  const QString state = StateOf(panel);
  for (QToolButton* control : {play_, pause_, single_step_}) control->setAccessibleDescription(state);
  update_->setText(FromText(panel.lblUpdate));
}

void RunControls::DrawPictures() {
  SetPicture(play_, shown_[0], palette());
  SetPicture(pause_, shown_[1], palette());
  SetPicture(single_step_, shown_[2], palette());
  reset_->setIcon(GlyphIcon(Glyph::Reset, palette().color(QPalette::ButtonText), true));
  stop_->setIcon(GlyphIcon(Glyph::Stop, kLitRed, palette()));
}

void RunControls::changeEvent(QEvent* event) {
  if (event->type() == QEvent::PaletteChange) DrawPictures();
  QWidget::changeEvent(event);
}

}  // namespace tavlo
