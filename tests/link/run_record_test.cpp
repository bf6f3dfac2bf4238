// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "link/run_record.h"

#include <gtest/gtest.h>

#include "link/com_port.h"
#include "link/receive.h"
#include "link/scripted_hub.h"
#include "session/run_log.h"
#include "session/run_rows.h"

namespace tavlo::testing {
namespace {

using Strings = std::vector<std::string>;

/// A desk with a log, and a run that has been started in a window.
struct RecordedRun : FakeDesk {
  explicit RecordedRun(RunWindow window = RunWindow::ExecStatus) {
    source.program.Axis.DriveModel.fill(0);
    source.program.Axis.DriveModel[1] = 11;
    desk.log = &log;
    run.active = window;
    StartRun(desk, window);
    port.sent.clear();
  }
  void Hear(int header, int b2 = 0, int b3 = 0, int b4 = 0) { HandleMsg(desk, Bytes({header, b2, b3, b4})); }
  void Write(const std::string& text) {
    port.Receive(text);
    NewOnComm(desk);
  }
  /// The rows without their times and the comma behind.
  [[nodiscard]] Strings Rows() const {
    Strings rows;
    for (auto number = log.First(); number < log.Last(); ++number) {
      const std::string row = CsvOf(RowOf(log, number));
      const std::size_t time = row.find(',') + 1;
      rows.push_back(row.substr(time, row.size() - time - 2));
    }
    return rows;
  }

