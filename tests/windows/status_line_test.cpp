// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/status_line.h"

#include <QAccessible>

#include "commands/lines.h"
#include "commands/undo.h"
#include "link/held_program.h"
#include "link/polled.h"
#include "session/edit_step.h"
#include "session/happened.h"
#include "widgets/contrast.h"
#include "windows/comm_option.h"
#include "windows/run_session.h"

namespace tavlo::testing {
namespace {

struct StatusSession : RunSession {
  [[nodiscard]] StatusLabel& Field(const char* name) { return *WindowSession::Find<StatusLabel>(name); }
  [[nodiscard]] std::string Text(const char* name) {
    Settle();
    return Field(name).text().toStdString();
  }
  /// As if the program that is shown had been sent and proven at 17:44.
  void Prove(const char* file) {
    Program copy = Lines();
    NoteHubProgram(Handlers().link(), {.by = HubProgram::By::Download,
                                       .image = ImageOf(CompileAsDownloaded(copy)),
                                       .bytes = 457,
                                       .file_name = file,
                                       .at = 17 * 3600 + 44 * 60});
  }
  void Edit(std::int16_t type) {
    const EditStep step(Handlers(), "edit line 1");
    Lines().Prog[0].Type = type;
  }
};

TEST(StatusLine, StandsAtTheFootWithItsThreeFieldsFromTheStartOn) {
  StatusSession session;
  EXPECT_EQ(session.Text("HubField"), "Not known what the hub holds");
  EXPECT_EQ(session.Text("PortField"), "Comm 1, /dev/line1, firmware not known");
  EXPECT_EQ(session.Text("EventField"), "Nothing has happened yet");
  const QWidget& line = *session.WindowSession::Find<QWidget>("StatusLine");
  EXPECT_GT(line.y(), session.WindowSession::Find<QWidget>("ModelList")->y());
  EXPECT_GE(line.geometry().bottom(), session.Main().height() - 12);
}

TEST(StatusLine, FollowsEveryEditAndEveryStepBack) {
  StatusSession session;
  session.Prove("/home/ann/cut.TVH");
  EXPECT_EQ(session.Text("HubField"), "Hub holds cut.TVH, proven 17:44");
  session.Edit(RT);
  EXPECT_EQ(session.Text("HubField"), "Hub holds another program than the one shown");
  Undo(session.Handlers());
  EXPECT_EQ(session.Text("HubField"), "Hub holds cut.TVH, proven 17:44");
  Redo(session.Handlers());
  EXPECT_EQ(session.Text("HubField"), "Hub holds another program than the one shown");
  session.fakes.port.Receive({static_cast<char>(255), 38, 8, 0});
  EXPECT_EQ(session.Text("HubField"), "Not known what the hub holds");
  EXPECT_EQ(session.Text("PortField"), "Comm 1, /dev/line1, firmware 1.38");
}

TEST(StatusLine, WarnsWhileAnotherProgramRunsThanTheOneShown) {
  StatusSession session;
  session.Prove("cut.TVH");
  session.Session().run.holds = Holds::Another;
  const int usual = session.Field("HubField").height();
  session.WhileRunning(RunWindow::ExecStatus, [&] {
    EXPECT_EQ(session.Text("HubField"), "Warning: the hub runs another program than the one shown");
    EXPECT_TRUE(session.Field("HubField").font().bold());
    const QImage picture = session.Field("HubField").grab().toImage();
    EXPECT_GT(Contrast(picture.pixelColor(2, picture.height() / 2), picture.pixelColor(0, 0)), kTextContrast)
        << "its ground in its frame";
    EXPECT_EQ(session.Field("HubField").height(), usual);
    session.Click("ExecStatus", "btnStop");
  });
  EXPECT_EQ(session.Text("HubField"), "Hub holds cut.TVH, proven 17:44");
  EXPECT_FALSE(session.Field("HubField").font().bold());
  EXPECT_EQ(session.Text("EventField"), "Stopped by the operator (00:16)");
}

TEST(StatusLine, AWarningIsReadWholeBesideALongDevice) {
  StatusSession session;
  session.comms.devices[1] = {"/run/user/1000/a/folder/of/a/very/long/name/tavlo-composer/comm1", true, ""};
  session.Main().resize(760, 600);
  session.Prove("cut.TVH");
  session.Session().run.holds = Holds::Another;
  session.WhileRunning(RunWindow::ExecStatus, [&] {
    EXPECT_EQ(session.Text("HubField"), "Warning: the hub runs another program than the one shown");
    session.Settle();
    EXPECT_GE(session.Field("HubField").width(), session.Field("HubField").sizeHint().width());
    EXPECT_GE(session.Field("PortField").width(), session.Field("PortField").minimumSizeHint().width());
    session.Click("ExecStatus", "btnStop");
  });
}

TEST(StatusLine, SaysMoreInItsToolTips) {
  StatusSession session;
  session.Prove("/home/ann/<b>cut.TVH");
  Happened(session.Handlers(), "Loaded cut.TVH");
  Happened(session.Handlers(), "Program started");
  session.Settle();
  EXPECT_EQ(session.Field("HubField").toolTip(),
            "Hub holds &lt;b&gt;cut.TVH, proven 17:44<br>/home/ann/&lt;b&gt;cut.TVH<br>Proven by its sum at "
            "17:44:00, 457 bytes");
  EXPECT_EQ(session.Field("EventField").toolTip(),
            "Program started (00:16)<br>00:16:40  Program started<br>00:16:40  Loaded cut.TVH");
}

TEST(StatusLine, IsReadByAScreenReaderWhenAFieldChangesAndOnlyThen) {
  StatusSession session;
  session.Settle();
  QStringList heard;
  for (const char* name : {"HubField", "PortField", "EventField"}) {
    QObject::connect(&session.Field(name), &StatusLabel::Spoken, &session.Main(),
                     [&heard](const QString& text) { heard << text; });
  }
  Happened(session.Handlers(), "Loaded cut.TVH");
  session.Settle();
  EXPECT_EQ(heard.join('|'), "Loaded cut.TVH (00:16)");
  session.Main().CaptionChanged();
  session.Main().HubChanged();
  session.Settle();
  EXPECT_EQ(heard.size(), 1);
  session.fakes.port.Receive({static_cast<char>(255), 38, 8, 0});
  session.Settle();
  EXPECT_EQ(heard.mid(1).join('|'), "Comm 1, /dev/line1, firmware 1.38|The hub was switched on (00:16)");
  QAccessibleInterface* field = QAccessible::queryAccessibleInterface(&session.Field("EventField"));
  EXPECT_EQ(field->text(QAccessible::Name), "The hub was switched on (00:16)");
  EXPECT_TRUE(field->text(QAccessible::Description).startsWith("Last event: 00:16:40  The hub"));
}

TEST(StatusLine, ElidesAndNeverWidensTheWindow) {
  StatusSession session;
  session.Main().resize(640, 600);
  session.Settle();
  const QSize least = session.Main().minimumSizeHint();
  const int width = session.Main().width();
  Happened(session.Handlers(), std::string(4000, 'W'));
  session.Prove((std::string(4000, 'W') + ".TVH").c_str());
  session.Settle();
  EXPECT_EQ(session.Main().width(), width);
  EXPECT_EQ(session.Main().minimumSizeHint(), least);
  for (const char* name : {"HubField", "PortField", "EventField"}) {
    EXPECT_GT(session.Field(name).visibleRegion().boundingRect().width(), 50) << name;
  }
}

TEST(StatusLine, IsShownOnceHoweverMuchHappensInOneTurn) {
  StatusSession session;
  session.Settle();
  for (int i = 0; i < 100; ++i) Happened(session.Handlers(), "event " + std::to_string(i));
  EXPECT_EQ(session.Field("EventField").text(), "Nothing has happened yet");
  EXPECT_EQ(session.Text("EventField"), "event 99 (00:16)");
}

TEST(StatusLine, TellsThatTheDeviceOfAPortHasAppearedOrGone) {
  StatusSession session;
  session.comms.devices[3] = {"/dev/ttyS2", false, ""};
  session.comms.OnChange();
  EXPECT_EQ(session.Text("EventField"), "/dev/line3 has gone (Comm 3) (00:16)");
  session.comms.devices[3] = {"/dev/ttyUSB0", true, ""};
  session.comms.OnChange();
  EXPECT_EQ(session.Text("EventField"), "/dev/ttyUSB0 has appeared (Comm 3) (00:16)");
  session.comms.OnChange();
  EXPECT_EQ(session.Session().happened.size(), 2U) << "what did not change is not told again";
  session.comms.devices[1] = {"/dev/line1", false, ""};
  session.comms.OnChange();
  EXPECT_EQ(session.Session().happened.size(), 2U) << "the loss of the port in use has its box";
}

TEST(StatusLine, PortsWithoutADeviceAreGrayAndCanBeReadAndClicked) {
  StatusSession session;
  const auto ink = [&](const char* option) {
    return session.WindowSession::Find<CommOption>(option)->palette().color(QPalette::WindowText);
  };
  EXPECT_EQ(ink("OptCom2"), ink("OptCom1"));
  session.comms.devices[3] = {"/dev/ttyS2", false, ""};
  session.comms.OnChange();
  EXPECT_NE(ink("OptCom2"), ink("OptCom1"));
  const QColor ground = session.Main().palette().color(QPalette::Window);
  EXPECT_GE(Contrast(ink("OptCom2"), ground), kTextContrast);
  EXPECT_LT(Contrast(ink("OptCom2"), ground), Contrast(ink("OptCom1"), ground));
  session.comms.devices.clear();
  session.comms.OnChange();
  EXPECT_EQ(ink("OptCom2"), ink("OptCom1"));
}

}  // namespace
}  // namespace tavlo::testing
