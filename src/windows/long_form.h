// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QString>
#include <QWidget>

#include "platform/comm_devices.h"
#include "session/desk.h"

class QMenu;
class QShortcut;
class QSplitter;

namespace tavlo {

class About;
class CommandBar;
class DrivesPanel;
class HubPanel;
class LimitsPanel;
class MainKeys;
class ProgramGrid;
class StatusLine;
class StopButton;

/// Why the operator cannot use the commands.
enum class Hold { None, Run, Transfer };

/// `LongForm`: the main window. Shows the session and passes the operator's actions to the handlers of the
/// core.
class LongForm : public QWidget, public ProgramView {
  Q_OBJECT

 public:
  LongForm(Source& source, CommDevices& comms);
  ~LongForm() override;

  /// The load of the window: initialises the session, opens the port and fills the grid. May show boxes about
  /// the port. Asks the hub nothing.
  void Begin(Desk& desk);
  /// The program ends for a reason outside this window: saves the port's number.
  void Unload();
  /// Opens a program file, if the operator could press a command now.
  void Open(const QString& file);
  /// While a program runs or is being sent, only the grid can be used, and the window cannot be closed.
  void HoldCommands(Hold hold);

  void RowChanged(int line) override;
  void AllRowsChanged() override;
  void ArrowsChanged() override;
  void DrivesChanged() override;
  void HubChanged() override;
  void LimitChanged() override;
  void CaptionChanged() override;
  void AutoScroll(int line) override;
  void GoTo(int line) override;
  void ProgCounter(std::optional<int> line) override;
  void StopChanged() override;
  void SomethingHappened() override;
  void Note(std::string_view text) override;

 signals:
  /// `StopButton`
  void StopPressed();
  /// The operator has left the program.
  void Ended();
  /// The operator wants to see the logs of the runs.
  void RunLogAsked();

 protected:
  void closeEvent(QCloseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  void LayOut();
  void Connect();
  void Command(std::string_view button, void (*handler)(Desk&));
  /// Once a press, however long the key is held.
  QShortcut* OnKey(const QKeySequence& key, std::function<void()> run);
  /// The operator chose this index in one of the lists. If no click could have done so, the lists show the
  /// real state again.
  void Choose(void (*handler)(Desk&, int), int index);
  /// The one file that is dragged here, if it could be opened now; empty otherwise.
  [[nodiscard]] QString DroppedFile(const QDropEvent& event) const;
  void ListRecent();
  void Quit();
  void End();

  Source& source_;
  Desk* desk_ = nullptr;
  CommandBar* commands_;
  QSplitter* columns_;
  StopButton* stop_;
  ProgramGrid* grid_;
  QWidget* side_;
  HubPanel* hub_;
  DrivesPanel* drives_;
  LimitsPanel* limits_;
  QMenu* recent_;
  StatusLine* status_;
  MainKeys* keys_;
  /// Null until it is asked for.
  About* about_ = nullptr;
  Hold hold_ = Hold::None;
  bool ended_ = false;
};

}  // namespace tavlo
