// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "viewer/page_bar.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>
#include <algorithm>
#include <cmath>

#include "viewer/page_view.h"
#include "widgets/font_size.h"

namespace tavlo::viewer {
namespace {

constexpr int kNumberWidth = 48;
constexpr int kScaleWidth = 48;
constexpr int kGap = 12;

QLabel* MakeScale(QWidget* parent) {
  auto* scale = new QLabel(parent);
  scale->setObjectName(QStringLiteral("Scale"));
  scale->setAlignment(Qt::AlignCenter);
  scale->setMinimumWidth(ByFont(parent->fontMetrics(), kScaleWidth));
  return scale;
}

}  // namespace

PageBar::PageBar(PageView& view, QWidget* parent)
    : QWidget(parent),
      view_(view),
      page_(new QLineEdit(this)),
      of_pages_(new QLabel(this)),
      scale_(MakeScale(this)) {
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  page_->setObjectName(QStringLiteral("Page"));
  page_->setAccessibleName(QStringLiteral("Page number"));
  page_->setToolTip(QStringLiteral("Type a page number and press Enter"));
  page_->setMaximumWidth(ByFont(fontMetrics(), kNumberWidth));
  page_->setAlignment(Qt::AlignRight);
  of_pages_->setObjectName(QStringLiteral("OfPages"));
  auto* label = new QLabel(QStringLiteral("&Page"), this);
  label->setBuddy(page_);

  previous_ = Add(Sign::Previous, "Previous", QStringLiteral("Previous page"), QStringLiteral("Ctrl+PgUp"));
  row->addWidget(label);
  row->addWidget(page_);
  row->addWidget(of_pages_);
  next_ = Add(Sign::Next, "Next", QStringLiteral("Next page"), QStringLiteral("Ctrl+PgDown"));
  row->addSpacing(kGap);
  QToolButton* smaller = Add(Sign::Smaller, "Smaller", QStringLiteral("Smaller"), QStringLiteral("Ctrl+-"));
  row->addWidget(scale_);
  QToolButton* larger = Add(Sign::Larger, "Larger", QStringLiteral("Larger"), QStringLiteral("Ctrl++"));
  QToolButton* fit =
      Add(Sign::FitWidth, "FitWidth", QStringLiteral("Fit the width"), QStringLiteral("Ctrl+0"));
  row->addStretch(1);
  QToolButton* find = Add(Sign::Find, "Find", QStringLiteral("Find a text"), QStringLiteral("Ctrl+F"));

  connect(previous_, &QToolButton::clicked, this, [this] { view_.GoTo(view_.CurrentPage() - 1); });
  connect(next_, &QToolButton::clicked, this, [this] { view_.GoTo(view_.CurrentPage() + 1); });
  connect(smaller, &QToolButton::clicked, this, [this] { view_.Zoom(-1); });
  connect(larger, &QToolButton::clicked, this, [this] { view_.Zoom(1); });
  connect(fit, &QToolButton::clicked, &view, &PageView::FitWidth);
  connect(find, &QToolButton::clicked, this, &PageBar::FindPressed);
  connect(page_, &QLineEdit::returnPressed, this, &PageBar::GoToEntered);
  connect(page_, &QLineEdit::editingFinished, this, &PageBar::ShowState);
  connect(&view, &PageView::PageChanged, this, &PageBar::ShowState);
  connect(&view, &PageView::ScaleChanged, this, &PageBar::ShowState);
  ShowState();
}

QToolButton* PageBar::Add(Sign sign, const char* object_name, const QString& name, const QString& key) {
  QToolButton* button = MakeBarButton(sign, object_name, name, key, this);
  layout()->addWidget(button);
  buttons_.append({button, sign});
  return button;
}

/// What is no number goes nowhere; one beyond the ends goes to the last page or the first.
void PageBar::GoToEntered() {
  bool is_number = false;
  const double number = page_->text().trimmed().toDouble(&is_number);
  if (!is_number || std::isnan(number)) return;
  view_.GoTo(static_cast<int>(std::clamp(number, 1.0, static_cast<double>(std::max(view_.PageCount(), 1)))) -
             1);
  view_.setFocus();
}

void PageBar::ShowState() {
  const int pages = view_.PageCount();
  const int page = view_.CurrentPage();
  page_->setText(pages == 0 ? QString() : QString::number(page + 1));
  of_pages_->setText(QStringLiteral("of %1").arg(pages));
  scale_->setText(QStringLiteral("%1%").arg(std::lround(100 * view_.Scale())));
  scale_->setAccessibleName(QStringLiteral("Size %1").arg(scale_->text()));
  previous_->setEnabled(page > 0);
  next_->setEnabled(page + 1 < pages);
}

void PageBar::changeEvent(QEvent* event) {
  if (event->type() == QEvent::PaletteChange) {
    for (const auto& [button, sign] : buttons_) DrawSign(*button, sign);
  }
  QWidget::changeEvent(event);
}

}  // namespace tavlo::viewer
