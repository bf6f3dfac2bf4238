// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "qt/gui/gui_services.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QMessageBox>
#include <QPushButton>
#include <QSpacerItem>
#include <QStringList>
#include <array>
#include <map>
#include <optional>
#include <span>
#include <utility>

#include "qt/gui/key_guard.h"
#include "qt/gui/owner_window.h"
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

/// The answers that a box offers, in the order of their buttons.
std::span<const Answer> AnswersOf(Buttons buttons) {
  static constexpr std::array kOK = {Answer::OK};
  static constexpr std::array kOKCancel = {Answer::OK, Answer::Cancel};
  static constexpr std::array kYesNo = {Answer::Yes, Answer::No};
  static constexpr std::array kOKWithoutPort = {Answer::OK, Answer::WithoutPort};
  static constexpr std::array kRestoreDiscard = {Answer::Restore, Answer::Discard};
  switch (buttons) {
    case Buttons::OK: return kOK;
    case Buttons::OKCancel: return kOKCancel;
    case Buttons::YesNo: return kYesNo;
    case Buttons::OKWithoutPort: return kOKWithoutPort;
    case Buttons::RestoreDiscard: return kRestoreDiscard;
  }
  return kOK;
}

QPushButton* AddButton(QMessageBox& box, Answer answer) {
  switch (answer) {
    case Answer::OK: return box.addButton(QMessageBox::Ok);
    case Answer::Cancel: return box.addButton(QMessageBox::Cancel);
    case Answer::Yes: return box.addButton(QMessageBox::Yes);
    case Answer::No: return box.addButton(QMessageBox::No);
    case Answer::WithoutPort:
      return box.addButton(QStringLiteral("&Without a port"), QMessageBox::RejectRole);
    case Answer::Restore: return box.addButton(QStringLiteral("&Restore"), QMessageBox::AcceptRole);
    case Answer::Discard: return box.addButton(QStringLiteral("&Discard"), QMessageBox::DestructiveRole);
  }
  return nullptr;
}

/// Shows the window until it is answered. Enter, Escape and the frame answer without harm.
Answer Run(QMessageBox& window, const Box& box) {
  const Answer harmless = HarmlessAnswer(box.buttons);
  std::map<QAbstractButton*, Answer> answers;
  for (const Answer answer : AnswersOf(box.buttons)) {
    QPushButton* button = AddButton(window, answer);
    answers[button] = answer;
    if (answer != harmless) continue;
    window.setDefaultButton(button);
    window.setEscapeButton(button);
  }
  std::optional<KeyGuard> guard;
  if (box.by_itself) guard.emplace(&window);
  window.exec();
  const auto clicked = answers.find(window.clickedButton());
  return clicked == answers.end() ? harmless : clicked->second;
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

Answer GuiMessageBoxes::Show(const Box& box) {
  shown_.push_back(box);
  if (shown_.size() > kBoxesKept) shown_.pop_front();
  if (!answers_.empty()) {
    const Answer answer = answers_.front();
    answers_.pop_front();
    return answer;
  }
  QMessageBox window(OwnerWindow());
  // A window manager is told the program's file name where a title is empty: a blank keeps it empty.
  window.setWindowTitle(box.title.empty() ? QStringLiteral(" ") : FromMessage(box.title));
  window.setTextFormat(Qt::PlainText);
  window.setText(FromMessage(box.text));
  window.setIcon(IconOf(box.icon));
  MakeRoomForTitle(window);
  return Run(window, box);
}

namespace {

/// Its folder too, as long as it exists.
void Propose(QFileDialog& dialog, const QString& path) {
  if (path.isEmpty()) return;
  const QFileInfo file(path);
  if (file.absoluteDir().exists()) dialog.setDirectory(file.absolutePath());
  dialog.selectFile(file.fileName());
}

}  // namespace

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
  QFileDialog dialog(OwnerWindow(), kind == Kind::Save ? QStringLiteral("Save") : QStringLiteral("Open"),
                     folder_);
  dialog.setAcceptMode(kind == Kind::Save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
  dialog.setFileMode(kind == Kind::Save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
  QStringList filters;
  for (const FileFilter& filter : setup.filters) filters << FilterOf(filter);
  dialog.setNameFilters(filters);
  dialog.setDefaultSuffix(FromText(setup.default_extension));
  Propose(dialog, FromPath(setup.present));
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
  const QString path = dialog.selectedFiles().constFirst();
  folder_ = QFileInfo(path).absolutePath();
  return ToPath(path);
}

void GuiBeeper::Beep() {
  QApplication::beep();
}

}  // namespace tavlo
