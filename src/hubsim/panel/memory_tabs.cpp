// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/panel/memory_tabs.h"

#include <QHeaderView>
#include <QPlainTextEdit>
#include <QTableView>
#include <algorithm>

#include "hubsim/panel/hub_words.h"
#include "hubsim/panel/line_table.h"
#include "hubsim/panel/look.h"
#include "hubsim/panel/shown_text.h"

namespace tavlo::hubsim {
namespace {

constexpr int kRowPadding = 4;
/// So many bytes of a line can be seen in the narrowest window.
constexpr int kLeastBytes = 8;
const QString kWideNumber = QStringLiteral("\u25BA 000 ");
const QString kWideKind = QStringLiteral("feed to sensor with safety distance, axis 8   ");

void SetText(QPlainTextEdit* page, const QString& text) {
  // Setting it loses the place and the selection of who reads there.
  if (page->toPlainText() != text) page->setPlainText(text);
}

}  // namespace

MemoryTabs::MemoryTabs(QWidget* parent)
    : QTabWidget(parent),
      lines_(new LineTable(this)),
      line_view_(MakeLines()),
      settings_(AddTextPage(QStringLiteral("&Axis settings"), "settings")),
      pool_(AddTextPage(QStringLiteral("&Text pool"), "pool")) {
  setObjectName(QStringLiteral("memory"));
}

QTableView* MemoryTabs::MakeLines() {
  auto* view = new QTableView(this);
  view->setObjectName(QStringLiteral("lines"));
  view->setAccessibleName(QStringLiteral("Lines in the hub's memory"));
  view->setModel(lines_);
  view->setTabKeyNavigation(false);
  view->setShowGrid(false);
  view->setWordWrap(false);
  view->setSelectionBehavior(QAbstractItemView::SelectRows);
  view->setSelectionMode(QAbstractItemView::SingleSelection);
  view->verticalHeader()->hide();
  view->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  view->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + kRowPadding);
  QHeaderView* header = view->horizontalHeader();
  header->setHighlightSections(false);
  header->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  header->resizeSection(LineTable::NumberColumn, fontMetrics().horizontalAdvance(kWideNumber));
  header->resizeSection(LineTable::KindColumn, fontMetrics().horizontalAdvance(kWideKind));
  // What does not fit ends in an ellipsis, and the tip tells it whole.
  header->setStretchLastSection(true);
  const QFontMetrics fixed(FixedFont(font()));
  view->setMinimumWidth(header->sectionSize(LineTable::NumberColumn) +
                        header->sectionSize(LineTable::KindColumn) +
                        fixed.horizontalAdvance(QString(kLeastBytes * 3, QLatin1Char('0'))));
  addTab(view, QStringLiteral("&Lines"));
  return view;
}

QPlainTextEdit* MemoryTabs::AddTextPage(const QString& caption, const char* name) {
  auto* page = new QPlainTextEdit(this);
  page->setObjectName(QLatin1String(name));
  page->setReadOnly(true);
  page->setTabChangesFocus(true);
  page->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  page->setLineWrapMode(QPlainTextEdit::NoWrap);
  page->setFont(FixedFont(font()));
  addTab(page, caption);
  return page;
}

void MemoryTabs::Show(const Hub& hub) {
  const MemoryView memory = hub.MemoryImage();
  const std::optional<int> running = hub.RunningLine();
  const bool changed = !shown_ || !std::ranges::equal(memory, *shown_);
  if (!changed && running == running_) return;
  lines_->Show(memory, hub.Options().firmware, running);
  if (running && running != running_) line_view_->scrollTo(lines_->index(*running, 0));
  running_ = running;
  if (!changed) return;
  if (!shown_) shown_.emplace();
  std::ranges::copy(memory, shown_->begin());
  SetText(settings_, ShownText(SettingsText(memory)));
  SetText(pool_, ShownText(PoolText(memory)));
}

}  // namespace tavlo::hubsim
