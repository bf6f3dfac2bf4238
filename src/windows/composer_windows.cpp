// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/composer_windows.h"

#include <QApplication>
#include <QDateTime>

#include "link/com_port.h"
#include "link/execution.h"
#include "link/receive.h"
#include "session/happened.h"
#include "widgets/icon_images.h"
#include "widgets/window_accessible.h"
#include "windows/start_form.h"

namespace tavlo {
namespace {

constexpr double kSplashSeconds = 1.5;

/// No other session has the same: neither one that is up nor one that was killed.
std::string NameOfSession() {
  return std::to_string(QDateTime::currentMSecsSinceEpoch()) + "-" +
         std::to_string(QCoreApplication::applicationPid());
}

}  // namespace

// The run windows and the three panes are children of the main window and stand behind it here, so that they
// are gone before it is.
ComposerWindows::ComposerWindows(const Outside& outside)
    : main_(source_, outside.comms),
      run_(&main_, [this](bool hold) { main_.HoldCommands(hold ? Hold::Run : Hold::None); }),
      terminal_(&main_),
      downbox_(QStringLiteral("downbox"), QStringLiteral("Downloading the program to the hub"),
               QStringLiteral("Sending"), HoldWhile(), &main_),
      upbox_(QStringLiteral("upbox"), QStringLiteral("Reading the program from the hub"),
             QStringLiteral("Reading"), HoldWhile(), &main_),
      loading_(&main_),
      editors_(outside.boxes, outside.help, &main_),
      keep_(outside.sessions, NameOfSession(), [] { return QDateTime::currentSecsSinceEpoch(); }),
      logs_(outside.clock, outside.runs, &main_),
      desk_{.source = source_,
            .Comm1 = outside.Comm1,
            .boxes = outside.boxes,
            .clock = outside.clock,
            .loop = outside.loop,
            .beeper = outside.beeper,
            .view = main_,
            .run = run_,
            .downbox = downbox_,
            .upbox = upbox_,
            .settings = outside.settings,
            .dialogs = outside.dialogs,
            .files = outside.files,
            .loading = loading_},
      watch_([this] { return source_.link.HubRuns && CanStop(desk_); }) {
  InstallWindowAccessibility();
  run_.Attach(desk_);
  terminal_.Attach(desk_);
  desk_.terminal = &terminal_;
  desk_.editors = &editors_;
  desk_.help = &outside.help;
  desk_.printer = &outside.printer;
  desk_.keeper = &keep_;
  keep_.OnFailure = [this](const std::string& why) {
    Happened(desk_, "Changes are not kept for a crash: " + why);
  };
  desk_.log = &logs_.Log();
  logs_.Attach(desk_);
  QObject::connect(&main_, &LongForm::RunLogAsked, &logs_, &RunLogBook::Open);
  QObject::connect(&logs_, &RunLogBook::Closed, &main_, [this] { run_.BoxGone(); });
  desk_.clipboard = &outside.clipboard;
  desk_.boxes.GoToLine = [this](int line) { main_.GoTo(line); };
  QObject::connect(&main_, &LongForm::StopPressed, &watch_, [this] { run_.Stop(); });
  QObject::connect(&watch_, &RunWatch::StopPressed, &watch_, [this] { run_.Stop(); });
  QObject::connect(&watch_, &RunWatch::BoxGone, &watch_, [this] { run_.BoxGone(); });
  outside.Comm1.OnComm = [this] {
    const ComeByThemselves received(desk_.boxes);
    NewOnComm(desk_);
  };
  outside.Comm1.OnLost = [this] {
    const ComeByThemselves lost(desk_.boxes);
    TellPortLost(desk_);
  };
}

std::function<void(bool)> ComposerWindows::HoldWhile() {
  return [this](bool hold) { main_.HoldCommands(hold ? Hold::Transfer : Hold::None); };
}

ComposerWindows::~ComposerWindows() {
  main_.Unload();
  keep_.End();
  desk_.boxes.GoToLine = nullptr;
  desk_.Comm1.OnComm = nullptr;
  desk_.Comm1.OnLost = nullptr;
}

std::unique_ptr<ComposerWindows> StartUp(const Outside& outside) {
  InstallWindowAccessibility();
  StartForm splash;
  splash.ShowAtOnce();
  QApplication::setWindowIcon(ApplicationIcon());
  auto windows = std::make_unique<ComposerWindows>(outside);
  windows->Main().Begin(windows->Handlers());
  windows->Handlers().loop.WaitSecs(kSplashSeconds);
  splash.close();
  windows->Main().show();
  return windows;
}

}  // namespace tavlo
