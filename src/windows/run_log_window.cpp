// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/run_log_window.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QShortcut>
#include <QSignalBlocker>
#include <QTableView>
#include <QVBoxLayout>
#include <array>
#include <utility>

#include "qt/gui/shown_text.h"
#include "session/run_log.h"
#include "session/source.h"
#include "windows/run_form.h"
#include "windows/run_log_model.h"
#include "windows/window_place.h"

namespace tavlo {
namespace {

constexpr QSize kLogSize(900, 520);
constexpr int kLogPadding = 12;
/// Milliseconds between two looks at the log of the run that is up: the eye follows no faster.
constexpr int kBatch = 100;
constexpr int kRunLetters = 40;
/// The widest text that a column shows at the opening.
constexpr std::array kWidest = {"00000.000", "program counter", "Line 00", "Axis 00",
                                "Feeder:CW 120.0 mm, 160.0 mps, Out"};

}  // namespace

RunLogWindow::RunLogWindow(Desk& desk, RunLog& log, RunKeep* keep, QWidget* main_window)
    : QWidget(main_window, Qt::Dialog),
      desk_(desk),
      log_(log),
      keep_(keep),
      model_(new RunLogModel(this)),
      runs_label_(new QLabel(QStringLiteral("&Run:"), this)),
      runs_(new QComboBox(this)),
      table_(new QTableView(this)),
      notice_(new QLabel(this)),
      save_(new QPushButton(QStringLiteral("&Save as CSV..."), this)) {
  setObjectName(QStringLiteral("RunLog"));
  setWindowTitle(QStringLiteral("Run log"));
  LayOut();
  batch_.setInterval(kBatch);
  connect(&batch_, &QTimer::timeout, this, &RunLogWindow::TakeEvents);
  connect(runs_, &QComboBox::currentIndexChanged, this, &RunLogWindow::ShowChosen);
  connect(save_, &QPushButton::clicked, this, &RunLogWindow::Save);
  connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &QWidget::close);
}

void RunLogWindow::SetUpTable() {
  table_->setObjectName(QStringLiteral("Events"));
  table_->setAccessibleName(QStringLiteral("Events of the run"));
  table_->verticalScrollBar()->setAccessibleName(QStringLiteral("Scroll events"));
  table_->horizontalScrollBar()->setAccessibleName(QStringLiteral("Scroll events sideways"));
  table_->setModel(model_);
  table_->setSelectionBehavior(QAbstractItemView::SelectRows);
  table_->setTabKeyNavigation(false);
  table_->setWordWrap(false);
  table_->setShowGrid(false);
  table_->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
  table_->verticalHeader()->hide();
  table_->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 4);
  QHeaderView& header = *table_->horizontalHeader();
  header.setHighlightSections(false);
  header.setStretchLastSection(true);
  for (std::size_t i = 0; i < kWidest.size(); ++i) {
    table_->setColumnWidth(static_cast<int>(i),
                           fontMetrics().horizontalAdvance(QLatin1String(kWidest[i])) + kLogPadding);
  }
}

void RunLogWindow::LayOut() {
  SetUpTable();
  runs_->setObjectName(QStringLiteral("Runs"));
  runs_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  runs_->setMinimumContentsLength(kRunLetters);
  notice_->setObjectName(QStringLiteral("Notice"));
  notice_->setTextFormat(Qt::PlainText);
  notice_->setWordWrap(true);
  save_->setObjectName(QStringLiteral("Save"));
  save_->setToolTip(QStringLiteral("Save the chosen run for a spreadsheet, once no program runs"));
  auto* quit = new QPushButton(QStringLiteral("&Close"), this);
  quit->setObjectName(QStringLiteral("Quit"));
  connect(quit, &QPushButton::clicked, this, &QWidget::close);

  runs_label_->setBuddy(runs_);
  auto* choice = new QHBoxLayout;
  choice->addWidget(runs_label_);
  choice->addWidget(runs_);
  choice->addStretch(1);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch(1);
  buttons->addWidget(save_);
  buttons->addWidget(quit);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(kLogPadding, kLogPadding, kLogPadding, kLogPadding);
  column->addLayout(choice);
  column->addWidget(table_, 1);
  column->addWidget(notice_);
  column->addLayout(buttons);
  resize(OpeningSize(*this, kLogSize));
}

void RunLogWindow::Open() {
  if (!isVisible()) {
    ListRuns();
    ShowChosen();
    table_->scrollToBottom();
    SpareRunWindow();
    show();
    table_->setFocus();
    // Also where no run grows: whether one may be saved hangs on what else the hub is asked for.
    batch_.start();
  }
  raise();
  activateWindow();
}

