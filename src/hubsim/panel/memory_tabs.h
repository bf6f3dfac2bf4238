// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <QTabWidget>
#include <array>
#include <cstdint>
#include <optional>

#include "hubsim/hub.h"

class QPlainTextEdit;
class QTableView;

namespace tavlo::hubsim {

class LineTable;

/// The memory that the hub was given: lines, axis settings, pool.
class MemoryTabs : public QTabWidget {
  Q_OBJECT

 public:
  explicit MemoryTabs(QWidget* parent);
  void Show(const Hub& hub);

 private:
  QTableView* MakeLines();
  QPlainTextEdit* AddTextPage(const QString& caption, const char* name);

  LineTable* lines_;
  QTableView* line_view_;
  QPlainTextEdit* settings_;
  QPlainTextEdit* pool_;
  std::optional<std::array<std::uint8_t, kMemorySize>> shown_;
  std::optional<int> running_;
};

}  // namespace tavlo::hubsim
