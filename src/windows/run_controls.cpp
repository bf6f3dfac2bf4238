// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/run_controls.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>
#include <QVBoxLayout>

#include "qt/gui/shown_text.h"
#include "widgets/ringed_button.h"
#include "windows/run_glyph.h"

namespace tavlo {
namespace {

constexpr QRgb kLitGreen = qRgb(0, 150, 56);
constexpr QRgb kLitYellow = qRgb(230, 160, 0);
/// Between the two texts.
constexpr int kBlockGap = 12;

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
/// so that none can say the contrary of another, nor of `lblState`.
QString StateOf(RunPhase phase) {
  switch (phase) {
    case RunPhase::Running: return QStringLiteral("the program runs");
    case RunPhase::Pausing: return QStringLiteral("the program is about to pause");
    case RunPhase::Paused: return QStringLiteral("the program is paused");
    case RunPhase::Stepping: return QStringLiteral("a single line is being executed");
    case RunPhase::Stopped: return QStringLiteral("the program is stopped");
  }
  return {};
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
      update_(new QLabel(this)),
      state_(new QLabel(this)) {
  update_->setObjectName(QStringLiteral("lblUpdate"));
  state_->setObjectName(QStringLiteral("lblState"));
  state_->setAccessibleDescription(QStringLiteral("State of the program"));
  QFont bold = state_->font();
  bold.setBold(true);
  state_->setFont(bold);
  DrawPictures();
  auto* row = new QHBoxLayout;
  row->setSpacing(4);
  for (QToolButton* button : {play_, pause_, single_step_, reset_}) row->addWidget(button);
  row->addStretch(1);
  row->addWidget(stop_);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addLayout(row);
  auto* words = new QHBoxLayout;
  words->setSpacing(kBlockGap);
  words->addWidget(update_, 1);
  words->addWidget(state_);
  column->addLayout(words);
  connect(play_, &QToolButton::clicked, this, &RunControls::PlayClicked);
  connect(pause_, &QToolButton::clicked, this, &RunControls::PauseClicked);
  connect(single_step_, &QToolButton::clicked, this, &RunControls::SingleStepClicked);
  connect(reset_, &QToolButton::clicked, this, &RunControls::ResetClicked);
  connect(stop_, &QToolButton::clicked, this, &RunControls::StopClicked);
}

QToolButton* RunControls::Add(const char* name, const QString& caption, const QString& tool_tip) {
  auto* button = new RingedButton(kGlyphSize, this);
  button->setObjectName(QLatin1String(name));
  button->setText(caption);
  button->setToolTip(tool_tip);
  button->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
  return button;
}

void RunControls::Show(const RunPanel& panel) {
  shown_ = {panel.Play, panel.Pause, panel.SingleStep};
  DrawPictures();
  const QString state = StateOf(panel.phase);
  state_->setText(FromText(PhaseText(panel.phase)));
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
