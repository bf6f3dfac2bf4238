// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/row_menu.h"

#include <QMenu>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "forms/registry.h"
#include "model/kinds.h"
#include "qt/gui/shown_text.h"
#include "text/cross_reference.h"
#include "text/short_desc.h"

namespace tavlo {
namespace {

/// Longer texts of lines are cut in a menu.
constexpr int kLongestText = 60;

QString Lines(LineRange rows) {
  if (rows.count == 1) return QStringLiteral("line %1").arg(rows.first + 1);
  return QStringLiteral("lines %1 to %2").arg(rows.first + 1).arg(rows.Last() + 1);
}

/// A text that is not ours has no mnemonic.
QString AsCaption(QString text) {
  return text.replace(QLatin1Char('&'), QStringLiteral("&&"));
}

/// "Line 12: Go to line 7"
QString LineEntry(const Source& source, int line) {
  QString text = InOneLine(ShownCaption(source.shown.rows[line].desc));
  if (text.size() > kLongestText) text = text.left(kLongestText) + QStringLiteral(" ...");
  return AsCaption(QStringLiteral("Line %1: ").arg(line + 1) + text);
}

QAction* Add(QMenu& menu, const QString& caption, const RowMenu& row, Act act, bool enabled) {
  QAction* action = menu.addAction(caption, [run = row.run, act] { run(act); });
  // Only shown: while the menu is closed the window has the key.
  action->setShortcut(QKeySequence(KeyOf(act)));
  action->setShortcutContext(Qt::WidgetShortcut);
  action->setShortcutVisibleInContextMenu(true);
  action->setEnabled(enabled);
  return action;
}

void AddPlace(QMenu& menu, const RowMenu& row, int line) {
  menu.addAction(LineEntry(row.source, line), [go_to = row.go_to, line] { go_to(line); });
}

void AddEdits(QMenu& menu, const RowMenu& row) {
  const bool may = !row.held;
  const int type = row.source.program.Prog[row.line].Type;
  const QString lines = Lines(row.rows);
  Add(menu, QStringLiteral("&Edit line %1").arg(row.line + 1), row, Act::Edit,
      may && FormOf(type) != nullptr);
  Add(menu, QStringLiteral("&Insert line %1").arg(row.line + 1), row, Act::Insert, may);
  Add(menu, QStringLiteral("De&lete ") + lines, row, Act::Delete, may);
  menu.addSeparator();
  Add(menu, QStringLiteral("Cu&t ") + lines, row, Act::Cut, may);
  Add(menu, QStringLiteral("&Copy ") + lines, row, Act::Copy, may);
  Add(menu, QStringLiteral("&Paste at line %1").arg(row.line + 1), row, Act::Paste, may);
}

bool IsLineNumber(int number) {
  return number >= 1 && number <= kLines;
}

/// Whether the dialog of this kind shows what the move will do.
bool HasAnalysis(int type) {
  const FormRow* form = FormOf(type);
  return form != nullptr && form->make()->Analysis() != nullptr;
}

/// Where the line leads, and what leads to it.
void AddWays(QMenu& menu, const RowMenu& row) {
  std::set<int> targets;
  std::set<int> comers;
  bool limit = false;
  for (const JumpRow& jump : MakeCrossReference(row.source.program).jumps) {
    if (jump.from == row.line + 1 && IsLineNumber(jump.to)) targets.insert(jump.to - 1);
    if (jump.to != row.line + 1) continue;
    jump.from ? static_cast<void>(comers.insert(*jump.from - 1)) : static_cast<void>(limit = true);
  }
  QMenu* to = menu.addMenu(QStringLiteral("&Go to its target"));
  for (const int line : targets) AddPlace(*to, row, line);
  to->setEnabled(!targets.empty());
  QMenu* from = menu.addMenu(QStringLiteral("&Who comes here"));
  for (const int line : comers) AddPlace(*from, row, line);
  if (limit) from->addAction(QStringLiteral("A limit switch, at any line"))->setEnabled(false);
  from->setEnabled(limit || !comers.empty());
}

void AddHistory(QMenu& menu, const RowMenu& row) {
  const auto step = [&](const QString& caption, std::string_view name, Act act) {
    Add(menu, name.empty() ? caption : caption + QLatin1Char(' ') + AsCaption(FromMessage(name)), row, act,
        !row.held && !name.empty());
  };
  step(QStringLiteral("&Undo"), row.source.history.UndoName(), Act::Undo);
  step(QStringLiteral("&Redo"), row.source.history.RedoName(), Act::Redo);
  menu.addSeparator();
  Add(menu, QStringLiteral("&Go to line ..."), row, Act::GoToLine, !row.held);
  Add(menu, QStringLiteral("&Find ..."), row, Act::Find, !row.held);
  Add(menu, QStringLiteral("Find &next"), row, Act::FindNext, !row.held);
}

}  // namespace

void FillRowMenu(QMenu& menu, const RowMenu& row) {
  AddEdits(menu, row);
  menu.addSeparator();
  AddWays(menu, row);
  const int type = row.source.program.Prog[row.line].Type;
  Add(menu, QStringLiteral("P&rofile of this move"), row, Act::Profile, !row.held && HasAnalysis(type));
  menu.addSeparator();
  AddHistory(*menu.addMenu(QStringLiteral("E&dit")), row);
}

}  // namespace tavlo