/// Whoever looks up what has happened goes on seeing what happens, and the Stop of the run.
void RunLogWindow::SpareRunWindow() {
  const QSize frame = FrameOf(*parentWidget());
  for (const RunForm* form : parentWidget()->findChildren<RunForm*>()) {
    if (!form->isVisible()) continue;
    const QRect place = RoomBeside(form->frameGeometry(), screen()->availableGeometry(), size() + frame,
                                   minimumSizeHint() + frame);
    resize(place.size() - frame);
    move(place.topLeft());
  }
}

void RunLogWindow::RunsChanged() {
  if (!isVisible()) return;
  const bool live = ChosenIsLive();
  const std::string name = ChosenName();
  ListRuns();
  // Whoever looks at an earlier run goes on doing so.
  int row = 0;
  for (int i = 0; !live && i < runs_->count(); ++i) {
    if (runs_->itemData(i).toString().toStdString() == name) row = i;
  }
  const QSignalBlocker blocker(runs_);
  runs_->setCurrentIndex(row);
  ShowChosen();
}

/// The first row is that of the log, if there has been a run; the others are those of the kept files.
void RunLogWindow::ListRuns() {
  const QSignalBlocker blocker(runs_);
  runs_->clear();
  if (log_.Run() > 0) AddRun(HeadOf(log_).front(), {});
  const auto kept = keep_ == nullptr ? std::vector<std::string>() : keep_->Names();
  for (const std::string& name : kept) {
    if (log_.Run() > 0 && name == keep_->Name()) continue;
    const auto begin = keep_->BeginOf(name);
    AddRun(begin.value_or(RunRow{{"", "", "", "", name, "Cannot be read"}}), name);
  }
  // A list without an entry says nothing.
  for (QWidget* widget : {static_cast<QWidget*>(runs_label_), static_cast<QWidget*>(runs_)}) {
    widget->setVisible(runs_->count() > 0);
  }
}

void RunLogWindow::AddRun(const RunRow& begin, const std::string& name) {
  QString text =
      QString::fromStdString(begin[RunColumn::Value] + "  " + std::string(BaseName(begin[RunColumn::What])));
  if (name.empty() && log_.Open()) text += QStringLiteral(" (running)");
  runs_->addItem(text, QString::fromStdString(name));
}

bool RunLogWindow::ChosenIsLive() const {
  return ChosenName().empty();
}

std::string RunLogWindow::ChosenName() const {
  return runs_->currentData().toString().toStdString();
}

void RunLogWindow::ShowChosen() {
  Tell(FromMessage(failure_));
  if (ChosenIsLive()) {
    model_->Follow(log_);
    if (log_.Run() == 0) Tell(QStringLiteral("No run has been logged yet."));
  } else {
    ShowKept(ChosenName());
  }
  TakeEvents();
  table_->scrollToBottom();
}

void RunLogWindow::ShowKept(const std::string& name) {
  auto rows = keep_->Read(name);
  if (!rows) Tell(QStringLiteral("This file cannot be read as the log of a run."));
  model_->Show(std::move(rows).value_or(std::vector<RunRow>()));
}

void RunLogWindow::TakeEvents() {
  log_.Settle();
  const QScrollBar& bar = *table_->verticalScrollBar();
  const bool follows = bar.value() == bar.maximum();
  model_->Take();
  if (follows && ChosenIsLive()) table_->scrollToBottom();
  save_->setEnabled(MaySave());
}

bool RunLogWindow::MaySave() const {
  return !log_.Open() && !desk_.source.link.Busy && model_->rowCount() > 0;
}

/// What is empty is not there for a screen reader either.
void RunLogWindow::Tell(const QString& text) {
  notice_->setText(text);
  notice_->setVisible(!text.isEmpty());
}

void RunLogWindow::TellFailure(const std::string& why) {
  const std::string failure = why.empty() ? std::string() : "This run cannot be kept: " + why + ".";
  // What else stands there is told on.
  if (failure == std::exchange(failure_, failure) || !isVisible()) return;
  Tell(FromMessage(failure_));
}

std::string RunLogWindow::CsvOfChosen() const {
  if (ChosenIsLive()) return CsvOf(log_);
  std::string csv = CsvHeader();
  const auto rows = keep_->Read(ChosenName());
  for (const RunRow& row : rows.value_or(std::vector<RunRow>())) csv += CsvOf(row);
  return csv;
}

void RunLogWindow::Save() {
  // A transfer may have begun since the button was painted.
  if (!MaySave()) return;
  const std::string csv = CsvOfChosen();
  const auto path =
      desk_.dialogs.SaveFileName({.filters = {{"CSV Files", "*.csv"}}, .default_extension = "csv"});
  if (!path) return;
  const Outcome saved = desk_.files.Replace(*path, csv);
  if (saved) return;
  desk_.boxes.MsgBox({.text = "The log could not be saved: " + saved.Why() + ".", .icon = Icon::Exclamation});
}

void RunLogWindow::closeEvent(QCloseEvent* event) {
  batch_.stop();
  event->accept();
  emit Closed();
}

}  // namespace tavlo
