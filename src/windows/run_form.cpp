// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/run_form.h"

#include <QCloseEvent>
#include <QEvent>
#include <QEventLoop>
#include <QHBoxLayout>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QShortcut>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "link/execution.h"
#include "windows/led_panel.h"
#include "windows/run_controls.h"

namespace tavlo {
namespace {

constexpr int kPadding = 12;

struct FormName {
  const char* name;
  const char* caption;
  /// From the left and the top of the main window.
  QPoint offset;
};

FormName NameOf(RunWindow window) {
  if (window == RunWindow::fakeMMI) return {"fakeMMI", "MMI emulator", {4, 70}};
  return {"ExecStatus", "Execute", {0, 0}};
}

}  // namespace

RunForm::RunForm(Desk& desk, RunWindow window, QWidget* main_window, std::function<void(bool)> hold)
    : QWidget(main_window, Qt::Dialog),
      desk_(desk),
      window_(window),
      hold_(std::move(hold)),
      body_(new QHBoxLayout),
      lights_(new QScrollArea(this)),
      leds_(new LedPanel(lights_)),
      controls_(new RunControls(this)) {
  setObjectName(QLatin1String(NameOf(window).name));
  setWindowTitle(QLatin1String(NameOf(window).caption));
  body_->setSpacing(kPadding);
  lights_->setWidget(leds_);
  lights_->setWidgetResizable(true);
  lights_->setFrameShape(QFrame::NoFrame);
  lights_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  lights_->setFocusPolicy(Qt::NoFocus);
  lights_->setAccessibleName(QStringLiteral("Lights"));
  lights_->verticalScrollBar()->setAccessibleName(QStringLiteral("Scroll lights"));
  body_->addWidget(lights_);
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

/// Where the main window begins, the first time; from then on it comes up where the operator left it.
void RunForm::PlaceOverMain() {
  FitLights();
  adjustSize();
  if (std::exchange(placed_, true)) return;
  const QRect main = parentWidget()->frameGeometry();
  const QRect room = Room();
  const QPoint wanted = main.topLeft() + NameOf(window_).offset;
  move(std::clamp(wanted.x(), room.left(), std::max(room.left(), room.right() - width())),
       std::clamp(wanted.y(), room.top(), std::max(room.top(), room.bottom() - height())));
}

/// What the screen has for the window without its frame, which comes with the first showing and will be like
/// the main window's.
QRect RunForm::Room() const {
  QRect room = parentWidget()->screen()->availableGeometry();
  const QSize frame = parentWidget()->frameGeometry().size() - parentWidget()->size();
  return room.adjusted(0, 0, -frame.width(), -frame.height());
}

/// On a low screen the lights are scrolled, so that the controls stay in sight.
void RunForm::FitLights() {
  const QSize wanted = leds_->sizeHint();
  const int others = controls_->sizeHint().height() + 3 * kPadding;
  const bool scrolled = wanted.height() > Room().height() - others;
  const int bar = scrolled ? lights_->verticalScrollBar()->sizeHint().width() : 0;
  lights_->setVerticalScrollBarPolicy(scrolled ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff);
  const int room = std::max(1, Room().height() - others);
  lights_->setMinimumSize(wanted.width() + bar, std::min(room, wanted.height()));
  // With a large font a scroll area asks for more than that.
  lights_->setMaximumHeight(room);
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
