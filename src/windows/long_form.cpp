// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/long_form.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QFile>
#include <QHBoxLayout>
#include <QMenu>
#include <QMimeData>
#include <QShortcut>
#include <QSplitter>
#include <QTimer>
#include <QToolButton>
#include <QUrl>
#include <QVBoxLayout>

#include "commands/hardware.h"
#include "commands/hub_choices.h"
#include "commands/lines.h"
#include "commands/print_listing.h"
#include "commands/program_files.h"
#include "commands/recent_files.h"
#include "link/com_port.h"
#include "link/download.h"
#include "link/drive_scan.h"
#include "link/execution.h"
#include "link/upload.h"
#include "qt/gui/shown_text.h"
#include "session/edit_step.h"
#include "session/grid.h"
#include "session/source.h"
#include "widgets/font_size.h"
#include "widgets/icon_images.h"
#include "widgets/ringed_button.h"
#include "widgets/rule.h"
#include "widgets/takes_input.h"
#include "widgets/tall_pane.h"
#include "windows/about.h"
#include "windows/command_bar.h"
#include "windows/main_keys.h"
#include "windows/program_grid.h"
#include "windows/side_panels.h"
#include "windows/status_line.h"
#include "windows/stop_button.h"
#include "windows/window_place.h"

namespace tavlo {
namespace {

constexpr QSize kMainSize(1000, 720);
constexpr int kLeastWidth = 640;
constexpr int kMargin = 8;
constexpr int kLogoButton = 20;

/// What opens the window that tells about the program.
QToolButton* MakeLogo(QWidget* parent) {
  auto* logo = new RingedButton(kLogoButton, parent);
  logo->setObjectName(QStringLiteral("corplogo"));
  logo->setText(QStringLiteral("A&bout"));
  logo->setToolTip(QStringLiteral("Tell about this program and its licences"));
  logo->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  logo->setIcon(ApplicationIcon());
  logo->setAutoRaise(true);
  return logo;
}

void SetUpHardware(Desk& desk) {
  ChangeRes(desk, [&desk] { return ScanDrives(desk); });
}

QString WhyHeld(Hold hold) {
  switch (hold) {
    case Hold::None: break;
    case Hold::Run: return QStringLiteral("Lines held: a run");
    case Hold::Transfer: return QStringLiteral("Lines held: a transfer");
  }
  return {};
}

}  // namespace

LongForm::LongForm(Source& source, CommDevices& comms)
    : source_(source),
      commands_(new CommandBar(this)),
      columns_(new QSplitter(this)),
      stop_(new StopButton(this)),
      grid_(new ProgramGrid(source, this)),
      side_(new QWidget(this)),
      hub_(new HubPanel(comms, side_)),
      drives_(new DrivesPanel(side_)),
      limits_(new LimitsPanel(side_)),
      recent_(new QMenu(this)),
      status_(new StatusLine(comms, this)),
      keys_(new MainKeys(
          *this, *grid_, [this] { return hold_ == Hold::None; }, [this] { limits_->Commit(); })) {
  setObjectName(QStringLiteral("LongForm"));
  setAcceptDrops(true);
  LayOut();
  Connect();
}

// Children go after this has run, and one that loses the focus then would still pass on what stands in it.
LongForm::~LongForm() {
  hub_->disconnect(this);
  limits_->disconnect(this);
  grid_->Pane().disconnect(this);
}

void LongForm::LayOut() {
  auto* side = new QVBoxLayout(side_);
  side->setContentsMargins(0, 0, 0, 0);
  side->addWidget(hub_);
  side->addWidget(drives_);
  side->addWidget(limits_);
  side->addStretch(1);
  QToolButton* logo = MakeLogo(side_);
  connect(logo, &QToolButton::clicked, this, [this] {
    if (!TakesInput(*side_)) return;
    // Like every dialog it is made when it is needed first, and stays.
    if (about_ == nullptr) about_ = new About(this);
    about_->exec();
  });
  side->addWidget(logo, 0, Qt::AlignRight);

  columns_->setObjectName(QStringLiteral("Columns"));
  columns_->setHandleWidth(kMargin);
  columns_->setChildrenCollapsible(false);
  columns_->addWidget(grid_);
  columns_->addWidget(new TallPane(side_, QStringLiteral("Hub, drives and limits"), this));
  // What a wider window has more of goes to the program.
  columns_->setStretchFactor(0, 1);

  auto* top = new QHBoxLayout;
  top->setSpacing(kMargin);
  top->addWidget(commands_, 1);
  top->addWidget(stop_);

  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(kMargin, 4, kMargin, kMargin);
  column->setSpacing(4);
  column->addLayout(top);
  column->addWidget(new Rule(QFrame::HLine, this));
  column->addWidget(columns_, 1);
  column->addWidget(status_);
  // With a large font the layout knows best. Else a notice over the grid may take a little of its room.
  if (ByFont(fontMetrics(), kLeastWidth) == kLeastWidth) setMinimumWidth(kLeastWidth);
  resize(OpeningSize(*this, kMainSize));
  grid_->Pane().setFocus();
}

void LongForm::Connect() {
  Command("Load", [](Desk& desk) { Load(desk); });
  Command("Save", [](Desk& desk) { Save(desk); });
  Command("PrintButton", [](Desk& desk) { PrintListing(desk); });
  Command("BtnClear", [](Desk& desk) { Clear(desk); });
  Command("Download", [](Desk& desk) { Download(desk); });
  Command("Upload", [](Desk& desk) { Upload(desk); });
  Command("execbutton", [](Desk& desk) { Execute(desk); });
  Command("ChangeRes", SetUpHardware);
  Command("Help", [](Desk& desk) { desk.OpenHelp("Hub Composer.pdf"); });
  commands_->OnClick("Quit", [this] { Quit(); });
  recent_->setObjectName(QStringLiteral("Recent"));
  recent_->setAccessibleName(QStringLiteral("Recent files"));
  connect(recent_, &QMenu::aboutToShow, this, &LongForm::ListRecent);
  commands_->SetMenu("Load", recent_);
  // Where a box is up a screen reader presses it all the same: a stop is never out of place.
  connect(stop_, &StopButton::clicked, this, &LongForm::StopPressed);
  // Also where a run window has the keyboard.
  OnKey(Qt::CTRL | Qt::Key_L, [this] { emit RunLogAsked(); })->setContext(Qt::ApplicationShortcut);
  connect(drives_, &DrivesPanel::Clicked, this, [this] {
    if (!TakesInput(*drives_)) return;
    limits_->Commit();
    SetUpHardware(*desk_);
  });
  connect(hub_, &HubPanel::ModelChosen, this, [this](int index) { Choose(ChooseModel, index); });
  connect(hub_, &HubPanel::DeviceChanged, status_, &StatusLine::TellDevice);
  connect(hub_, &HubPanel::PortChosen, this, [this](int index) { Choose(ClickOptCom, index); });
  connect(limits_, &LimitsPanel::ActionChosen, this, [this](int index) { Choose(SelectLimitAction, index); });
  connect(limits_, &LimitsPanel::BranchEntered, this,
          [this](const QString& text) { LeaveLimitBranch(*desk_, ToText(text)); });
  connect(&grid_->Pane(), &ProgWindow::Dropped, this,
          [this](int from, int to, bool shift) { DropIcon(*desk_, from, to, shift); });
}

void LongForm::Command(std::string_view button, void (*handler)(Desk&)) {
  commands_->OnClick(button, [this, handler] {
    // A mnemonic runs a command without taking the focus away from the entry in progress.
    limits_->Commit();
    handler(*desk_);
  });
}

QShortcut* LongForm::OnKey(const QKeySequence& key, std::function<void()> run) {
  auto* shortcut = new QShortcut(key, this);
  shortcut->setAutoRepeat(false);
  connect(shortcut, &QShortcut::activated, this, std::move(run));
  return shortcut;
}

void LongForm::Choose(void (*handler)(Desk&, int), int index) {
  if (TakesInput(*side_)) return handler(*desk_, index);
  HubChanged();
  LimitChanged();
}

void LongForm::Begin(Desk& desk) {
  desk_ = &desk;
  status_->Begin(desk);
  TakePlace(desk.settings, *this, *columns_);
  keys_->Attach(desk);
  InitSession(source_);
  CaptionChanged();
  ProgCounter(std::nullopt);
  HubChanged();
  LimitChanged();
  StartComm(desk);
  source_.Changed = false;
  // Once more: a hub that announced itself meanwhile must not leave its mark on the new program.
  InitProg(source_.program);
  ShowAllDescs(desk.grid());
  DrawArrows(desk.grid());
  ShowDrive(desk.view);
}

void LongForm::HoldCommands(Hold hold) {
  hold_ = hold;
  commands_->setEnabled(hold == Hold::None);
  side_->setEnabled(hold == Hold::None);
  grid_->Hold(WhyHeld(hold));
}

void LongForm::RowChanged(int line) {
  grid_->Pane().RowChanged(line);
}
void LongForm::AllRowsChanged() {
  grid_->Pane().AllRowsChanged();
}
void LongForm::ArrowsChanged() {
  grid_->Pane().ArrowsChanged();
}
void LongForm::DrivesChanged() {
  drives_->Show(source_.program);
}
void LongForm::HubChanged() {
  hub_->Show(source_);
  StopChanged();
  status_->CompareSoon();
}
void LongForm::LimitChanged() {
  limits_->Show(source_.program);
}
void LongForm::CaptionChanged() {
  const QString mark = Unsaved(source_) ? QStringLiteral("*") : QString();
  setWindowTitle(FromMessage(Caption(source_)) + mark);
  status_->CompareSoon();
}
void LongForm::AutoScroll(int line) {
  grid_->AutoScroll(line);
}
void LongForm::GoTo(int line) {
  grid_->Pane().GoTo(line);
}
void LongForm::ProgCounter(std::optional<int> line) {
  grid_->Pane().ShowProgCounter(line);
}
void LongForm::StopChanged() {
  if (desk_ != nullptr) stop_->Show(CanStop(*desk_), source_.link.HubRuns);
  // The desktop's own file dialogs would keep the key that stops to themselves.
  QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs, source_.link.HubRuns);
  status_->ShowSoon();
}
void LongForm::SomethingHappened() {
  status_->ShowSoon();
}
void LongForm::Note(std::string_view text) {
  grid_->Note(FromMessage(text));
}

