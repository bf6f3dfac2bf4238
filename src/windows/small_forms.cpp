// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/small_forms.h"

#include <QLabel>
#include <QProgressBar>
#include <QVBoxLayout>
#include <cmath>

#include "qt/gui/shown_text.h"
#include "widgets/font_size.h"
#include "widgets/kept_place.h"

namespace tavlo {
namespace {

constexpr int kFullGauge = 200;
/// Steps of the bar for one of the gauge, so that it moves smoothly.
constexpr int kFine = 10;
constexpr int kGaugeWidth = 320;
constexpr int kSmallPadding = 16;

void MakePane(QFrame& pane, const QString& name, const QString& spoken) {
  pane.setObjectName(name);
  pane.setAccessibleName(spoken);
  pane.setFrameStyle(QFrame::StyledPanel | QFrame::Raised);
  pane.setAutoFillBackground(true);
  pane.hide();
}

void ShowInTheMiddle(QFrame& pane) {
  pane.adjustSize();
  if (const QWidget* parent = pane.parentWidget()) pane.move(parent->rect().center() - pane.rect().center());
  pane.raise();
  pane.show();
  pane.repaint();
}

}  // namespace

GaugeForm::GaugeForm(const QString& name, const QString& title, const QString& doing,
                     std::function<void(bool)> hold, QWidget* parent)
    : QFrame(parent),
      doing_(doing),
      hold_(std::move(hold)),
      phase_(new QLabel(this)),
      gauge_(new QProgressBar(this)) {
  MakePane(*this, name, title);
  auto* heading = new QLabel(title, this);
  phase_->setTextFormat(Qt::PlainText);
  KeepPlace(phase_);
  gauge_->setRange(0, kFullGauge * kFine);
  gauge_->setTextVisible(false);
  gauge_->setMinimumWidth(ByFont(fontMetrics(), kGaugeWidth));
  gauge_->setAccessibleName(title);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(kSmallPadding, kSmallPadding, kSmallPadding, kSmallPadding);
  column->addWidget(heading);
  column->addWidget(gauge_);
  column->addWidget(phase_);
}

void GaugeForm::Show() {
  phase_->setText(QStringLiteral(" "));
  phase_->hide();
  hold_(true);
  ShowInTheMiddle(*this);
}

void GaugeForm::Hide() {
  hide();
  hold_(false);
}

void GaugeForm::Gauge(double value) {
  gauge_->setValue(static_cast<int>(std::lround(value * kFine)));
  gauge_->repaint();
}

void GaugeForm::Phase(std::string_view name, int, int) {
  const QString text = doing_ + QLatin1Char(' ') + FromText(name);
  if (text == phase_->text()) return;
  phase_->setText(text);
  phase_->show();
  if (sizeHint().width() > width()) ShowInTheMiddle(*this);
  phase_->repaint();
}

LoadingPane::LoadingPane(QWidget* parent) : QFrame(parent) {
  const QString text = QStringLiteral("Loading file from disk...");
  MakePane(*this, QStringLiteral("Loading"), text);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(kSmallPadding, kSmallPadding, kSmallPadding, kSmallPadding);
  column->addWidget(new QLabel(text, this));
}

void LoadingPane::Show() {
  ShowInTheMiddle(*this);
}

void LoadingPane::Hide() {
  hide();
}

}  // namespace tavlo
