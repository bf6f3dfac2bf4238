// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/find_bar.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "qt/gui/shown_text.h"
#include "widgets/selection.h"
#include "windows/prog_window.h"
#include "windows/shortcuts.h"

namespace tavlo {
namespace {

constexpr int kFindGap = 6;

QPushButton* MakeButton(const char* name, const QString& caption, const QString& tool_tip, QWidget* parent) {
  auto* button = new QPushButton(caption, parent);
  button->setObjectName(QLatin1String(name));
  button->setToolTip(tool_tip);
  button->setAutoDefault(false);
  return button;
}

/// Rows hold the letters of Latin-1 only.
bool CanStandInARow(const QString& words) {
  return std::ranges::all_of(words, [](QChar c) { return c.unicode() <= 0xFF; });
}

}  // namespace

FindBar::FindBar(ProgWindow& rows, QWidget* parent)
    : QWidget(parent), rows_(rows), words_(new QLineEdit(this)), state_(new QLabel(this)) {
  setObjectName(QStringLiteral("FindBar"));
  words_->setObjectName(QStringLiteral("FindWords"));
  MakeSelectionStandOut(*words_);
  words_->setAccessibleName(QStringLiteral("Find in texts, comments and prompts"));
  state_->setObjectName(QStringLiteral("FindState"));
  state_->setTextFormat(Qt::PlainText);
  auto* label = new QLabel(QStringLiteral("&Find"), this);
  label->setBuddy(words_);
  auto* next = MakeButton("FindNext", QStringLiteral("&Next"),
                          QStringLiteral("Go to the next line (%1)").arg(KeyOf(Act::FindNext)), this);
  auto* previous =
      MakeButton("FindPrevious", QStringLiteral("Pre&vious"),
                 QStringLiteral("Go to the line before (%1)").arg(KeyOf(Act::FindPrevious)), this);
  auto* close =
      MakeButton("CloseFind", QStringLiteral("C&lose"), QStringLiteral("Close the search (Esc)"), this);
  auto* entry = new QHBoxLayout;
  entry->setSpacing(kFindGap);
  entry->addWidget(label);
  entry->addWidget(words_, 1);
  auto* buttons = new QHBoxLayout;
  buttons->setSpacing(kFindGap);
  buttons->addWidget(next);
  buttons->addWidget(previous);
  buttons->addWidget(state_, 1);
  buttons->addStretch();
  buttons->addWidget(close);
  // In one row a large font would leave the words no room.
  auto* rows_of_bar = new QVBoxLayout(this);
  rows_of_bar->setContentsMargins(0, 0, 0, 0);
  rows_of_bar->setSpacing(kFindGap / 2);
  rows_of_bar->addLayout(entry);
  rows_of_bar->addLayout(buttons);
  connect(words_, &QLineEdit::textEdited, this, [this] { Look(began_at_, SearchWay::Down, std::nullopt); });
  connect(words_, &QLineEdit::returnPressed, this, [this] { Step(SearchWay::Down); });
  connect(next, &QPushButton::clicked, this, [this] { Step(SearchWay::Down); });
  connect(previous, &QPushButton::clicked, this, [this] { Step(SearchWay::Up); });
  connect(close, &QPushButton::clicked, this, &FindBar::Close);
  state_->hide();
  hide();
}

void FindBar::Begin() {
  show();
  words_->setFocus();
  words_->selectAll();
}

void FindBar::showEvent(QShowEvent* event) {
  began_at_ = rows_.CurrentRow();
  Say({});
  QWidget::showEvent(event);
}

void FindBar::Close() {
  hide();
  rows_.setFocus();
}

void FindBar::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) return Close();
  QWidget::keyPressEvent(event);
}

void FindBar::Step(SearchWay way) {
  if (words_->text().isEmpty()) return Begin();
  const int present = rows_.CurrentRow();
  Look((present + (way == SearchWay::Down ? 1 : kLines - 1)) % kLines, way, present);
}

void FindBar::Look(int from, SearchWay way, std::optional<int> beyond) {
  const QString words = words_->text();
  if (words.isEmpty()) return Say({});
  const auto found =
      CanStandInARow(words) ? FindLine(rows_.Session().program, ToText(words), from, way) : std::nullopt;
  if (!found) return Say(QStringLiteral("Not found"));
  rows_.GoTo(found->line);
  if (beyond) began_at_ = found->line;
  const bool down = way == SearchWay::Down;
  const bool wrapped = beyond ? (down ? found->line <= *beyond : found->line >= *beyond) : found->wrapped;
  const QString line = QStringLiteral("Line %1").arg(found->line + 1);
  if (!wrapped) return Say(line);
  Say(line + (down ? QStringLiteral(", from the top again") : QStringLiteral(", from the end again")));
}

void FindBar::Say(const QString& text) {
  state_->setText(text);
  // What is empty is nothing to be read out.
  state_->setVisible(!text.isEmpty());
  // The focus stays where it is, so what became of the search is read out behind it.
  words_->setAccessibleDescription(text);
  QAccessibleEvent told(words_, QAccessible::DescriptionChanged);
  QAccessible::updateAccessibility(&told);
}

}  // namespace tavlo
