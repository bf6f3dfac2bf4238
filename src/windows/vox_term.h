// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QTimer>
#include <QWidget>
#include <string>

#include "session/desk.h"

class QEventLoop;
class QPlainTextEdit;

namespace tavlo {

/// `VOXterm`: sends text commands to the drives while it has the focus. Created anew for each opening.
class VoxTerm : public QWidget {
  Q_OBJECT

 public:
  VoxTerm(Desk& desk, QWidget* main_window);
  /// Returns when it is closed.
  void Run();
  void HistoryGrew(std::string_view added);
  void HistoryCut();

 protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  void LayOut();
  void Enter();
  /// Shows an older or a newer command, if the caret cannot move up or down in what is written. Returns
  /// whether it could not.
  bool Recall(int key);
  void LimitCommand();
  void ShowHistory();

  Desk& desk_;
  QPlainTextEdit* command_;
  QPlainTextEdit* history_;
  QEventLoop* loop_ = nullptr;
  /// What has arrived since the log was last painted, and whether the older part has been cut off since.
  std::string grown_;
  bool cut_ = false;
  QTimer paint_;
};

/// Opens the terminal over the main window.
class TerminalWindows : public TerminalView {
 public:
  explicit TerminalWindows(QWidget* main_window) : main_window_(main_window) {}
  void Attach(Desk& desk) { desk_ = &desk; }
  void ShowModal() override;
  void HistoryGrew(std::string_view added) override;
  void HistoryCut() override;

 private:
  QWidget* main_window_;
  Desk* desk_ = nullptr;
  VoxTerm* open_ = nullptr;
};

}  // namespace tavlo
