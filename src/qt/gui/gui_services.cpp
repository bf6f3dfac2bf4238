// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "qt/gui/gui_services.h"

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QMessageBox>
#include <QSpacerItem>
#include <QStringList>
#include <utility>

#include "qt/gui/shown_text.h"

namespace tavlo {
namespace {

constexpr std::size_t kBoxesKept = 100;
/// What a title bar has beside its text.
constexpr int kTitleButtons = 120;

QMessageBox::Icon IconOf(Icon icon) {
  switch (icon) {
    case Icon::None: return QMessageBox::NoIcon;
    case Icon::Stop: return QMessageBox::Critical;
    case Icon::Question: return QMessageBox::Question;
    case Icon::Exclamation: return QMessageBox::Warning;
  }
  return QMessageBox::NoIcon;
}

QMessageBox::StandardButtons ButtonsOf(Buttons buttons) {
  switch (buttons) {
    case Buttons::OK: return QMessageBox::Ok;
    case Buttons::OKCancel: return QMessageBox::Ok | QMessageBox::Cancel;
    case Buttons::YesNo: return QMessageBox::Yes | QMessageBox::No;
  }
  return QMessageBox::Ok;
}

/// A box that is closed by its frame or by Escape answers as its last button; with OK alone that is OK.
Answer AnswerOf(int button, Buttons buttons) {
  switch (buttons) {
    case Buttons::OK: return Answer::OK;
    case Buttons::OKCancel: return button == QMessageBox::Ok ? Answer::OK : Answer::Cancel;
    case Buttons::YesNo: return button == QMessageBox::Yes ? Answer::Yes : Answer::No;
  }
  return Answer::OK;
}

/// The window that a box or dialog belongs to. Before the first activation that is the one that can be seen.
QWidget* Owner() {
  if (QWidget* modal = QApplication::activeModalWidget()) return modal;
  if (QWidget* active = QApplication::activeWindow()) return active;
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (window->isVisible()) return window;
  }
  return nullptr;
}

/// A box is as wide as its text wants it, which may be less than its title needs.
void MakeRoomForTitle(QMessageBox& box) {
  const int wanted = box.fontMetrics().horizontalAdvance(box.windowTitle()) + kTitleButtons;
  auto* grid = qobject_cast<QGridLayout*>(box.layout());
  if (grid == nullptr) return;
  grid->addItem(new QSpacerItem(wanted, 0), grid->rowCount(), 0, 1, grid->columnCount());
}

QString FilterOf(const FileFilter& filter) {
  return FromText(filter.name) + " (" + FromText(filter.pattern) + ")";
}

}  // namespace

Answer GuiMessageBoxes::MsgBox(std::string_view text, std::string_view title, Buttons buttons, Icon icon) {
  shown_.push_back({std::string(text), std::string(title), buttons, icon});
  if (shown_.size() > kBoxesKept) shown_.pop_front();
  if (!answers_.empty()) {
    const Answer answer = answers_.front();
    answers_.pop_front();
    return answer;
  }
  QMessageBox box(Owner());
  // A window manager is told the program's file name where a title is empty: a blank keeps it empty.
  box.setWindowTitle(title.empty() ? QStringLiteral(" ") : FromMessage(title));
  box.setTextFormat(Qt::PlainText);
  box.setText(FromMessage(text));
  box.setIcon(IconOf(icon));
  box.setStandardButtons(ButtonsOf(buttons));
  if (buttons == Buttons::YesNo) box.setEscapeButton(QMessageBox::No);
  MakeRoomForTitle(box);
  return AnswerOf(box.exec(), buttons);
}

std::optional<std::string> GuiFileDialogs::SaveFileName(const FileDialogSetup& setup) {
  return Ask(Kind::Save, setup);
}

std::optional<std::string> GuiFileDialogs::OpenFileName(const FileDialogSetup& setup) {
  return Ask(Kind::Open, setup);
}

std::optional<std::string> GuiFileDialogs::Ask(Kind kind, const FileDialogSetup& setup) {
  if (!answers_.empty()) {
    auto answer = std::move(answers_.front());
    answers_.pop_front();
    return answer;
  }
  QFileDialog dialog(Owner(), kind == Kind::Save ? QStringLiteral("Save") : QStringLiteral("Open"), folder_);
  dialog.setAcceptMode(kind == Kind::Save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
  dialog.setFileMode(kind == Kind::Save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
  QStringList filters;
  for (const FileFilter& filter : setup.filters) filters << FilterOf(filter);
  dialog.setNameFilters(filters);
  dialog.setDefaultSuffix(FromText(setup.default_extension));
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
  const QString path = dialog.selectedFiles().constFirst();
  folder_ = QFileInfo(path).absolutePath();
  return ToPath(path);
}

void GuiBeeper::Beep() {
  QApplication::beep();
}

}  // namespace tavlo
