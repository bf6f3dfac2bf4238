// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "viewer/search_bar.h"

#include <QAccessible>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>

namespace tavlo::viewer {
namespace {

QString StateOf(const TextSearch& search) {
  if (search.Text().isEmpty()) return {};
  const qsizetype count = search.Matches().size();
  if (count > 0) return QStringLiteral("%1 of %2").arg(search.Current() + 1).arg(count);
  return search.Searching() ? QStringLiteral("Searching ...") : QStringLiteral("Not found");
}

}  // namespace

SearchBar::SearchBar(TextSearch& search, QWidget* parent)
    : QWidget(parent), search_(search), text_(new QLineEdit(this)), state_(new QLabel(this)) {
  setObjectName(QStringLiteral("SearchBar"));
  text_->setObjectName(QStringLiteral("SearchText"));
  text_->setAccessibleName(QStringLiteral("Find"));
  text_->setClearButtonEnabled(true);
  state_->setObjectName(QStringLiteral("SearchState"));
  state_->setTextFormat(Qt::PlainText);
  auto* label = new QLabel(QStringLiteral("Fin&d"), this);
  label->setBuddy(text_);
  const auto add = [this](Sign sign, const char* object_name, const char* name, const char* key) {
    buttons_.append({MakeBarButton(sign, object_name, QLatin1String(name), QLatin1String(key), this), sign});
    return buttons_.back().first;
  };
  QToolButton* previous = add(Sign::Previous, "PreviousMatch", "Previous place", "Shift+F3");
  QToolButton* next = add(Sign::Next, "NextMatch", "Next place", "F3");
  QToolButton* close = add(Sign::Close, "CloseSearch", "Close the search", "Esc");
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(label);
  row->addWidget(text_, 1);
  row->addWidget(previous);
  row->addWidget(next);
  row->addWidget(state_, 1);
  row->addWidget(close);

  connect(text_, &QLineEdit::textChanged, this, &SearchBar::Typed);
  connect(text_, &QLineEdit::returnPressed, &search, [&search] { search.Step(1); });
  connect(previous, &QToolButton::clicked, &search, [&search] { search.Step(-1); });
  connect(next, &QToolButton::clicked, &search, [&search] { search.Step(1); });
  connect(close, &QToolButton::clicked, this, &QWidget::hide);
  connect(&search, &TextSearch::Changed, this, &SearchBar::ShowState);
  ShowState();
}

void SearchBar::Begin() {
  show();
  text_->setFocus();
  text_->selectAll();
}

QString SearchBar::Text() const {
  return isVisibleTo(parentWidget()) ? text_->text() : QString();
}

void SearchBar::ShowState() {
  const QString state = StateOf(search_);
  if (state == state_->text()) return;
  state_->setText(state);
  for (const auto& [button, sign] : buttons_) {
    if (sign != Sign::Close) button->setEnabled(!search_.Matches().isEmpty());
  }
  // The focus stays in the text, so what became of it is read out behind it.
  text_->setAccessibleDescription(state);
  QAccessibleEvent told(text_, QAccessible::DescriptionChanged);
  QAccessible::updateAccessibility(&told);
}

void SearchBar::hideEvent(QHideEvent* event) {
  QWidget::hideEvent(event);
  if (!event->spontaneous()) emit Closed();
}

void SearchBar::changeEvent(QEvent* event) {
  if (event->type() == QEvent::PaletteChange) {
    for (const auto& [button, sign] : buttons_) DrawSign(*button, sign);
  }
  QWidget::changeEvent(event);
}

}  // namespace tavlo::viewer
