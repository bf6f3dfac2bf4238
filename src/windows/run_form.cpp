// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/run_form.h"

#include <QCloseEvent>
#include <QEvent>
#include <QEventLoop>
#include <QHBoxLayout>
#include <QScreen>
#include <QShortcut>
#include <QVBoxLayout>
#include <algorithm>

#include "link/execution.h"
#include "windows/led_panel.h"
#include "windows/run_controls.h"

namespace tavlo {
namespace {

constexpr int kPadding = 12;

struct FormName {
  const char* name;
  const char* caption;
};

FormName NameOf(RunWindow window) {
  if (window == RunWindow::fakeMMI) return {"fakeMMI", "MMI emulator"};
  return {"ExecStatus", "Execute"};
}

}  // namespace

RunForm::RunForm(Desk& desk, RunWindow window, QWidget* main_window, std::function<void(bool)> hold)
    : QWidget(main_window, Qt::Dialog),
      desk_(desk),
      window_(window),
      hold_(std::move(hold)),
      body_(new QHBoxLayout),
      leds_(new LedPanel(this)),
      controls_(new RunControls(this)) {
  setObjectName(QLatin1String(NameOf(window).name));
  setWindowTitle(QLatin1String(NameOf(window).caption));
  body_->setSpacing(kPadding);
  body_->addWidget(leds_);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(kPadding, kPadding, kPadding, kPadding);
  column->setSpacing(kPadding);
  column->addLayout(body_);
  column->addWidget(controls_);
  column->setSizeConstraint(QLayout::SetFixedSize);
  ConnectControls();
}

void RunForm::ConnectControls() {
  connect(controls_, &RunControls::PlayClicked, this, [this] { ClickPlay(desk_); });
  connect(controls_, &RunControls::PauseClicked, this, [this] { ClickPause(desk_); });
  connect(controls_, &RunControls::SingleStepClicked, this, [this] { ClickSingleStep(desk_); });
  connect(controls_, &RunControls::ResetClicked, this, [this] { ClickReset(desk_); });
  connect(controls_, &RunControls::StopClicked, this, &RunForm::Stop);
  connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &RunForm::Stop);
}

void RunForm::ShowModal() {
  leds_->Arrange(desk_.program());
  setEnabled(true);
  hold_(true);
  PlaceOverMain();
  show();
  activateWindow();
  controls_->findChild<QWidget*>(QStringLiteral("btnStop"))->setFocus();
  QEventLoop loop;
  loop_ = &loop;
  StartRun(desk_, window_);
  loop.exec();
  loop_ = nullptr;
  hold_(false);
}

/// At the right edge of the main window, where it leaves the numbers and icons of the grid in sight.
void RunForm::PlaceOverMain() {
  adjustSize();
  const QRect main = parentWidget()->frameGeometry();
  QRect room = parentWidget()->screen()->availableGeometry();
  // The frame comes with the first showing; it will be like the main window's.
  room.adjust(0, 0, parentWidget()->width() - main.width(), parentWidget()->height() - main.height());
  const QPoint wanted(main.right() - width() - kPadding, main.top() + 5 * kPadding);
  move(std::clamp(wanted.x(), room.left(), std::max(room.left(), room.right() - width())),
       std::clamp(wanted.y(), room.top(), std::max(room.top(), room.bottom() - height())));
}

void RunForm::ShowAxis(int axis) {
  leds_->ShowAxis(desk_.source, axis);
}

void RunForm::ShowControls() {
  controls_->Show(desk_.source.panel);
}

void RunForm::Stop() {
  if (loop_ == nullptr || !isEnabled()) return;
  // The pause after the command runs the event loop, where a second click would send it again.
  setEnabled(false);
  StopRun(desk_, window_);
}

bool RunForm::event(QEvent* event) {
  if (event->type() == QEvent::WindowDeactivate && loop_ != nullptr) LeaveRun(desk_);
  return QWidget::event(event);
}

void RunForm::closeEvent(QCloseEvent* event) {
  if (loop_ != nullptr && isEnabled()) CloseRun(desk_, window_);
  event->accept();
}

void RunForm::hideEvent(QHideEvent* event) {
  QWidget::hideEvent(event);
  if (event->spontaneous() || loop_ == nullptr) return;
  LeaveRun(desk_);
  loop_->quit();
}

}  // namespace tavlo
