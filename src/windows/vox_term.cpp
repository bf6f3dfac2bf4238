// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/vox_term.h"

#include <QCloseEvent>
#include <QEvent>
#include <QEventLoop>
#include <QFontDatabase>
#include <QFontInfo>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QShortcut>
#include <QTextBlock>
#include <QVBoxLayout>
#include <utility>

#include "link/drive_terminal.h"
#include "qt/gui/shown_text.h"
#include "windows/window_place.h"

namespace tavlo {
namespace {

constexpr QSize kTerminalSize(620, 480);
constexpr int kTerminalPadding = 12;
constexpr int kCommandRows = 3;
/// Milliseconds: a long line is laid out anew at each change, which bytes at full speed would not leave time
/// for.
constexpr int kPaintEvery = 30;

QPlainTextEdit* MakeBox(const char* name, const QString& spoken, QWidget* parent) {
  auto* box = new QPlainTextEdit(parent);
  box->setObjectName(QLatin1String(name));
  box->setAccessibleName(spoken);
  for (QScrollBar* bar : {box->verticalScrollBar(), box->horizontalScrollBar()}) {
    bar->setAccessibleName(QStringLiteral("Scroll: ") + spoken);
  }
  QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  fixed.setPixelSize(QFontInfo(parent->font()).pixelSize());
  box->setFont(fixed);
  box->setTabChangesFocus(true);
  return box;
}

void CaretToEnd(QPlainTextEdit& box) {
  QTextCursor caret = box.textCursor();
  caret.movePosition(QTextCursor::End);
  box.setTextCursor(caret);
}

/// The log keeps both characters of a line's end, of which a text box wants one.
QString Shown(std::string_view text) {
  return FromText(text).remove(QLatin1Char('\r'));
}

bool IsEnter(const QKeyEvent& event) {
  return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

}  // namespace

VoxTerm::VoxTerm(Desk& desk, QWidget* main_window)
    : QWidget(main_window, Qt::Dialog),
      desk_(desk),
      command_(MakeBox("CommandText", QStringLiteral("Command"), this)),
      history_(MakeBox("History", QStringLiteral("Previous commands and responses"), this)) {
  setObjectName(QStringLiteral("VOXterm"));
  setWindowTitle(QStringLiteral("VOX Router Terminal"));
  setWindowModality(Qt::WindowModal);
  history_->setReadOnly(true);
  history_->setUndoRedoEnabled(false);
  paint_.setSingleShot(true);
  paint_.setInterval(kPaintEvery);
  LayOut();
  command_->installEventFilter(this);
  connect(&paint_, &QTimer::timeout, this, &VoxTerm::ShowHistory);
  connect(command_, &QPlainTextEdit::textChanged, this, &VoxTerm::LimitCommand);
}

void VoxTerm::LayOut() {
  auto* command_frame = new QGroupBox(QStringLiteral("Command"), this);
  auto* command_column = new QVBoxLayout(command_frame);
  command_column->addWidget(command_);
  command_->setFixedHeight(command_->fontMetrics().lineSpacing() * kCommandRows + 2 * kTerminalPadding);
  auto* history_frame = new QGroupBox(QStringLiteral("Previous Commands && Responses"), this);
  auto* history_column = new QVBoxLayout(history_frame);
  history_column->addWidget(history_);
  auto* help = new QPushButton(QStringLiteral("&Help"), this);
  help->setObjectName(QStringLiteral("Help"));
  help->setToolTip(QStringLiteral("Open the reference of the drives' commands (F1)"));
  connect(help, &QPushButton::clicked, this, [this] { desk_.OpenHelp("Host Command Reference.pdf"); });
  auto* help_key = new QShortcut(Qt::Key_F1, this);
  help_key->setAutoRepeat(false);
  connect(help_key, &QShortcut::activated, help, &QPushButton::click);
  auto* quit = new QPushButton(QStringLiteral("&Close"), this);
  quit->setObjectName(QStringLiteral("Quit"));
  connect(quit, &QPushButton::clicked, this, &QWidget::close);
  connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &QWidget::close);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch(1);
  buttons->addWidget(help);
  buttons->addWidget(quit);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(kTerminalPadding, kTerminalPadding, kTerminalPadding, kTerminalPadding);
  column->addWidget(command_frame);
  column->addWidget(history_frame, 1);
  column->addLayout(buttons);
  setTabOrder(command_, history_);
  resize(OpeningSize(*this, kTerminalSize));
}

void VoxTerm::Run() {
  LoadTerminal(desk_);
  show();
  activateWindow();
  command_->setFocus();
  ActivateTerminal(desk_);
  QEventLoop loop;
  loop_ = &loop;
  loop.exec();
  loop_ = nullptr;
}

bool VoxTerm::event(QEvent* event) {
  if (loop_ != nullptr && event->type() == QEvent::WindowActivate) {
    ActivateTerminal(desk_);
    command_->setFocus();
  }
  if (loop_ != nullptr && event->type() == QEvent::WindowDeactivate) LeaveTerminal(desk_);
  return QWidget::event(event);
}

void VoxTerm::closeEvent(QCloseEvent* event) {
  LeaveTerminal(desk_);
  event->accept();
  // From here on, the focus that returns to a closing window starts nothing.
  if (QEventLoop* loop = std::exchange(loop_, nullptr)) loop->quit();
}

bool VoxTerm::eventFilter(QObject* watched, QEvent* event) {
  const bool pressed = event->type() == QEvent::KeyPress;
  if (watched == command_ && (pressed || event->type() == QEvent::KeyRelease)) {
    const auto& key = *static_cast<QKeyEvent*>(event);
    // Pressed, it ends the text, wherever the caret stands: a command is never torn in two.
    if (IsEnter(key) && pressed) CaretToEnd(*command_);
    if (IsEnter(key) && !pressed && !key.isAutoRepeat()) Enter();
    if (pressed && key.modifiers() == Qt::NoModifier && Recall(key.key())) return true;
  }
  return QWidget::eventFilter(watched, event);
}

bool VoxTerm::Recall(int key) {
  CommandRecall& commands = desk_.source.commands;
  const QTextCursor caret = command_->textCursor();
  const bool older = key == Qt::Key_Up && caret.block() == command_->document()->firstBlock();
  const bool newer = key == Qt::Key_Down && caret.block() == command_->document()->lastBlock();
  if (!older && !newer) return false;
  const auto command = older ? commands.Older(ToText(command_->toPlainText())) : commands.Newer();
  if (command) {
    command_->setPlainText(FromText(*command));
    CaretToEnd(*command_);
  }
  return true;
}

void VoxTerm::Enter() {
  QString text = command_->toPlainText();
  // The key may have been pressed in another window.
  if (!text.endsWith(QLatin1Char('\n'))) return;
  desk_.source.commands.Add(ToText(text.chopped(1)));
  text.replace(QLatin1Char('\n'), QStringLiteral("\r\n"));
  SendCommandText(desk_, ToText(text));
  command_->clear();
}

void VoxTerm::LimitCommand() {
  const std::string text = ToText(command_->toPlainText());
  const std::string kept = CheckSize(text);
  if (kept.size() == text.size()) return;
  command_->setPlainText(FromText(kept));
  CaretToEnd(*command_);
}

void VoxTerm::HistoryGrew(std::string_view added) {
  grown_ += added;
  if (!paint_.isActive()) paint_.start();
}

void VoxTerm::HistoryCut() {
  cut_ = true;
}

void VoxTerm::ShowHistory() {
  if (std::exchange(cut_, false)) {
    history_->setPlainText(Shown(desk_.source.VOXterm.History));
  } else {
    CaretToEnd(*history_);
    history_->insertPlainText(Shown(grown_));
  }
  grown_.clear();
  CaretToEnd(*history_);
}

void TerminalWindows::ShowModal() {
  if (open_ != nullptr) return;
  VoxTerm terminal(*desk_, main_window_);
  open_ = &terminal;
  terminal.Run();
  open_ = nullptr;
}

void TerminalWindows::HistoryGrew(std::string_view added) {
  if (open_ != nullptr) open_->HistoryGrew(added);
}

void TerminalWindows::HistoryCut() {
  if (open_ != nullptr) open_->HistoryCut();
}

}  // namespace tavlo