void LongForm::Quit() {
  limits_->Commit();
  const bool changed = source_.Changed;
  if (!MayQuit(*desk_)) return;
  // Leaving unsaved changes behind leaves the choice of port behind too.
  if (!changed) RememberPort(*desk_);
  End();
}

void LongForm::closeEvent(QCloseEvent* event) {
  if (ended_ || desk_ == nullptr) return event->accept();
  // A byte more would spoil the transfer.
  if (hold_ == Hold::Transfer) return event->ignore();
  desk_->Comm1.Output("I");
  limits_->Commit();
  if (hold_ == Hold::Run || !MayQuit(*desk_)) return event->ignore();
  RememberPort(*desk_);
  event->accept();
  End();
}

QString LongForm::DroppedFile(const QDropEvent& event) const {
  const QList<QUrl> files = event.mimeData()->urls();
  return hold_ == Hold::None && TakesInput(*this) && files.size() == 1 ? files.front().toLocalFile()
                                                                       : QString();
}

void LongForm::dragEnterEvent(QDragEnterEvent* event) {
  if (!DroppedFile(*event).isEmpty()) event->acceptProposedAction();
}

void LongForm::dropEvent(QDropEvent* event) {
  const QString file = DroppedFile(*event);
  if (file.isEmpty()) return;
  event->acceptProposedAction();
  // Later: whoever the file was dragged from waits for the end of this event, and a question may come first.
  QTimer::singleShot(0, this, [this, file] { Open(file); });
}

void LongForm::Open(const QString& file) {
  if (hold_ != Hold::None || !TakesInput(*this)) return;
  limits_->Commit();
  OpenFile(*desk_, QFile::encodeName(file).toStdString());
}

void LongForm::ListRecent() {
  recent_->clear();
  for (const std::string& file : RecentFiles(desk_->settings)) {
    const QString path = QFile::decodeName(QByteArray::fromStdString(file));
    // An ampersand would mark the next letter.
    recent_->addAction(FromMessage(file).replace(QLatin1Char('&'), QStringLiteral("&&")), this,
                       [this, path] { Open(path); });
  }
  if (recent_->isEmpty()) recent_->addAction(QStringLiteral("No recent files"))->setEnabled(false);
}

void LongForm::Unload() {
  if (ended_ || desk_ == nullptr) return;
  ended_ = true;
  RememberPlace(desk_->settings, *this, *columns_);
  RememberPort(*desk_);
}

void LongForm::End() {
  ended_ = true;
  RememberPlace(desk_->settings, *this, *columns_);
  emit Ended();
}

}  // namespace tavlo
