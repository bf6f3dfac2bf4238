// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/run_form.h"

#include <QApplication>
#include <QCloseEvent>
#include <QEvent>
#include <QEventLoop>
#include <QHBoxLayout>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "link/execution.h"
#include "windows/led_panel.h"
#include "windows/run_controls.h"
#include "windows/window_place.h"

namespace tavlo {
namespace {

constexpr int kRunPadding = 12;
/// A window manager may shift a window by so much on its own; a move of the operator is larger.
constexpr int kOwnShift = 40;

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

int Within(int wanted, int first, int last) {
  return std::clamp(wanted, first, std::max(first, last));
}

}  // namespace

QPoint PlaceBeside(const QRect& main, const QRect& room, const QSize& size, const QPoint& told) {
  QPoint place = told;
  if (room.right() - main.right() >= size.width()) {
    place = {main.right() + 1, main.top()};
  } else if (main.left() - room.left() >= size.width()) {
    place = {main.left() - size.width(), main.top()};
  }
  return {Within(place.x(), room.left(), room.right() + 1 - size.width()),
          Within(place.y(), room.top(), room.bottom() + 1 - size.height())};
}

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
  body_->setSpacing(kRunPadding);
  lights_->setWidget(leds_);
  lights_->setWidgetResizable(true);
  lights_->setFrameShape(QFrame::NoFrame);
  lights_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  lights_->setFocusPolicy(Qt::NoFocus);
  lights_->setAccessibleName(QStringLiteral("Lights"));
  lights_->verticalScrollBar()->setAccessibleName(QStringLiteral("Scroll lights"));
  body_->addWidget(lights_);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(kRunPadding, kRunPadding, kRunPadding, kRunPadding);
  column->setSpacing(kRunPadding);
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
}

void RunForm::ShowModal() {
  leds_->Arrange(desk_.program());
  stopping_ = false;
  hold_(true);
  Place();
  shown_.start();
  show();
  activateWindow();
  FirstFocus()->setFocus();
  QEventLoop loop;
  loop_ = &loop;
  StartRun(desk_, window_);
  loop.exec();
  loop_ = nullptr;
  hold_(false);
}

QWidget* RunForm::FirstFocus() {
  return controls_->findChild<QWidget*>(QStringLiteral("btnStop"));
}

void RunForm::Place() {
  FitLights();
  adjustSize();
  const QRect main = parentWidget()->frameGeometry();
  placed_ =
      chosen_.value_or(PlaceBeside(main, Room(), size() + Frame(), main.topLeft() + NameOf(window_).offset));
  move(placed_);
}

/// The frame comes with the first showing and will be like the main window's.
QSize RunForm::Frame() const {
  return FrameOf(*parentWidget());
}

QRect RunForm::Room() const {
  return parentWidget()->screen()->availableGeometry();
}

/// Runs from the event loop, after whatever is taking the focus away now has finished.
void RunForm::ActivateAgain() {
  QTimer::singleShot(0, this, [this] {
    if (isVisible() && QApplication::activeModalWidget() == nullptr) activateWindow();
  });
}

/// On a low screen the lights are scrolled, so that the controls stay in sight.
void RunForm::FitLights() {
  const QSize wanted = leds_->sizeHint();
  const int others = controls_->sizeHint().height() + 3 * kRunPadding;
  const int high = Room().height() - Frame().height() - others;
  const bool scrolled = wanted.height() > high;
  const int bar = scrolled ? lights_->verticalScrollBar()->sizeHint().width() : 0;
  lights_->setVerticalScrollBarPolicy(scrolled ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff);
  const int room = std::max(1, high);
  lights_->setMinimumSize(wanted.width() + bar, std::min(room, wanted.height()));
  // With a large font a scroll area asks for more than that.
  lights_->setMaximumHeight(room);
}

void RunForm::ShowAxis(int axis) {
  leds_->ShowAxis(desk_.source, axis);
}

void RunForm::ShowControls() {
  controls_->Show(desk_.source.run.panel);
}

void RunForm::Stop() {
  // The pause after the command runs the event loop, where a second click would send it again. The window is
  // not disabled meanwhile: with it would be the boxes that stand over it.
  if (loop_ == nullptr || std::exchange(stopping_, true)) return;
  StopRun(desk_, window_);
}

bool RunForm::event(QEvent* event) {
  if (event->type() == QEvent::WindowDeactivate && loop_ != nullptr) {
    LeaveRun(desk_);
    // The second click of a double click on Execute reaches the main window when this one is up already.
    if (shown_.elapsed() < QApplication::doubleClickInterval()) ActivateAgain();
  }
  return QWidget::event(event);
}

void RunForm::closeEvent(QCloseEvent* event) {
  if (loop_ != nullptr && !stopping_) CloseRun(desk_, window_);
  event->accept();
}

void RunForm::hideEvent(QHideEvent* event) {
  QWidget::hideEvent(event);
  if (event->spontaneous() || loop_ == nullptr) return;
  if ((pos() - placed_).manhattanLength() > kOwnShift) chosen_ = pos();
  LeaveRun(desk_);
  loop_->quit();
}

}  // namespace tavlo
