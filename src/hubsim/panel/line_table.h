// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <QAbstractTableModel>
#include <array>
#include <cstdint>
#include <optional>

#include "hubsim/program/memory.h"

namespace tavlo::hubsim {

/// The 200 lines in the hub's memory: number, kind, bytes. The line that runs is yellow and has a pointer.
class LineTable : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum Column { NumberColumn, KindColumn, BytesColumn, Columns };

  explicit LineTable(QObject* parent);
  /// Announces only the rows that have changed.
  void Show(MemoryView memory, std::uint8_t firmware, std::optional<int> running);

  [[nodiscard]] int rowCount(const QModelIndex& parent) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  struct Row {
    std::array<std::uint8_t, kSlotSize> slot{};
    QString kind;
    QString bytes;
    bool read = false;
  };

  void Tell(int row);

  std::array<Row, kLineCount> rows_;
  std::optional<int> running_;
};

}  // namespace tavlo::hubsim
