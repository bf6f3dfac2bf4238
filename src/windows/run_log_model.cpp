// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/run_log_model.h"

#include <algorithm>
#include <array>

namespace tavlo {
namespace {

constexpr std::array kCaptions = {"Time", "Event", "Line", "Axis", "What", "Value"};
static_assert(kCaptions.size() == kRunColumns.size());

/// Times stand under one another by their points.
QVariant AlignmentOf(int column) {
  const bool is_time = column == static_cast<int>(RunColumn::Time);
  return QVariant((is_time ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
}

}  // namespace

void RunLogModel::Follow(const RunLog& log) {
  beginResetModel();
  log_ = &log;
  head_ = log.Run() == 0 ? std::vector<RunRow>() : HeadOf(log);
  first_ = log.First();
  last_ = log.Last();
  made_.reset();
  endResetModel();
}

void RunLogModel::Show(std::vector<RunRow> rows) {
  beginResetModel();
  log_ = nullptr;
  head_ = std::move(rows);
  first_ = last_ = 0;
  made_.reset();
  endResetModel();
}

void RunLogModel::Take() {
  if (log_ == nullptr) return;
  if (log_->First() != first_) DropLost();
  if (log_->Last() == last_) return;
  const int rows = rowCount();
  beginInsertRows({}, rows, rows + static_cast<int>(log_->Last() - last_) - 1);
  last_ = log_->Last();
  endInsertRows();
}

void RunLogModel::DropLost() {
  const std::uint64_t lost = std::min(log_->First(), last_) - first_;
  const int head = static_cast<int>(head_.size());
  if (lost > 0) {
    beginRemoveRows({}, head, head + static_cast<int>(lost) - 1);
    first_ += lost;
    endRemoveRows();
  }
  first_ = log_->First();
  last_ = std::max(last_, first_);
  std::vector<RunRow> now = HeadOf(*log_);
  const int more = static_cast<int>(now.size()) - head;
  if (more > 0) beginInsertRows({}, head, head + more - 1);
  head_ = std::move(now);
  if (more > 0) endInsertRows();
  emit dataChanged(index(0, 0), index(static_cast<int>(head_.size()) - 1, columnCount() - 1));
}

int RunLogModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(head_.size() + (last_ - first_));
}

int RunLogModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(kCaptions.size());
}

const RunRow& RunLogModel::RowAt(int row) const {
  static const RunRow gone;
  const auto index = static_cast<std::size_t>(row);
  if (index < head_.size()) return head_[index];
  const std::uint64_t number = first_ + index - head_.size();
  // The log may have lost it since the last Take().
  if (number < log_->First()) return gone;
  if (!made_ || made_->first != number) made_ = {number, RowOf(*log_, number)};
  return made_->second;
}

QVariant RunLogModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= rowCount()) return {};
  if (role == Qt::TextAlignmentRole) return AlignmentOf(index.column());
  if (role != Qt::DisplayRole && role != Qt::ToolTipRole) return {};
  QString text = QString::fromStdString(RowAt(index.row())[static_cast<RunColumn>(index.column())]);
  // A kept file may hold anything.
  for (QChar& c : text) {
    if (c.category() == QChar::Other_Control) c = QLatin1Char(' ');
  }
  return text;
}

QVariant RunLogModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation == Qt::Horizontal && role == Qt::TextAlignmentRole) return AlignmentOf(section);
  const bool captioned = orientation == Qt::Horizontal && role == Qt::DisplayRole;
  return captioned ? QVariant(QLatin1String(kCaptions[static_cast<std::size_t>(section)])) : QVariant();
}

}  // namespace tavlo
