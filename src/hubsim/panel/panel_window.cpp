// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/panel/panel_window.h"

#include <QCloseEvent>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QScreen>
#include <QVBoxLayout>

#include "hubsim/panel/axis_table.h"
#include "hubsim/panel/fault_dialog.h"
#include "hubsim/panel/hub_controls.h"
#include "hubsim/panel/memory_tabs.h"

namespace tavlo::hubsim {
namespace {

constexpr int kRefreshMs = 33;
constexpr int kMargin = 10;
/// In it the bytes of every move can be seen.
constexpr QSize kSize(1040, 640);
constexpr QSize kFrame(16, 48);

QString LimitNote() {
  return QStringLiteral(
      "The limit had no effect: no program runs, nothing moves, or the axis has no drive that uses its limit "
      "switches.");
}

}  // namespace

PanelWindow::PanelWindow(Hub& hub, const QString& title, std::function<double()> now,
                         std::function<void()> serve)
    : hub_(hub),
      now_(std::move(now)),
      serve_(std::move(serve)),
      axes_(new AxisTable(hub.Options().model, this)),
      controls_(new HubControls(this)),
      memory_(new MemoryTabs(this)),
      note_(new QLabel(this)) {
  setObjectName(QStringLiteral("HubPanel"));
  setWindowTitle(title);
  note_->setObjectName(QStringLiteral("note"));
  note_->setTextFormat(Qt::PlainText);
  auto* rule = new QFrame(this);
  rule->setFrameStyle(static_cast<int>(QFrame::HLine) | QFrame::Sunken);
  auto* below = new QHBoxLayout;
  below->setSpacing(kMargin);
  below->addWidget(controls_);
  below->addWidget(memory_, 1);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(kMargin, kMargin, kMargin, kMargin / 2);
  column->addWidget(axes_);
  column->addWidget(rule);
  column->addLayout(below, 1);
  column->addWidget(note_);
  ConnectControls();
  refresh_.setInterval(kRefreshMs);
  connect(&refresh_, &QTimer::timeout, this, &PanelWindow::Refresh);
  Refresh();
  resize(kSize.boundedTo(screen()->availableSize() - kFrame));
}

void PanelWindow::ConnectControls() {
  connect(axes_, &AxisTable::InputClicked, this, [this](int axis, int input, bool high) {
    hub_.SetInput(axis, input, high, now_());
    Acted();
  });
  connect(axes_, &AxisTable::LimitClicked, this,
          [this](int axis) { Acted(hub_.HitLimit(axis, now_()) ? QString() : LimitNote()); });
  connect(axes_, &AxisTable::FaultClicked, this, &PanelWindow::AskFault);
  connect(controls_, &HubControls::StopClicked, this, [this] {
    Acted(hub_.PressStop(now_()) ? QString()
                                 : QStringLiteral("Stop had no effect: no program runs, and nothing moves."));
  });
  connect(controls_, &HubControls::PowerClicked, this, [this] {
    hub_.PowerUp(now_());
    Acted();
  });
  connect(controls_, &HubControls::CableClicked, this, [this] {
    if (hub_.Unplugged()) {
      hub_.Replug();
    } else {
      hub_.Unplug();
    }
    Acted();
  });
  connect(controls_, &HubControls::FailureChosen, this, [this](const FailurePlan& plan) {
    hub_.SetFailure(plan);
    Acted();
  });
}

/// The hub runs on behind the dialog.
void PanelWindow::AskFault(int axis) {
  auto* dialog = new FaultDialog(axis, this);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  connect(dialog, &QDialog::accepted, this, [this, axis, dialog] {
    const bool failed = hub_.Fail(axis, dialog->Code(), now_());
    Acted(failed ? QString() : QStringLiteral("The fault had no effect: there is no drive on the axis."));
  });
  dialog->open();
}

void PanelWindow::Acted(const QString& note) {
  note_->setText(note);
  Refresh();
}

void PanelWindow::Refresh() {
  serve_();
  axes_->Show(hub_);
  controls_->Show(hub_);
  memory_->Show(hub_);
}

void PanelWindow::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  refresh_.start();
}

void PanelWindow::hideEvent(QHideEvent* event) {
  QWidget::hideEvent(event);
  refresh_.stop();
}

void PanelWindow::closeEvent(QCloseEvent* event) {
  event->accept();
  emit Closed();
}

}  // namespace tavlo::hubsim
