// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/panel/line_table.h"

#include <QApplication>
#include <QBrush>
#include <QColor>
#include <QFont>
#include <algorithm>

#include "hubsim/panel/hub_words.h"
#include "hubsim/panel/look.h"
#include "hubsim/panel/shown_text.h"

namespace tavlo::hubsim {
namespace {

const QColor kRunningBack(255, 255, 128);
constexpr std::array<const char*, LineTable::Columns> kCaptions{"Line", "Kind", "Bytes"};

}  // namespace

LineTable::LineTable(QObject* parent) : QAbstractTableModel(parent) {}

void LineTable::Show(MemoryView memory, std::uint8_t firmware, std::optional<int> running) {
  for (int line = 0; line < kLineCount; ++line) {
    const auto slot = memory.subspan(static_cast<std::size_t>(line) * kSlotSize).first<kSlotSize>();
    Row& row = rows_[static_cast<std::size_t>(line)];
    if (row.read && std::ranges::equal(slot, row.slot)) continue;
    std::ranges::copy(slot, row.slot.begin());
    row.read = true;
    row.kind = ShownText(LineWords(slot, firmware));
    row.bytes = ShownText(HexWords(LineBytes(slot, firmware)));
    Tell(line);
  }
  if (running == running_) return;
  const std::optional<int> before = running_;
  running_ = running;
  for (const std::optional<int>& line : {before, running_}) {
    if (line) Tell(*line);
  }
}

void LineTable::Tell(int row) {
  emit dataChanged(index(row, 0), index(row, Columns - 1));
}

int LineTable::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : kLineCount;
}

int LineTable::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : Columns;
}

QVariant LineTable::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const bool runs = running_ == index.row();
  const Row& row = rows_[static_cast<std::size_t>(index.row())];
  switch (role) {
    case Qt::DisplayRole: break;
    case Qt::ToolTipRole: return index.column() == BytesColumn ? QVariant(row.bytes) : QVariant();
    case Qt::BackgroundRole: return runs ? QVariant(QBrush(kRunningBack)) : QVariant();
    case Qt::ForegroundRole: return runs ? QVariant(QBrush(Qt::black)) : QVariant();
    case Qt::FontRole:
      return index.column() == BytesColumn ? QVariant(FixedFont(QApplication::font())) : QVariant();
    case Qt::TextAlignmentRole:
      return index.column() == NumberColumn ? static_cast<int>(Qt::AlignRight | Qt::AlignVCenter)
                                            : QVariant();
    default: return {};
  }
  switch (index.column()) {
    case NumberColumn:
      return (runs ? QStringLiteral("\u25BA ") : QString()) + QString::number(index.row() + 1);
    case KindColumn: return row.kind;
    default: return row.bytes;
  }
}

QVariant LineTable::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  return QString::fromLatin1(kCaptions[static_cast<std::size_t>(section)]);
}

}  // namespace tavlo::hubsim
