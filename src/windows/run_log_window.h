// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QTimer>
#include <QWidget>
#include <string>

#include "session/desk.h"
#include "session/run_keep.h"

class QComboBox;
class QLabel;
class QPushButton;
class QTableView;

namespace tavlo {

class RunLogModel;

/// `RunLog`: the runs that there are, newest first, and the events of the chosen one. The run that is up
/// grows as it goes on; its newest event is in sight as long as the scroll bar is at the end. Not modal:
/// while a program runs Escape stops it in this window too.
class RunLogWindow : public QWidget {
  Q_OBJECT

 public:
  /// `keep` is null if runs are not kept.
  RunLogWindow(Desk& desk, RunLog& log, RunKeep* keep, QWidget* main_window);

  /// Shows the window with the newest run, or brings it to the front.
  void Open();
  /// A run has begun, or has been closed.
  void RunsChanged();
  /// Says why the last run could not be kept; nothing for an empty text.
  void TellFailure(const std::string& why);

 signals:
  void Closed();

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void LayOut();
  void SetUpTable();
  void SpareRunWindow();
  void ListRuns();
  void AddRun(const RunRow& begin, const std::string& name);
  void ShowChosen();
  void ShowKept(const std::string& name);
  void TakeEvents();
  void Tell(const QString& text);
  void Save();
  [[nodiscard]] std::string CsvOfChosen() const;
  [[nodiscard]] bool ChosenIsLive() const;
  [[nodiscard]] std::string ChosenName() const;
  /// A file dialog would cover the controls of a run, and hold up a transfer.
  [[nodiscard]] bool MaySave() const;

  Desk& desk_;
  RunLog& log_;
  RunKeep* keep_;
  RunLogModel* model_;
  QLabel* runs_label_;
  QComboBox* runs_;
  QTableView* table_;
  QLabel* notice_;
  QPushButton* save_;
  QTimer batch_;
  std::string failure_;
};

}  // namespace tavlo
