// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QObject>
#include <QTimer>
#include <optional>

#include "platform/state_folder.h"
#include "session/desk.h"
#include "session/run_keep.h"
#include "session/run_log.h"

namespace tavlo {

class RunLogWindow;

/// The log of the run that is up, the logs of the last ones, and the window that shows them.
class RunLogBook : public QObject {
  Q_OBJECT

 public:
  /// `folder` is where runs are kept; null if they are not.
  RunLogBook(Clock& clock, StateFolder* folder, QWidget* main_window);
  ~RunLogBook() override;

  [[nodiscard]] RunLog& Log() { return log_; }
  void Attach(Desk& desk) { desk_ = &desk; }
  /// Shows the window.
  void Open();

 signals:
  /// The window has been closed.
  void Closed();

 private:
  void RunsChanged();
  void Keep();

  RunLog log_;
  std::optional<RunKeep> keep_;
  QWidget* main_window_;
  Desk* desk_ = nullptr;
  /// Null until it is asked for.
  RunLogWindow* window_ = nullptr;
  QTimer keeping_;
  std::string failure_;
};

}  // namespace tavlo
