// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QString>

namespace tavlo {

/// What the operator can have done in the main window by a key or in the menu of a row.
enum class Act {
  Load,
  SaveToFile,
  Save,
  Print,
  Download,
  Upload,
  Execute,
  Help,
  Terminal,
  Undo,
  Redo,
  GoToLine,
  Find,
  FindNext,
  FindPrevious,
  Edit,
  Insert,
  Delete,
  Cut,
  Copy,
  Paste,
  Profile,
};

/// Where the focus must be for a key to act.
enum class Reach {
  /// Anywhere in the main window.
  Window,
  /// On the rows. Elsewhere the key belongs to what has the focus, such as the box of a number.
  Rows,
  /// On the rows, which take the key themselves.
  ByRows,
};

/// A key of the main window.
struct Shortcut {
  Act act;
  Reach reach;
  Qt::KeyboardModifiers modifiers;
  Qt::Key key;
  [[nodiscard]] QKeyCombination Keys() const { return modifiers | key; }
};

/// Of several keys for the same the first one is shown.
inline constexpr Shortcut kShortcuts[] = {
    {Act::Load, Reach::Window, Qt::ControlModifier, Qt::Key_O},
    {Act::SaveToFile, Reach::Window, Qt::ControlModifier, Qt::Key_S},
    {Act::Save, Reach::Window, Qt::ControlModifier | Qt::ShiftModifier, Qt::Key_S},
    {Act::Print, Reach::Window, Qt::ControlModifier, Qt::Key_P},
    {Act::Download, Reach::Window, Qt::ControlModifier, Qt::Key_D},
    {Act::Upload, Reach::Window, Qt::ControlModifier, Qt::Key_U},
    {Act::Execute, Reach::Window, Qt::NoModifier, Qt::Key_F5},
    {Act::Help, Reach::Window, Qt::NoModifier, Qt::Key_F1},
    {Act::Terminal, Reach::Window, Qt::ControlModifier, Qt::Key_T},
    {Act::Undo, Reach::Window, Qt::ControlModifier, Qt::Key_Z},
    {Act::Redo, Reach::Window, Qt::ControlModifier | Qt::ShiftModifier, Qt::Key_Z},
    {Act::Redo, Reach::Window, Qt::ControlModifier, Qt::Key_Y},
    {Act::GoToLine, Reach::Window, Qt::ControlModifier, Qt::Key_G},
    {Act::Find, Reach::Window, Qt::ControlModifier, Qt::Key_F},
    {Act::FindNext, Reach::Window, Qt::NoModifier, Qt::Key_F3},
    {Act::FindPrevious, Reach::Window, Qt::ShiftModifier, Qt::Key_F3},
    {Act::Edit, Reach::ByRows, Qt::ShiftModifier, Qt::Key_Return},
    {Act::Insert, Reach::Rows, Qt::NoModifier, Qt::Key_Insert},
    {Act::Delete, Reach::Rows, Qt::NoModifier, Qt::Key_Delete},
    {Act::Cut, Reach::Rows, Qt::ControlModifier, Qt::Key_X},
    {Act::Copy, Reach::Rows, Qt::ControlModifier, Qt::Key_C},
    {Act::Paste, Reach::Rows, Qt::ControlModifier, Qt::Key_V},
};

/// Returns the key as it is shown, such as "Ctrl+O"; empty if there is none.
[[nodiscard]] QString KeyOf(Act act);

}  // namespace tavlo
