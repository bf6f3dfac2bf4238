// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QObject>
#include <QPoint>
#include <functional>

#include "session/desk.h"
#include "windows/shortcuts.h"

class QMenu;
class QWidget;

namespace tavlo {

class ProgramGrid;

/// The keys of the main window and the menu of its rows: what each of them has done, and when it may be.
class MainKeys : public QObject {
  Q_OBJECT

 public:
  /// `may_act` tells whether the commands can be used now; `commit` takes what stands in an entry.
  MainKeys(QWidget& window, ProgramGrid& grid, std::function<bool()> may_act, std::function<void()> commit);

  void Attach(Desk& desk) { desk_ = &desk; }
  /// Does it, if the commands can be used.
  void Run(Act act);

 private:
  void AddShortcuts();
  /// Handlers of the program and the hub.
  void RunCommand(Act act);
  /// What is done to the selected rows.
  void RunOnRows(Act act);
  void ShowMenu(QPoint position);

  QWidget& window_;
  ProgramGrid& grid_;
  std::function<bool()> may_act_;
  std::function<void()> commit_;
  Desk* desk_ = nullptr;
  /// Null until it is asked for.
  QMenu* menu_ = nullptr;
};

}  // namespace tavlo
