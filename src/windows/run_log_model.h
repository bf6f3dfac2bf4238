// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QAbstractTableModel>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "session/run_rows.h"

namespace tavlo {

/// The events of one run as a table: those of a log, which may still grow, or those of a run that was kept.
class RunLogModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  using QAbstractTableModel::QAbstractTableModel;

  /// Shows the log's run. What it gains afterwards is shown by Take(). The log must outlive the model.
  void Follow(const RunLog& log);
  void Show(std::vector<RunRow> rows);
  /// Shows what the followed log has gained, and drops what it has lost, in one step each. Costs the same
  /// however many events there are.
  void Take();

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  void DropLost();
  [[nodiscard]] const RunRow& RowAt(int row) const;

  const RunLog* log_ = nullptr;
  /// The rows before the first event; all rows if no log is followed.
  std::vector<RunRow> head_;
  /// The events shown.
  std::uint64_t first_ = 0;
  std::uint64_t last_ = 0;
  /// The event whose row was asked for last: a view asks for it cell by cell.
  mutable std::optional<std::pair<std::uint64_t, RunRow>> made_;
};

}  // namespace tavlo
