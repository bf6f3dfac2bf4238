// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "link/status_fields.h"

#include <gtest/gtest.h>

#include <functional>

#include "link/com_port.h"
#include "link/download.h"
#include "link/execution.h"
#include "link/hub_messages.h"
#include "link/receive.h"
#include "link/scripted_hub.h"
#include "session/happened.h"

namespace tavlo::testing {
namespace {

constexpr double kAt = 17 * 3600 + 44 * 60 + 5;

HubProgram HeldBy(HubProgram::By by, const char* file) {
  return {.by = by, .bytes = 3180, .file_name = file, .at = kAt};
}

TEST(HubField, SaysWhatTheHubHoldsAndHowThatIsKnown) {
  using By = HubProgram::By;
  struct Case {
    HubProgram held;
    Holds now;
    const char* text;
    const char* more;
  };
  const HubProgram named = HeldBy(By::Download, "/home/ann/cut-to-length.TVH");
  const HubProgram unnamed = HeldBy(By::Download, "untitled");
  const HubProgram read = HeldBy(By::Upload, "");
  for (const Case& c : {
           Case{named, Holds::TheProgramShown, "Hub holds cut-to-length.TVH, proven 17:44",
                "/home/ann/cut-to-length.TVH\nProven by its sum at 17:44:05, 3,180 bytes"},
           Case{unnamed, Holds::TheProgramShown, "Hub holds the program shown, proven 17:44",
                "Proven by its sum at 17:44:05, 3,180 bytes"},
           Case{read, Holds::TheProgramShown, "Hub holds the program shown, read 17:44",
                "Read from the hub at 17:44:05, 3,180 bytes"},
           Case{named, Holds::Another, "Hub holds another program than the one shown",
                "/home/ann/cut-to-length.TVH\nProven by its sum at 17:44:05, 3,180 bytes"},
           Case{{}, Holds::Unknown, "Not known what the hub holds", "A download or an upload will tell."},
       }) {
    FakeDesk d;
    d.source.link.held = c.held;
    const StatusField field = HubField(d.source, c.now);
    EXPECT_EQ(field.text, c.text);
    EXPECT_EQ(field.more, c.more) << c.text;
    EXPECT_FALSE(field.warning) << c.text;
  }
}

TEST(HubField, WarnsForAsLongAsWhatRunsIsNotKnownToBeTheProgramShown) {
  constexpr const char* kAnother = "Warning: the hub runs another program than the one shown";
  constexpr const char* kUnknown = "Not known what the hub runs";
  struct Case {
    Holds at_start;
    Holds now;
    const char* text;
  };
  for (const Case& c : {
           Case{Holds::TheProgramShown, Holds::TheProgramShown, nullptr},
           Case{Holds::Another, Holds::Another, kAnother},
           Case{Holds::Another, Holds::TheProgramShown, kAnother},
           Case{Holds::TheProgramShown, Holds::Another, kAnother},
           Case{Holds::Unknown, Holds::Unknown, kUnknown},
           Case{Holds::TheProgramShown, Holds::Unknown, kUnknown},
       }) {
    FakeDesk d;
    d.source.link.held = HeldBy(HubProgram::By::Upload, "");
    d.source.link.HubRuns = true;
    d.source.run.holds = c.at_start;
    const StatusField field = HubField(d.source, c.now);
    EXPECT_EQ(field.warning, c.text != nullptr);
    EXPECT_EQ(field.text, c.text != nullptr ? c.text : "Hub holds the program shown, read 17:44");
    d.source.link.HubRuns = false;
    EXPECT_FALSE(HubField(d.source, c.now).warning) << "when it is over, so is the warning";
  }
}

TEST(PortField, SaysThePortItsDeviceAndWhoAnswersThere) {
  FakeDesk d;
  const auto text = [&] { return PortField(d.source, d.port.is_open, "/dev/ttyUSB0").text; };
  EXPECT_EQ(text(), "Comm 1, /dev/ttyUSB0, firmware not known");
  ScriptedHub hub(d.port);
  static_cast<void>(Download(d.desk));
  EXPECT_EQ(text(), "Comm 1, /dev/ttyUSB0, firmware 1.38");
  EXPECT_EQ(PortField(d.source, true, "").more, "Tavlo Hub-Octo, firmware 1.38");
  ClickOptCom(d.desk, 1);
  EXPECT_EQ(text(), "Comm 2, /dev/ttyUSB0, firmware not known") << "another hub's firmware is not this one's";
  EXPECT_EQ(d.source.link.DriveVersion, "1.38");
  DispDrive(d.desk, 40, 24);
  EXPECT_EQ(text(), "Comm 2, /dev/ttyUSB0, firmware 1.40");
  DispDrive(d.desk, 40, 16);
  EXPECT_EQ(text(), "Comm 2, /dev/ttyUSB0, unknown device");
  d.port.is_open = false;
  EXPECT_EQ(text(), "Comm 2 has gone") << "before an operation has reported it too";
  d.port.number = 2;
  TellPortLost(d.desk);
  EXPECT_EQ(text(), "Comm 2 has gone");
  ClickOptCom(d.desk, 1);
  EXPECT_EQ(text(), "Comm 2, /dev/ttyUSB0, firmware not known");
}

TEST(PortField, SaysThatNoPortIsOpen) {
  FakeDesk d;
  d.source.link.ComNum = 0;
  d.port.is_open = false;
  EXPECT_EQ(PortField(d.source, false, "").text, "No port is open");
}

TEST(EventField, SaysTheLastEventAndItsTimeAndLaterAllOfThem) {
  FakeDesk d;
  EXPECT_EQ(EventField(d.source).text, "Nothing has happened yet");
  d.clock.now = kAt - 3600;
  Happened(d.desk, "Loaded menu.TVH");
  d.clock.now = kAt;
  Happened(d.desk, "Program started");
  EXPECT_EQ(EventField(d.source).text, "Program started (17:44)");
  EXPECT_EQ(EventField(d.source).more, "17:44:05  Program started\n16:44:05  Loaded menu.TVH");
}

/// What happens in a run, and what is said of it.
struct EventCase {
  std::function<void(FakeDesk&)> happens;
  const char* text;
};

std::function<void(FakeDesk&)> Says(std::initializer_list<int> bytes) {
  return [message = Bytes(bytes)](FakeDesk& d) { d.port.Receive(message); };
}

TEST(Happenings, OfARunAreToldWithTheLine) {
  for (const EventCase& c : {
           EventCase{Says({252, 2, 0, 0}), "Stopped at line 44: limit switch, axis 3"},
           EventCase{Says({251, 0, 0, 0}), "Stopped at line 44: the STOP button on the drive"},
           EventCase{Says({239, 11, 0, 0}), "Stopped at line 12: stack overflow"},
           EventCase{Says({238, 11, 0, 0}), "Stopped at line 12: stack underflow"},
           EventCase{Says({212, 1, 0, 0}), "Stopped at line 44: drive disabled, axis 2"},
           EventCase{Says({211, 1, 0, 32}), "Fault on axis 2: over voltage"},
           EventCase{Says({211, 1, 1, 33}), "Fault on axis 2: Position Limit, over voltage, motor short"},
           EventCase{Says({211, 1, 0, 0}), "Fault on axis 2"},
           EventCase{Says({255, 38, 8, 0}), "The hub was switched on"},
           EventCase{Says({240, 2, 0, 0}), "Drive 3 is not responding"},
           EventCase{Says({250, 2, 5, 0}), "Old firmware in drive 3"},
           EventCase{Says({249, 2, 5, 6}), "Drive 3 is another one than expected"},
           EventCase{[](FakeDesk& d) { StopRun(d.desk, RunWindow::ExecStatus); },
                     "Stopped by the operator at line 44"},
           EventCase{[](FakeDesk& d) { CloseRun(d.desk, RunWindow::ExecStatus); },
                     "Stopped by the operator at line 44"},
           EventCase{[](FakeDesk& d) { CloseRun(d.desk, RunWindow::fakeMMI); },
                     "Operator terminal closed: the program runs on"},
           EventCase{[](FakeDesk& d) { StopHubNow(d.desk); }, "Stopped by the operator at line 44"},
           EventCase{[](FakeDesk& d) { TellPortLost(d.desk); }, "Comm 1 has gone"},
           EventCase{[](FakeDesk& d) { ClickOptCom(d.desk, 3); }, "Comm 1 was left while its hub may run"},
           EventCase{[](FakeDesk&) {}, "Program started"},
       }) {
    FakeDesk d;
    d.port.OnComm = [&d] { NewOnComm(d.desk); };
    d.boxes.setNextAnswer(Answer::No);
    d.run.active = RunWindow::fakeMMI;
    StartRun(d.desk, RunWindow::fakeMMI);
    d.port.Receive(Bytes({254, 2, 11, 0}));
    c.happens(d);
    ASSERT_FALSE(d.source.happened.empty());
    EXPECT_EQ(d.source.happened.front().text, c.text);
  }
}

TEST(Happenings, AHubThatWasAskedBeforeIsSwitchedOnAgain) {
  FakeDesk d;
  ScriptedHub hub(d.port);
  static_cast<void>(Download(d.desk));
  DispDrive(d.desk, 38, 8);
  EXPECT_EQ(d.source.happened.front().text, "The hub was switched on again");
}

TEST(Happenings, OfADownloadAreItsProofWithBytesAndTimeOrThatThereIsNone) {
  FakeDesk d;
  ScriptedHub hub(d.port);
  hub.delays["line 7"] = 0.5;
  hub.delays["K"] = 0.4;
  EXPECT_EQ(Download(d.desk), DownloadResult::Done);
  EXPECT_EQ(d.source.happened.front().text, "Download proven: 457 bytes in 0.9 s")
      << "200 empty lines, the settings, the end of the pool";
  hub.instead["line 9"] = "";
  EXPECT_EQ(Download(d.desk), DownloadResult::StoppedInLines);
  EXPECT_EQ(d.source.happened.front().text, "Download not proven");
}

TEST(Happenings, APauseIsOneWhenTheHubStandsStill) {
  FakeDesk d;
  d.port.OnComm = [&d] { NewOnComm(d.desk); };
  d.run.active = RunWindow::ExecStatus;
  StartRun(d.desk, RunWindow::ExecStatus);
  const RunPanel& panel = d.source.run.panel;
  EXPECT_EQ(panel.phase, RunPhase::Running);
  d.port.Receive(Bytes({254, 0, 7, 0}));
  ClickPause(d.desk);
  EXPECT_EQ(panel.phase, RunPhase::Pausing) << "the line under way goes on";
  EXPECT_EQ(d.source.happened.front().text, "Program started");
  d.port.Receive(Bytes({237, 0, 7, 0, 235, 1, 0, 11}));
  EXPECT_EQ(panel.phase, RunPhase::Paused);
  EXPECT_EQ(d.source.happened.front().text, "Paused at line 12");
  d.port.Receive(Bytes({235, 1, 0, 12}));
  EXPECT_EQ(d.source.happened.front().text, "Paused at line 12") << "it is paused already";
  ClickSingleStep(d.desk);
  EXPECT_EQ(panel.phase, RunPhase::Stepping);
  d.port.Receive(Bytes({235, 0, 0, 0, 235, 1, 0, 13}));
  EXPECT_EQ(panel.phase, RunPhase::Stepping) << "the hub tells the end of a step by itself";
  d.port.Receive(Bytes({253, 0, 0, 0}));
  EXPECT_EQ(panel.phase, RunPhase::Paused);
  ClickPlay(d.desk);
  EXPECT_EQ(panel.phase, RunPhase::Running);
  ClickPause(d.desk);
  ClickPlay(d.desk);
  d.port.Receive(Bytes({235, 1, 0, 14}));
  EXPECT_EQ(panel.phase, RunPhase::Running);
  StopRun(d.desk, RunWindow::ExecStatus);
  EXPECT_EQ(panel.phase, RunPhase::Stopped);
  EXPECT_EQ(d.source.happened.front().text, "Stopped by the operator at line 15");
}

}  // namespace
}  // namespace tavlo::testing
