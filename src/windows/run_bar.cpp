// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/run_bar.h"

#include <QCloseEvent>
#include <QEvent>
#include <QEventLoop>
#include <QFontDatabase>
#include <QFrame>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "link/execution.h"
#include "qt/gui/shown_text.h"

namespace tavlo {
namespace {

constexpr int kPadding = 12;
constexpr int kDisplayColumns = 20;

QString CaptionOf(RunWindow window) {
  return window == RunWindow::fakeMMI ? QStringLiteral("MMI emulator") : QStringLiteral("Execute");
}

/// What the panel of a fault says, in one text.
std::string FaultText(const ServoFaultPanel& panel) {
  std::string text = panel.FaultMessage + "\n";
  for (std::size_t bit = 0; bit < panel.Label1.size(); ++bit) {
    if ((panel.code >> bit & 1) != 0) text += "\n" + panel.Label1[bit];
  }
  return text + "\n\nYou must cycle power to reset this error.";
}

}  // namespace

RunBar::RunBar(QWidget* main_window, std::function<void(bool)> hold)
    : QWidget(main_window, Qt::Dialog),
      hold_(std::move(hold)),
      state_(new QLabel(QStringLiteral("The program is running on the hub."), this)),
      display_(new QFrame(this)),
      stop_(new QPushButton(QStringLiteral("&Stop"), this)) {
  setObjectName(QStringLiteral("RunBar"));
  stop_->setObjectName(QStringLiteral("btnStop"));
  stop_->setDefault(true);
  auto* lines = new QVBoxLayout(display_);
  lines->setSpacing(0);
  const QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  for (int row = 0; row < static_cast<int>(textline_.size()); ++row) {
    auto* line = new QLabel(display_);
    line->setObjectName(QStringLiteral("textline%1").arg(row));
    line->setTextFormat(Qt::PlainText);
    line->setFont(fixed);
    line->setMinimumWidth(QFontMetrics(fixed).horizontalAdvance(QString(kDisplayColumns, QLatin1Char('M'))));
    textline_[row] = line;
    lines->addWidget(line);
  }
  static_cast<QFrame*>(display_)->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(kPadding, kPadding, kPadding, kPadding);
  column->setSpacing(kPadding);
  column->addWidget(state_);
  column->addWidget(display_);
  column->addWidget(stop_, 0, Qt::AlignRight);
  connect(stop_, &QPushButton::clicked, this, &RunBar::Stop);
}

void RunBar::ShowModal(RunWindow window) {
  window_ = window;
  setWindowTitle(CaptionOf(window));
  display_->setVisible(window == RunWindow::fakeMMI);
  stop_->setEnabled(true);
  stop_->setFocus();
  adjustSize();
  PlaceBesideGrid();
  hold_(true);
  show();
  activateWindow();
  StartRun(*desk_, window);
  QEventLoop loop;
  loop_ = &loop;
  loop.exec();
  loop_ = nullptr;
  hold_(false);
}

void RunBar::PlaceBesideGrid() {
  const QRect around = parentWidget()->frameGeometry();
  move(around.right() - width() - kPadding, around.bottom() - height() - 4 * kPadding);
}

void RunBar::Hide() {
  hide();
}

void RunBar::Stop() {
  if (window_ == RunWindow::None) return;
  // The pause after the command runs the event loop, where a second click would send it again.
  stop_->setEnabled(false);
  StopRun(*desk_, window_);
}

bool RunBar::event(QEvent* event) {
  if (event->type() == QEvent::WindowDeactivate && window_ != RunWindow::None) LeaveRun(*desk_);
  return QWidget::event(event);
}

void RunBar::closeEvent(QCloseEvent* event) {
  if (window_ != RunWindow::None) CloseRun(*desk_, window_);
  event->accept();
}

void RunBar::hideEvent(QHideEvent* event) {
  QWidget::hideEvent(event);
  if (event->spontaneous() || window_ == RunWindow::None) return;
  window_ = RunWindow::None;
  LeaveRun(*desk_);
  if (loop_ != nullptr) loop_->quit();
}

void RunBar::TextLinesChanged() {
  for (std::size_t row = 0; row < textline_.size(); ++row) {
    textline_[row]->setText(FromText(desk_->source.textline[row]));
  }
}

void RunBar::ShowServoFault(const ServoFaultPanel& panel) {
  fault_text_ = FaultText(panel);
  fault_again_ = true;
  // A fault that comes while one is shown is shown in its place, as soon as that is closed.
  if (fault_shown_) return;
  fault_shown_ = true;
  while (fault_again_) {
    fault_again_ = false;
    MsgBox(*desk_, fault_text_, Icon::Stop, panel.caption);
  }
  fault_shown_ = false;
}

}  // namespace tavlo
