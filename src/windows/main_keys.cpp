// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/main_keys.h"

#include <QMenu>
#include <QShortcut>
#include <utility>

#include "commands/clipboard.h"
#include "commands/editing_now.h"
#include "commands/lines.h"
#include "commands/print_listing.h"
#include "commands/program_files.h"
#include "commands/undo.h"
#include "link/download.h"
#include "link/drive_terminal.h"
#include "link/execution.h"
#include "link/upload.h"
#include "widgets/takes_input.h"
#include "windows/find_bar.h"
#include "windows/go_to_line.h"
#include "windows/program_grid.h"
#include "windows/row_menu.h"

namespace tavlo {

MainKeys::MainKeys(QWidget& window, ProgramGrid& grid, std::function<bool()> may_act,
                   std::function<void()> commit)
    : QObject(&window),
      window_(window),
      grid_(grid),
      may_act_(std::move(may_act)),
      commit_(std::move(commit)) {
  AddShortcuts();
  connect(&grid_.Pane(), &ProgWindow::MenuAsked, this, &MainKeys::ShowMenu);
}

void MainKeys::AddShortcuts() {
  for (const Shortcut& row : kShortcuts) {
    if (row.reach == Reach::ByRows) continue;
    const bool anywhere = row.reach == Reach::Window;
    auto* shortcut = new QShortcut(QKeySequence(row.Keys()), anywhere ? &window_ : &grid_.Pane());
    shortcut->setContext(anywhere ? Qt::WindowShortcut : Qt::WidgetShortcut);
    // Once a press, however long the key is held.
    shortcut->setAutoRepeat(false);
    connect(shortcut, &QShortcut::activated, this, [this, act = row.act] { Run(act); });
  }
}

void MainKeys::Run(Act act) {
  // Reading about it does no harm while the machine runs.
  const bool may = act == Act::Help || may_act_();
  if (desk_ == nullptr || !may || !TakesInput(window_)) return;
  commit_();
  RunCommand(act);
}

void MainKeys::RunCommand(Act act) {
  Desk& desk = *desk_;
  switch (act) {
    case Act::Load: return Load(desk);
    case Act::SaveToFile: return SaveToFile(desk);
    case Act::Save: return Save(desk);
    case Act::Print: return PrintListing(desk);
    case Act::Download: return static_cast<void>(Download(desk));
    case Act::Upload: return static_cast<void>(Upload(desk));
    case Act::Execute: return static_cast<void>(Execute(desk));
    case Act::Help: return desk.OpenHelp("Hub Composer.pdf");
    case Act::Terminal: return OpenTerminal(desk);
    case Act::Undo: return Undo(desk);
    case Act::Redo: return Redo(desk);
    case Act::GoToLine:
      if (const auto line = AskForLine(&window_, grid_.Pane().CurrentRow())) grid_.Pane().GoTo(*line);
      return;
    case Act::Find: return grid_.Search().Begin();
    case Act::FindNext: return grid_.Search().Step(SearchWay::Down);
    case Act::FindPrevious: return grid_.Search().Step(SearchWay::Up);
    case Act::Edit:
    case Act::Insert:
    case Act::Delete:
    case Act::Cut:
    case Act::Copy:
    case Act::Paste:
    case Act::Profile: return RunOnRows(act);
  }
}

void MainKeys::RunOnRows(Act act) {
  Desk& desk = *desk_;
  ProgWindow& pane = grid_.Pane();
  const int line = pane.CurrentRow();
  const LineRange rows = pane.Selection().Rows();
  if (ProgramHeld(desk)) return;
  if (act == Act::Edit) return DropIcon(desk, line, line, true);
  if (act == Act::Insert) static_cast<void>(InsertRow(desk, line));
  if (act == Act::Copy) CopyRows(desk, rows);
  if (act == Act::Paste) PasteRows(desk, line);
  if (act == Act::Delete && !DeleteRows(desk, rows)) return;
  if (act == Act::Cut) CutRows(desk, rows);
  if (act == Act::Delete || act == Act::Cut) pane.GoTo(rows.first);
  if (act == Act::Profile) {
    desk.source.CurLine = static_cast<std::int16_t>(line);
    ShowInstDialog(desk, DialogPage::Analysis);
  }
}

void MainKeys::ShowMenu(QPoint position) {
  if (desk_ == nullptr || !TakesInput(window_) || (menu_ != nullptr && menu_->isVisible())) return;
  ProgWindow& pane = grid_.Pane();
  if (menu_ == nullptr) {
    menu_ = new QMenu(&pane);
    menu_->setObjectName(QStringLiteral("RowMenu"));
  }
  // It stays, as an entry may bring up a dialog before the menu has done with the key that chose it.
  menu_->clear();
  qDeleteAll(menu_->findChildren<QMenu*>(Qt::FindDirectChildrenOnly));
  menu_->setAccessibleName(QStringLiteral("Line %1").arg(pane.CurrentRow() + 1));
  FillRowMenu(*menu_, {.source = desk_->source,
                       .line = pane.CurrentRow(),
                       .rows = pane.Selection().Rows(),
                       .held = !may_act_() || ProgramHeld(*desk_),
                       .run = [this](Act act) { Run(act); },
                       .go_to = [&pane](int line) { pane.GoTo(line); }});
  menu_->popup(position);
}

}  // namespace tavlo
