// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "link/hub_messages.h"

#include <gtest/gtest.h>

#include <random>
#include <set>

#include "link/handled_message.h"
#include "link/scripted_hub.h"
#include "session/grid.h"

namespace tavlo::testing {
namespace {

ShownBox Plain(const std::string& text, const std::string& title) {
  return {text, title, Buttons::OK, Icon::None};
}

TEST(HubMessages, AHeaderWithoutAMeaningDoesNothing) {
  std::set<int> known = {255, 254, 253, 252, 251, 250, 249, 240, 239, 238, 237, 236, 235, 212, 211};
  for (int axis = 0; axis < kAxes; ++axis) known.insert({241 + axis, 221 + axis, 213 + axis});
  for (int header = 0; header < 256; ++header) {
    if (known.contains(header)) continue;
    FakeDesk d;
    d.run.active = RunWindow::ExecStatus;
    Handle(d, header, 1, 1, 1);
    EXPECT_TRUE(d.port.sent.empty() && d.boxes.shown.empty()) << header;
    EXPECT_TRUE(d.view.rows.empty() && d.view.scrolls.empty() && d.view.counters.empty()) << header;
    EXPECT_TRUE(d.run.statuses.empty() && d.run.faults.empty()) << header;
    EXPECT_EQ(d.run.active, RunWindow::ExecStatus) << header;
  }
}

TEST(LineStarted, PaintsTheLineScrollsToItAndAcknowledges) {
  for (const int line : {0, 15, 16, 199}) {
    FakeDesk d;
    d.Line(line).Type = FL;
    Handle(d, 254, line / 16, line % 16);
    EXPECT_EQ(d.source.shown.rows[line].state, RowState::Executing);
    EXPECT_EQ(d.source.shown.rows[line].icon, IconFor(FL, IconSet::Yellow));
    EXPECT_EQ(d.view.scrolls, std::vector<int>{line});
    EXPECT_EQ(d.port.sent, std::vector<std::string>{"I"});
  }
}

TEST(LineStarted, TheLineIsPaintedBeforeItIsAcknowledged) {
  FakeDesk d;
  d.port.on_output = [&](const std::string&) {
    EXPECT_EQ(d.source.shown.rows[18].state, RowState::Executing);
  };
  Handle(d, 254, 1, 2);
  EXPECT_EQ(d.port.sent.size(), 1u);
}

TEST(LineStarted, ALineThatThereIsNotPaintsNothingAndIsAcknowledgedAllTheSame) {
  for (const int line : {200, 201, 255, 256, 2047}) {
    for (const int header : {254, 236}) {
      FakeDesk d;
      Handle(d, header, line / 16, line % 16);
      EXPECT_TRUE(d.view.rows.empty()) << line;
      EXPECT_TRUE(d.view.scrolls.empty()) << line;
      EXPECT_EQ(d.port.sent, std::vector<std::string>{"I"}) << line;
    }
  }
}

TEST(LineConcurrent, PaintsTheLineRedScrollsToItAndAcknowledges) {
  FakeDesk d;
  d.Line(33).Type = WT;
  Handle(d, 236, 2, 1);
  EXPECT_EQ(d.source.shown.rows[33].state, RowState::WentOn);
  EXPECT_EQ(d.source.shown.rows[33].icon, IconFor(WT, IconSet::Red));
  EXPECT_EQ(d.view.scrolls, std::vector<int>{33});
  EXPECT_EQ(d.port.sent, std::vector<std::string>{"I"});
}

TEST(LineFinished, PutsTheLineToRestAndIsNotAcknowledged) {
  for (const bool target : {false, true}) {
    FakeDesk d;
    if (target) {
      d.source.program.LimitList = BranchToLine;
      d.source.program.LimitBranch = 34;
    }
    Handle(d, 254, 2, 1);
    d.port.sent.clear();
    d.view.scrolls.clear();
    Handle(d, 237, 2, 1);
    EXPECT_EQ(d.source.shown.rows[33].state, target ? RowState::LimitTarget : RowState::Normal);
    EXPECT_TRUE(d.port.sent.empty());
    EXPECT_TRUE(d.view.scrolls.empty());
  }
}

TEST(LineFinished, ALineThatThereIsNotPaintsNothing) {
  FakeDesk d;
  Handle(d, 237, 12, 8);
  Handle(d, 237, 127, 127);
  EXPECT_TRUE(d.view.rows.empty());
}

TEST(StepDone, TurnsThePicturesBackWhereARunWindowIsActive) {
  for (const RunWindow window : {RunWindow::ExecStatus, RunWindow::fakeMMI, RunWindow::None}) {
    FakeDesk d;
    d.run.active = window;
    d.source.run.panel.SingleStep = Picture::StepYellow;
    d.source.run.panel.Pause = Picture::PauseGray;
    Handle(d, 253, 1, 2, 3);
    const bool shown = window != RunWindow::None;
    EXPECT_EQ(d.source.run.panel.SingleStep, shown ? Picture::StepGray : Picture::StepYellow);
    EXPECT_EQ(d.source.run.panel.Pause, shown ? Picture::PauseRed : Picture::PauseGray);
    EXPECT_EQ(d.run.control_changes, shown ? 1 : 0);
    EXPECT_TRUE(d.port.sent.empty());
  }
}

/// The bits of a row of lights that are on.
template <class Lights>
int BitsOn(const Lights& lights) {
  int bits = 0;
  for (std::size_t i = 0; i < lights.size(); ++i) {
    if (lights[i] == Led::Green || lights[i] == Led::Red) bits |= 1 << i;
  }
  return bits;
}

/// Every axis has a drive that reports all it has.
void PlugIn(FakeDesk& d, std::int16_t model) {
  d.source.program.Axis.DriveModel.fill(model);
  d.source.link.DriveRev.fill(2.0F);
}

TEST(DriveStatus, CarriesTheAxisTheInputsInTwoNibblesAndTheOutputs) {
  for (const RunWindow window : {RunWindow::ExecStatus, RunWindow::fakeMMI}) {
    for (int axis = 0; axis < 8; ++axis) {
      FakeDesk d;
      PlugIn(d, 20);
      d.run.active = window;
      Handle(d, 241 + axis, 0x5, 0xa, 0x6a);
      EXPECT_EQ(BitsOn(d.source.run.panel.INlo[axis]), 0x5a);
      EXPECT_EQ(BitsOn(d.source.run.panel.OUTlo[axis]), 0x5);
      EXPECT_EQ(BitsOn(d.source.run.panel.OUTY[axis]), 0x1);
      EXPECT_EQ(d.run.statuses, std::vector{axis});
    }
  }
}

TEST(ExtendedInputs, CarryTheAxisAndTheInputsInTwoNibbles) {
  for (int axis = 0; axis < 8; ++axis) {
    FakeDesk d;
    PlugIn(d, 20);
    d.run.active = RunWindow::ExecStatus;
    Handle(d, 213 + axis, 0x1, 0x7, 0x55);
    EXPECT_EQ(BitsOn(d.source.run.panel.INX[axis]), 0x0e);
    EXPECT_EQ(BitsOn(d.source.run.panel.INlo[axis]), 0);
    EXPECT_EQ(d.run.statuses, std::vector{axis});
  }
}

TEST(ExtendedOutputs, CarryTheAxisAndTheOutputs) {
  for (int axis = 0; axis < 8; ++axis) {
    FakeDesk d;
    PlugIn(d, 20);
    d.run.active = RunWindow::fakeMMI;
    Handle(d, 221 + axis, 0x3c, 1, 2);
    EXPECT_EQ(BitsOn(d.source.run.panel.OUTlo[axis]), 0x3);
    EXPECT_EQ(BitsOn(d.source.run.panel.OUTY[axis]), 0x4);
    EXPECT_EQ(d.run.statuses, std::vector{axis});
  }
}

TEST(DriveStatus, IsLostWithoutARunWindow) {
  FakeDesk d;
  for (int header = 213; header <= 248; ++header) {
    if (header >= 229 && header <= 240) continue;
    Handle(d, header, 1, 2, 3);
  }
  EXPECT_TRUE(d.run.statuses.empty());
  for (int axis = 0; axis < kAxes; ++axis) EXPECT_EQ(BitsOn(d.source.run.panel.INlo[axis]), 0);
  EXPECT_TRUE(d.boxes.shown.empty());
  EXPECT_TRUE(d.port.sent.empty());
}

TEST(ProgramCounter, IsShownBesideTheLineByAOneAndHiddenByAnythingElse) {
  FakeDesk d;
  Handle(d, 235, 1, 12, 7);
  Handle(d, 235, 0, 12, 7);
  Handle(d, 235, 1, 0, 0);
  Handle(d, 235, 2, 0, 0);
  EXPECT_EQ(d.view.counters, (std::vector<std::optional<int>>{199, std::nullopt, 0, std::nullopt}));
  EXPECT_TRUE(d.port.sent.empty());
}

TEST(ProgramCounter, OfALineThatThereIsNotIsIgnored) {
  FakeDesk d;
  Handle(d, 235, 1, 12, 8);
  Handle(d, 235, 1, 127, 127);
  EXPECT_TRUE(d.view.counters.empty()) << "it stays where it was";
  Handle(d, 235, 0, 127, 127);
  EXPECT_EQ(d.view.counters, std::vector<std::optional<int>>{std::nullopt});
}

TEST(OldFirmware, NamesDriveAndRevision) {
  struct Case {
    int drive;
    int revision;
    const char* text;
  };
  for (const Case& c :
       {Case{0, 38, "drive 1 (rev 1.38)"}, Case{7, 50, "drive 8 (rev 1.5)"}, Case{2, 0, "drive 3 (rev 1)"},
        Case{3, 127, "drive 4 (rev 2.27)"}, Case{3, 5, "drive 4 (rev 1.05)"}}) {
    FakeDesk d;
    d.run.active = RunWindow::ExecStatus;
    Handle(d, 250, c.drive, c.revision);
    EXPECT_EQ(d.boxes.shown, std::vector<ShownBox>{Plain(
                                 std::string("The firmware in ") + c.text +
                                     " is too old to run this program.  Please change drives or call about a "
                                     "firmware upgrade.)",
                                 "Old firmware")});
    EXPECT_EQ(d.run.active, RunWindow::ExecStatus) << "only a message";
  }
}

TEST(WrongDrive, NamesTheModelsAsTheyStand) {
  FakeDesk d;
  d.run.active = RunWindow::ExecStatus;
  Handle(d, 249, 2, 1, 3);
  Handle(d, 249, 0, 0, 50);
  Handle(d, 249, 7, 51, 127);
  EXPECT_EQ(
      d.boxes.shown,
      (std::vector<ShownBox>{
          Plain("Drive 3 is supposed to be a Oskel-B, but is really a Oskel-A", "Wrong drive"),
          Plain("Drive 1 is supposed to be a Vorn-x, but is really a none", "Wrong drive"),
          Plain("Drive 8 is supposed to be a unknown type, but is really a unknown type", "Wrong drive")}));
  EXPECT_EQ(d.run.active, RunWindow::ExecStatus) << "only a message";
}

TEST(DriveLost, IsOnlyAMessage) {
  FakeDesk d;
  d.run.active = RunWindow::ExecStatus;
  Handle(d, 240, 4, 9, 9);
  EXPECT_EQ(d.boxes.shown, std::vector<ShownBox>{Plain("Drive 5 is not responding.", "Drive not found")});
  EXPECT_EQ(d.run.active, RunWindow::ExecStatus);
  EXPECT_TRUE(d.port.sent.empty());
}

TEST(Greeting, OfAKnownHubIsAnsweredAndShown) {
  struct Case {
    int model;
    HubModel index;
  };
  for (const Case& c : {Case{8, HubOcto}, Case{24, HubQuad}}) {
    FakeDesk d;
    d.port.threshold = 3;
    d.source.program.HubIndex = c.index == HubOcto ? HubQuad : HubOcto;
    d.source.display.MMIActive = true;
    Handle(d, 255, 52, c.model);
    EXPECT_EQ(d.port.RThreshold(), 1);
    EXPECT_EQ(d.source.program.HubVersion, 1.52F);
    EXPECT_EQ(d.port.sent, std::vector<std::string>{"*0"});
    EXPECT_EQ(d.source.link.DriveVersion, "1.52");
    EXPECT_EQ(d.beeper.beeps, 1);
    EXPECT_EQ(d.source.program.HubIndex, c.index);
    EXPECT_GT(d.view.hub, 0);
    EXPECT_GT(d.view.drives, 0);
    EXPECT_FALSE(d.source.display.MMIActive);
    EXPECT_TRUE(d.boxes.shown.empty());
  }
}

TEST(Greeting, OfAnUnknownDeviceIsToldAndChangesNoModel) {
  for (const int model : {16, 0, 9, 127}) {
    FakeDesk d;
    d.port.threshold = 3;
    d.source.program.HubIndex = HubQuad;
    d.source.display.MMIActive = true;
    d.run.active = RunWindow::ExecStatus;
    Handle(d, 255, 52, model);
    EXPECT_EQ(d.boxes.shown,
              std::vector<ShownBox>{Plain("Unknown device detected on comm port.", "Unknown device")});
    EXPECT_EQ(d.run.active, RunWindow::None) << "it still hides the run window";
    EXPECT_EQ(d.source.program.HubIndex, HubQuad);
    EXPECT_EQ(d.source.link.DriveVersion, "?");
    EXPECT_EQ(d.source.program.HubVersion, 1.52F);
    EXPECT_TRUE(d.port.sent.empty());
    EXPECT_EQ(d.beeper.beeps, 0);
    EXPECT_EQ(d.port.RThreshold(), 1);
    EXPECT_FALSE(d.source.display.MMIActive);
  }
}

TEST(Greeting, ClosesEitherRunWindow) {
  for (const RunWindow window : {RunWindow::ExecStatus, RunWindow::fakeMMI}) {
    FakeDesk d;
    d.run.active = window;
    Handle(d, 255, 38, 8);
    EXPECT_EQ(d.run.hides, 1);
    EXPECT_EQ(d.run.active, RunWindow::None);
  }
}

bool HasMeaning(int header) {
  return header >= 211 && !(header >= 229 && header <= 234);
}

TEST(HandleMsg, HeadersWithoutAMeaningChangeNothing) {
  for (int header = 128; header <= 255; ++header) {
    if (HasMeaning(header)) continue;
    FakeDesk d;
    d.run.active = RunWindow::fakeMMI;
    d.source.display.MMIActive = true;
    d.port.threshold = 3;
    Handle(d, header, 1, 1, 1);
    EXPECT_TRUE(d.boxes.shown.empty()) << header;
    EXPECT_TRUE(d.port.sent.empty()) << header;
    EXPECT_TRUE(d.port.thresholds.empty()) << header;
    EXPECT_TRUE(d.view.rows.empty() && d.view.scrolls.empty() && d.view.counters.empty()) << header;
    EXPECT_EQ(d.view.all_rows, 0) << header;
    EXPECT_EQ(d.run.hides, 0) << header;
    EXPECT_TRUE(d.run.statuses.empty()) << header;
    EXPECT_TRUE(d.run.faults.empty()) << header;
    EXPECT_TRUE(d.source.display.MMIActive) << header;
  }
}

TEST(HandleMsg, AnyPayloadOfAnyHeaderIsSafe) {
  std::mt19937 random(20260102);  // NOLINT: the same payloads each time
  for (int header = 128; header <= 255; ++header) {
    for (int round = 0; round < 60; ++round) {
      FakeDesk d;
      d.run.active = round % 3 == 0   ? RunWindow::None
                     : round % 3 == 1 ? RunWindow::ExecStatus
                                      : RunWindow::fakeMMI;
      d.boxes.setNextAnswer(Answer::No);
      const int b2 = round == 0 ? 127 : static_cast<int>(random() % 128);
      const int b3 = round == 0 ? 127 : static_cast<int>(random() % 128);
      const int b4 = round == 0 ? 127 : static_cast<int>(random() % 128);
      const auto before = d.source.program.Prog;
      Handle(d, header, b2, b3, b4);
      EXPECT_EQ(d.source.program.Prog, before);
      for (const int axis : d.run.statuses) {
        EXPECT_LT(axis, 8);
        EXPECT_GE(axis, 0);
      }
      for (const int line : d.view.rows) {
        EXPECT_GE(line, 0);
        EXPECT_LT(line, 200);
      }
    }
  }
}

}  // namespace
}  // namespace tavlo::testing