  RunLog log{clock};
};

TEST(RunRecord, EachMessageOfTheHubIsOneRow) {
  struct Case {
    Strings rows;
    int header;
    int b2 = 0;
    int b3 = 0;
    int b4 = 0;
  };
  const std::vector<Case> cases = {
      {{"line started,19,,,"}, 254, 1, 2},
      {{"line started,200,,,"}, 254, 12, 7},
      {{"line started,2160,,,"}, 254, 127, 127},
      {{"line goes on,3,,,"}, 236, 0, 2},
      {{"line finished,3,,,"}, 237, 0, 2},
      {{"program counter,19,,,shown"}, 235, 1, 1, 2},
      {{"program counter,,,,hidden"}, 235, 0, 1, 2},
      {{"step done,,,,"}, 253},
      {{"limit,,2,,", "end,,,halted,", "control,,,reset hub,"}, 252, 1},
      {{"stop button,,,,", "end,,,halted,", "control,,,reset hub,"}, 251},
      {{"stack overflow,128,,,", "end,,,halted,", "control,,,reset hub,"}, 239, 127},
      {{"stack underflow,1,,,", "end,,,halted,", "control,,,reset hub,"}, 238, 0},
      {{"drive disabled,,3,,", "end,,,halted,"}, 212, 2},
      {{"drive fault,,2,over voltage; bad encoder,544", "end,,,halted,"}, 211, 1, 4, 32},
      {{"drive lost,,8,,"}, 240, 7},
      {{"old firmware,,2,,1.27"}, 250, 1, 27},
      {{"hub switched on,,,,\"Tavlo Hub-Octo, firmware 1.38\"", "end,,,hub switched on,"}, 255, 38, 8, 0},
      {{"hub switched on,,,,\"unknown model, firmware 1.00\"", "end,,,hub switched on,"}, 255, 0, 16, 0},
      {{"other message,,,,80010203"}, 128, 1, 2, 3},
      {{"other message,,,,e6000000"}, 230},
      {{"other message,,,,fc080000"}, 252, 8},
      {{"other message,,,,d37f0000"}, 211, 127},
  };
  for (const Case& c : cases) {
    RecordedRun d;
    d.port.on_output = [&d](const std::string& bytes) {
      if (bytes == "R") d.port.Reply("Y");
    };
    d.Hear(c.header, c.b2, c.b3, c.b4);
    EXPECT_EQ(d.Rows(), c.rows) << c.header;
  }
}

TEST(RunRecord, AWrongDriveIsNamedWithTheOneThatWasExpected) {
  RecordedRun d;
  d.Hear(249, 1, 11, 20);
  EXPECT_EQ(d.log.At(0).axis, 1);
  EXPECT_EQ(d.log.At(0).text,
            "is a " + std::string(ModelName(11)) + ", should be a " + std::string(ModelName(20)));
}

TEST(RunRecord, ALogChangesNoByteNoBoxAndNoView) {
  for (int header = 128; header < 256; ++header) {
    RecordedRun logged;
    RecordedRun plain;
    plain.desk.log = nullptr;
    for (RecordedRun* d : {&logged, &plain}) {
      d->boxes.setNextAnswer(Answer::No);
      for (const int b2 : {1, 9}) d->Hear(header, b2, 3, 4);
      d->Write("text");
      ClickPause(d->desk);
      ClickSingleStep(d->desk);
      ClickPlay(d->desk);
      ClickReset(d->desk);
      PressKey(d->desk, MmiKey::Digit5);
      StopRun(d->desk, RunWindow::ExecStatus);
    }
    EXPECT_EQ(logged.port.sent, plain.port.sent) << header;
    EXPECT_EQ(logged.boxes.shown, plain.boxes.shown) << header;
    EXPECT_EQ(logged.view.rows, plain.view.rows) << header;
    EXPECT_EQ(logged.run.statuses, plain.run.statuses) << header;
    EXPECT_EQ(logged.run.control_changes, plain.run.control_changes) << header;
    EXPECT_EQ(logged.clock.now, plain.clock.now) << header;
    EXPECT_GT(logged.log.Last(), 0u);
    EXPECT_EQ(plain.log.Last(), 0u);
  }
}

TEST(RunRecord, AStatusIsRecordedAsWhatItChanges) {
  RecordedRun d;
  d.source.link.DriveRev[1] = 2;
  d.Hear(242, 15, 15, 127);
  d.Hear(242, 15, 15, 127);
  d.Hear(242, 14, 11, 126);
  d.Hear(214, 15, 15);
  d.Hear(214, 15, 13);
  d.Hear(222, 126 - 16);
  EXPECT_EQ(d.Rows(), (Strings{"state,,2,,nothing", "input,,2,1,on", "input,,2,7 (limit),on",
                               "output,,2,1,on", "state,,2,,nothing", "input,,2,X6,on", "output,,2,Y1,on"}));
}

TEST(RunRecord, ADriveWithoutMainInputsTellsOfItsXInputs) {
  RecordedRun d;
  d.source.program.Axis.DriveModel[1] = 10;
  d.Hear(242, 14, 15, 127);
  d.Hear(242, 15, 15, 125);
  EXPECT_EQ(d.Rows(), (Strings{"state,,2,,input X1", "input,,2,X1,off", "output,,2,Y2,on"}));
}

TEST(RunRecord, AStatusThatNoWindowShowsIsNotInIt) {
  RecordedRun d;
  d.run.active = RunWindow::None;
  d.Hear(242, 0, 0, 0);
  EXPECT_EQ(d.Rows(), Strings{});
}

TEST(RunRecord, WhatTheOperatorDoesIsRecordedWhenItGoesOut) {
  RecordedRun d;
  ClickPlay(d.desk);
  ClickSingleStep(d.desk);
  EXPECT_EQ(d.Rows(), Strings{}) << "it runs already";
  ClickPause(d.desk);
  ClickPause(d.desk);
  ClickSingleStep(d.desk);
  ClickSingleStep(d.desk);
  ClickPlay(d.desk);
  ClickReset(d.desk);
  PressKey(d.desk, MmiKey::enter);
  StopRun(d.desk, RunWindow::ExecStatus);
  EXPECT_EQ(d.Rows(), (Strings{"control,,,pause,", "control,,,single step,", "control,,,play,",
                               "control,,,reset,", "control,,,stop,", "end,,,stopped,"}));
  EXPECT_EQ(d.port.AllSent(), "PTr0S");
}

TEST(RunRecord, EveryKeyHasItsName) {
  RecordedRun d(RunWindow::fakeMMI);
  Strings names;
  for (int key = 0; key <= static_cast<int>(MmiKey::arrowright); ++key)
    PressKey(d.desk, static_cast<MmiKey>(key));
  for (const std::string& row : d.Rows()) names.push_back(row.substr(std::string("key,,,").size()));
  EXPECT_EQ(names,
            (Strings{"0,", "1,", "2,", "3,", "4,", "5,", "6,", "7,", "8,", "9,", "dot,", "yes,", "no,",
                     "enter,", "backspace,", "arrow up,", "arrow down,", "arrow left,", "arrow right,"}));
  EXPECT_EQ(d.port.AllSent().size(), names.size());
}

TEST(RunRecord, PromptsAreOneRowEachBetweenWhatSurroundsThem) {
  RecordedRun d(RunWindow::fakeMMI);
  d.Hear(254, 0, 1);
  d.Write("\x1B\x45How many?");
  PressKey(d.desk, MmiKey::Digit5);
  d.Write("\x1BY\x23 5");
  d.clock.now += 3;
  PressKey(d.desk, MmiKey::enter);
  d.Hear(237, 0, 1);
  EXPECT_EQ(d.Rows(), (Strings{"line started,2,,,", "display,,,,How many?", "key,,,5,",
                               "display,,,,How many? /  /  / 5", "key,,,enter,", "line finished,2,,,"}));
}

TEST(RunRecord, TextThatNoEmulatorShowsIsNotInIt) {
  RecordedRun d(RunWindow::ExecStatus);
  d.Write("text");
  d.Hear(253);
  EXPECT_EQ(d.Rows(), Strings{"step done,,,,"});
}

TEST(RunRecord, EachWayInWhichARunEndsIsToldOnce) {
  struct Case {
    std::string what;
    RunWindow window;
    std::function<void(RecordedRun&)> end;
    Strings rows;
  };
  const std::vector<Case> cases = {
      {"stop",
       RunWindow::fakeMMI,
       [](RecordedRun& d) { StopRun(d.desk, RunWindow::fakeMMI); },
       {"control,,,stop,", "end,,,stopped,"}},
      {"frame",
       RunWindow::ExecStatus,
       [](RecordedRun& d) { CloseRun(d.desk, RunWindow::ExecStatus); },
       {"control,,,stop,", "end,,,window closed and hub stopped,"}},
      {"frame",
       RunWindow::fakeMMI,
       [](RecordedRun& d) { CloseRun(d.desk, RunWindow::fakeMMI); },
       {"end,,,window closed and hub not stopped,"}},
      {"port", RunWindow::ExecStatus, [](RecordedRun& d) { TellPortLost(d.desk); }, {"end,,,port gone,"}},
      {"hidden", RunWindow::ExecStatus, [](RecordedRun& d) { d.log.Close(); }, {"end,,,window closed,"}},
  };
  for (const Case& c : cases) {
    RecordedRun d(c.window);
    c.end(d);
    d.log.Close();
    EXPECT_EQ(d.Rows(), c.rows) << c.what;
  }
}

TEST(RunRecord, ASecondFaultUnderTheFirstIsRecordedBehindTheEnd) {
  RecordedRun d;
  d.Hear(211, 1, 0, 32);
  d.Hear(211, 0, 0, 1);
  EXPECT_EQ(d.Rows(),
            (Strings{"drive fault,,2,over voltage,32", "end,,,halted,", "drive fault,,1,Position Limit,1"}));
}

TEST(RunRecord, AMessageInsideTheBoxOfAnotherStandsBehindIt) {
  RecordedRun d;
  d.boxes.on_box = [&d](const ShownBox&) {
    d.boxes.on_box = nullptr;
    d.clock.now += 2;
    d.Hear(237, 0, 4);
  };
  d.Hear(240, 3);
  EXPECT_EQ(d.Rows(), (Strings{"drive lost,,4,,", "line finished,5,,,"}));
  EXPECT_EQ(d.log.At(0).ms, 0);
  EXPECT_EQ(d.log.At(1).ms, 2000);
}

}  // namespace
}  // namespace tavlo::testing
