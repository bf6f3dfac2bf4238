// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/window_walk.h"

#include <QDialog>
#include <QLineEdit>
#include <QPlainTextEdit>

#include "commands/hub_choices.h"
#include "link/execution.h"
#include "link/polled.h"
#include "session/grid.h"
#include "session/happened.h"
#include "windows/about.h"
#include "windows/editor_walk.h"
#include "windows/go_to_line.h"
#include "windows/start_form.h"

namespace tavlo::testing {
namespace {

/// Rows of every state, frame and colour of number, and texts that do not fit.
void FillRows(RunSession& session) {
  Program& program = session.Lines();
  const int types[] = {FL, WT, GT, CL, RP, MMI, SO, ER, II, CM, SH, FP, SP, LP, RL, IM};
  for (int line = 0; line < static_cast<int>(std::size(types)); ++line) program.Prog[line].Type = types[line];
  program.Prog[0].Proceed = true;
  program.Prog[2].LineNum = 12;
  program.Prog[3].LineNum = 9;
  program.Prog[9].Text =
      "Feed, cut and stack until the counter of the operator says that it is enough for today";
  ShowAllDescs(session.Handlers().grid());
  for (int line = 0; line < kLines; ++line) SetIcon(session.Handlers().grid(), line);
  MarkChains(session.Handlers().grid());
  DrawArrows(session.Handlers().grid());
  const RowState states[] = {RowState::Normal, RowState::LimitTarget, RowState::Executing, RowState::WentOn,
                             RowState::Picked};
  for (int i = 0; i < 5; ++i) {
    session.Session().shown.rows[4 + i].state = states[i];
    session.Session().shown.rows[4 + i].icon = IconFor(types[4 + i], static_cast<IconSet>(i));
  }
  session.Session().shown.rows[10].label = LabelColour::Blue;
  session.Main().ProgCounter(6);
  session.Main().AllRowsChanged();
}

/// Lights of every kind.
void Light(RunSession& session) {
  auto status = [](int header, int inputs, int outputs) {
    return std::string{static_cast<char>(header), static_cast<char>(inputs & 15),
                       static_cast<char>(inputs >> 4), static_cast<char>(outputs)};
  };
  session.fakes.port.Receive(status(241, 0x3d, 0x0e));
  session.fakes.port.Receive(status(242, 0xff, 0x0f));
  session.fakes.port.Receive(status(214, 0x3d, 0x00));
  session.fakes.port.Receive(status(215, 0x3d, 0x00));
}

void LookAtMain(const LookAt& look_at) {
  RunSession session;
  FillRows(session);
  session.Settle();
  look_at(session.Main(), "main");
  session.Main().resize(session.Main().minimumSizeHint());
  session.Settle();
  look_at(session.Main(), "main, smallest");
}

/// Several rows selected, the arrows of a row among forty, the search, the menu of a row, the number of a
/// line.
void LookAtHands(const LookAt& look_at) {
  RunSession session;
  FillRows(session);
  for (int line = 16; line < 56; ++line) {
    session.Lines().Prog[line] = {.Type = GT, .LineNum = static_cast<std::int16_t>(line * 17 % 60)};
  }
  ShowProgram(session.Handlers());
  ProgWindow& rows = session.Pane();
  rows.GoTo(18);
  session.Settle();
  look_at(session.Main(), "main, arrows of a row");
  RowSelection selection;
  selection.Select({2, 9});
  rows.Select(selection);
  session.Settle();
  look_at(session.Main(), "main, selected rows");
  QTest::keyClick(&rows, Qt::Key_F, Qt::ControlModifier);
  QTest::keyClicks(&session.Find<QLineEdit>(nullptr, "FindWords"), QStringLiteral("go to line 3"));
  session.Settle();
  look_at(session.Main(), "main, search");
  QTimer::singleShot(0, &session.Main(), [&] {
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    dialog->activateWindow();
    session.Settle();
    look_at(*dialog, "GoToLine");
    dialog->reject();
  });
  static_cast<void>(AskForLine(&session.Main(), 11));
}

void LookAtQuad(const LookAt& look_at) {
  RunSession session;
  SelectModel(session.Handlers(), HubQuad);
  SelectLimitAction(session.Handlers(), BranchToLine);
  session.Settle();
  look_at(session.Main(), "main, Hub Quad");
}

/// The status line with a warning and with texts that do not fit, a Stop that is lit, ports without devices.
void LookAtStatus(const LookAt& look_at) {
  RunSession session;
  Desk& desk = session.Handlers();
  for (int comm = 3; comm <= 8; ++comm) session.comms.devices[comm] = {"/dev/none", false, ""};
  session.comms.OnChange();
  desk.source.run.holds = Holds::Another;
  NoteHubRuns(desk.link(), true);
  Happened(desk, "Fault on axis 2: Position Limit, drive overtemp, over voltage, motor short");
  session.Settle();
  look_at(session.Main(), "main, warning");
  session.Main().resize(session.Main().minimumSizeHint());
  session.Settle();
  look_at(session.Main(), "main, warning, smallest");
}

void LookAtPanes(const LookAt& look_at) {
  RunSession session;
  Desk& desk = session.Handlers();
  desk.downbox.Show();
  desk.downbox.Gauge(120);
  desk.downbox.Phase("prompt strings", 10, 20);
  session.Settle();
  look_at(session.Main(), "main, sending");
  desk.downbox.Hide();
  desk.upbox.Show();
  desk.upbox.Gauge(10);
  session.Settle();
  look_at(session.Main(), "main, reading");
  desk.upbox.Hide();
  desk.loading.Show();
  session.Settle();
  look_at(session.Main(), "main, loading");
  desk.loading.Hide();
}

void LookAtRuns(const LookAt& look_at) {
  for (const RunWindow window : {RunWindow::ExecStatus, RunWindow::fakeMMI}) {
    const char* form = window == RunWindow::fakeMMI ? "fakeMMI" : "ExecStatus";
    RunSession session;
    session.Lines().Axis.DriveModel = {36, 10, 20, 1, 30, 2, 7, 8, 0};
    session.WhileRunning(window, [&] {
      Light(session);
      session.fakes.port.Receive("Length of the part: 12345678");
      session.Settle();
      look_at(session.Form(form), std::string(form) + ", running");
      ClickPause(session.Handlers());
      session.Settle();
      look_at(session.Form(form), std::string(form) + ", paused");
      ClickSingleStep(session.Handlers());
      session.Settle();
      look_at(session.Form(form), std::string(form) + ", a step");
      session.Click(form, "btnStop");
    });
  }
}

void LookAtFault(const LookAt& look_at) {
  RunSession session;
  QTimer::singleShot(0, &session.Main(), [&] {
    look_at(session.Form("ServoFault"), "ServoFault");
    session.Click("ServoFault", "Close");
  });
  session.fakes.port.Receive({static_cast<char>(211), 1, 1, 33});
}

void LookAtAbout(const LookAt& look_at) {
  About about(nullptr);
  about.show();
  QApplication::processEvents();
  look_at(about, "About");
}

void LookAtTerminal(const LookAt& look_at) {
  RunSession session;
  QTimer::singleShot(0, &session.Main(), [&] {
    session.Find<QPlainTextEdit>("VOXterm", "CommandText").setPlainText("1RV");
    session.Find<QPlainTextEdit>("VOXterm", "History").setPlainText("$1RV$\n1RV=1.53\n$1RP$\n1RP=12345\n");
    session.Settle();
    look_at(session.Form("VOXterm"), "VOXterm");
    session.Click("VOXterm", "Quit");
  });
  session.Handlers().terminal->ShowModal();
}

void LookAtRunLog(const LookAt& look_at) {
  RunSession session;
  QTest::keyClick(&session.Main(), Qt::Key_L, Qt::ControlModifier);
  session.Settle();
  look_at(session.Form("RunLog"), "RunLog, empty");
  session.Lines().Axis.DriveModel = {36, 10, 20, 1, 30, 2, 7, 8, 0};
  session.WhileRunning(RunWindow::fakeMMI, [&] {
    session.fakes.port.Receive(LineMessage(254, 11));
    Light(session);
    session.fakes.port.Receive("Length of the part: 12345678");
    PressKey(session.Handlers(), MmiKey::enter);
    session.fakes.port.Receive(LineMessage(237, 11));
    QTest::qWait(150);
    look_at(session.Form("RunLog"), "RunLog, running");
    session.Click("fakeMMI", "btnStop");
  });
}

}  // namespace

std::string NameOf(const Look& look) {
  return std::string(look.dark ? "dark" : "light") + " " + std::to_string(static_cast<int>(look.points)) +
         " pt";
}

QPalette LightPalette() {
  return {QColor(239, 239, 239)};
}

QPalette DarkPalette() {
  QPalette dark(QColor(53, 53, 53));
  dark.setColor(QPalette::Window, QColor(45, 45, 45));
  dark.setColor(QPalette::Base, QColor(30, 30, 30));
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::BrightText}) {
    dark.setColor(role, QColor(232, 232, 232));
    dark.setColor(QPalette::Disabled, role, QColor(128, 128, 128));
  }
  dark.setColor(QPalette::Highlight, QColor(42, 130, 218));
  dark.setColor(QPalette::HighlightedText, Qt::black);
  return dark;
}

WearingLook::WearingLook(const Look& look) : palette_(QApplication::palette()), font_(QApplication::font()) {
  QApplication::setPalette(look.dark ? DarkPalette() : LightPalette());
  QFont font = font_;
  font.setPointSizeF(look.points);
  QApplication::setFont(font);
}

WearingLook::~WearingLook() {
  QApplication::setPalette(palette_);
  QApplication::setFont(font_);
}

void ForEachWindow(const LookAt& look_at) {
  StartForm splash;
  splash.ShowAtOnce();
  look_at(splash, "StartForm");
  splash.close();
  LookAtMain(look_at);
  LookAtHands(look_at);
  LookAtQuad(look_at);
  LookAtStatus(look_at);
  LookAtPanes(look_at);
  LookAtRuns(look_at);
  LookAtFault(look_at);
  LookAtAbout(look_at);
  LookAtTerminal(look_at);
  LookAtRunLog(look_at);
  ForEachEditor(look_at);
}

}  // namespace tavlo::testing
