// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "session/run_log.h"

#include <gtest/gtest.h>

#include "session/run_rows.h"
#include "support/fake_desk.h"

namespace tavlo::testing {
namespace {

/// A session whose run has begun.
struct LoggedRun : FakeDesk {
  LoggedRun() {
    log.wall = [] { return std::time_t{0}; };
    log.Begin(source);
  }

  void Write(std::string_view text) {
    for (const char c : text) {
      log.TextComes();
      source.display.textline[0] += c;
      clock.now += 1.0 / 1920;
    }
  }
  [[nodiscard]] std::vector<std::string> Texts() const {
    std::vector<std::string> texts;
    for (auto number = log.First(); number < log.Last(); ++number) texts.push_back(log.At(number).text);
    return texts;
  }

  RunLog log{clock};
};

using Strings = std::vector<std::string>;

TEST(RunLog, HoldsNothingUnlessARunIsOpen) {
  FakeDesk d;
  RunLog log(d.clock);
  log.Add({.kind = RunEventKind::StepDone});
  log.TextComes();
  log.ShowLights(0, kLedRows);
  log.End("stopped");
  log.Close();
  EXPECT_EQ(log.Last(), 0u);
  EXPECT_EQ(log.Run(), 0);
  log.Begin(d.source);
  log.Close();
  const auto last = log.Last();
  log.Add({.kind = RunEventKind::StepDone});
  log.End("halted");
  EXPECT_EQ(log.Last(), last);
  EXPECT_EQ(log.Run(), 1);
}

TEST(RunLog, TimesCountFromTheBeginAndRiseOverMidnight) {
  FakeDesk d;
  d.clock.now = 86399.25;
  RunLog log(d.clock);
  log.Begin(d.source);
  for (const double step : {0.5, 0.5, 0.5, 3600.0, 11.9 * 3600, 11.9 * 3600, 11.9 * 3600}) {
    d.clock.now += step;
    log.Add({.kind = RunEventKind::StepDone});
  }
  std::vector<std::int64_t> times;
  for (auto number = log.First(); number < log.Last(); ++number) times.push_back(log.At(number).ms);
  EXPECT_EQ(times, (std::vector<std::int64_t>{500, 1000, 1500, 3601500, 46441500, 89281500, 132121500}));
}

TEST(RunLog, AClockThatIsSetBackNeverMakesATimeFall) {
  LoggedRun d;
  d.clock.now = 900;
  d.log.Add({.kind = RunEventKind::StepDone});
  d.clock.now = 901;
  d.log.Add({.kind = RunEventKind::StepDone});
  EXPECT_EQ(d.log.At(0).ms, 0);
  EXPECT_EQ(d.log.At(1).ms, 1000);
}

TEST(RunLog, ATextOfTheDisplayIsOneEventHoweverManyLettersItHas) {
  LoggedRun d;
  d.Write("How many?");
  EXPECT_EQ(d.log.Last(), 0u) << "it goes on";
  d.log.Settle();
  EXPECT_EQ(d.log.Last(), 0u) << "more may come";
  const double last_letter = d.clock.now - 1.0 / 1920;
  d.clock.now += 0.06;
  d.log.Settle();
  ASSERT_EQ(d.Texts(), Strings{"How many?"});
  EXPECT_EQ(d.log.At(0).ms, std::llround((last_letter - 1000) * 1000));
  d.log.Settle();
  EXPECT_EQ(d.log.Last(), 1u);
}

TEST(RunLog, ATextEndsAtTheNextEventAndAtTheNextTextAfterARest) {
  LoggedRun d;
  d.Write("one");
  d.log.Add({.kind = RunEventKind::Key, .text = "enter"});
  d.Write(" two");
  d.clock.now += 1;
  d.Write(" three");
  d.log.Close();
  EXPECT_EQ(d.Texts(), (Strings{"one", "enter", "one two", "one two three", "window closed"}));
}

TEST(RunLog, RowsOfTheDisplayAreJoinedAndEmptyOnesAtTheEndLeftOut) {
  LoggedRun d;
  d.source.display.textline = {"Length:   ", "", "12", "    "};
  d.log.TextComes();
  d.log.Close();
  EXPECT_EQ(d.log.At(0).text, "Length: /  / 12");
}

TEST(RunLog, TheFirstReasonOfTheEndCountsAndWhatComesBehindItIsStillAdded) {
  LoggedRun d;
  d.log.End("halted");
  d.log.Add({.kind = RunEventKind::DriveFault, .axis = 2, .code = 32});
  d.log.End("stopped");
  d.log.Close();
  EXPECT_EQ(d.Texts(), (Strings{"halted", ""}));
  EXPECT_EQ(d.log.At(1).kind, RunEventKind::DriveFault);
}

TEST(RunLog, ARunTakesThePlaceOfTheLastOne) {
  LoggedRun d;
  d.log.Add({.kind = RunEventKind::StepDone});
  int begins = 0;
  d.log.OnBegin = [&begins] { ++begins; };
  d.clock.now += 10;
  d.log.Begin(d.source);
  EXPECT_EQ(d.log.Last(), 0u);
  EXPECT_EQ(d.log.Run(), 2);
  EXPECT_EQ(begins, 1);
  d.log.Add({.kind = RunEventKind::StepDone});
  EXPECT_EQ(d.log.At(0).ms, 0);
}

TEST(RunLog, TheOldestEventsGoAndAreCounted) {
  LoggedRun d;
  for (std::size_t i = 0; i < RunLog::kMostEvents + 123; ++i) {
    d.clock.now += 0.002;
    d.log.Add({.kind = RunEventKind::LineStarted, .line = static_cast<std::int16_t>(i % 200)});
  }
  EXPECT_EQ(d.log.First(), 123u);
  EXPECT_EQ(d.log.Last() - d.log.First(), RunLog::kMostEvents);
  EXPECT_EQ(d.log.At(d.log.First()).line, 123);
  EXPECT_EQ(d.log.LostUntil(), 246);
  EXPECT_EQ(d.log.At(d.log.Last() - 1).ms, static_cast<std::int64_t>(2 * (RunLog::kMostEvents + 123)));
  const auto head = HeadOf(d.log);
  ASSERT_EQ(head.size(), 2u);
  EXPECT_EQ(head[1].cells, (RunRow{{"0.246", "missing", "", "", "earlier events", "123"}}.cells));
}

TEST(RunLog, ItsTextsAreBoundedTooAndALongOneSaysWhatWasCut) {
  LoggedRun d;
  d.log.Add({.kind = RunEventKind::Display, .text = std::string(1000, 'x')});
  EXPECT_EQ(d.log.At(0).text, std::string(400, 'x') + " (and 600 more)");
  const std::size_t many = 2 * RunLog::kMostText / 400;
  for (std::size_t i = 0; i < many; ++i) {
    d.log.Add({.kind = RunEventKind::Display, .text = std::string(400, 'y')});
  }
  std::size_t bytes = 0;
  for (auto number = d.log.First(); number < d.log.Last(); ++number) bytes += d.log.At(number).text.size();
  EXPECT_LE(bytes, RunLog::kMostText);
  EXPECT_GT(bytes, RunLog::kMostText - 500);
  EXPECT_EQ(d.log.Last(), many + 1);
}

TEST(RunLog, TheFirstStatusOfAnAxisIsItsStateAndLaterOnesAreChanges) {
  LoggedRun d;
  d.source.program.Axis.DriveModel[1] = 11;
  RunPanel& panel = d.source.run.panel;
  MakeLimitsRed(panel, d.source.program);
  constexpr std::array kMain = {LedRow::INlo, LedRow::OUTlo};
  panel.INlo[1][2] = Led::Green;
  panel.INlo[1][6] = Led::Red;
  panel.OUTlo[1][0] = Led::Green;
  d.log.ShowLights(1, kMain);
  d.log.ShowLights(1, kMain);
  panel.INlo[1][6] = Led::RedOff;
  panel.OUTlo[1][3] = Led::Green;
  panel.INX[1][4] = Led::Unknown;
  d.log.ShowLights(1, kMain);
  d.log.ShowLights(1, std::array{LedRow::INX});
  panel.INX[1][4] = Led::Green;
  d.log.ShowLights(1, std::array{LedRow::INX});
  panel.INX[1][5] = Led::RedOff;
  d.log.ShowLights(1, std::array{LedRow::INX});
  Strings rows;
  for (auto number = d.log.First(); number < d.log.Last(); ++number)
    rows.push_back(CsvOf(RowOf(d.log, number)));
  EXPECT_EQ(rows, (Strings{"0.000,state,,2,,input 3; input 7; output 1\r\n",
                           "0.000,input,,2,7 (limit),off\r\n", "0.000,output,,2,4,on\r\n",
                           "0.000,state,,2,,nothing (unknown: input X5)\r\n", "0.000,input,,2,X5,on\r\n"}));
}

TEST(RunLog, LightsThatTheRunWindowDoesNotShowAreNotInIt) {
  LoggedRun d;
  d.source.program.Axis.DriveModel.fill(0);
  d.source.run.panel.INlo[0][0] = Led::Green;
  d.log.ShowLights(0, kLedRows);
  EXPECT_EQ(d.log.Last(), 0u);
}

TEST(RunLog, LinesHaveTheTextsThatTheyHadAtTheBegin) {
  FakeDesk d;
  d.source.shown.rows[3].desc = "Feed && cut \xB5\x07";
  RunLog log(d.clock);
  log.Begin(d.source);
  d.source.shown.rows[3].desc = "other";
  EXPECT_EQ(log.LineText(3), "Feed & cut \xC2\xB5\\x07");
  EXPECT_EQ(log.LineText(4), "");
  EXPECT_EQ(log.LineText(200), "");
  EXPECT_EQ(log.LineText(-1), "");
  EXPECT_EQ(log.ProgramName(), "untitled");
  log.program_known = false;
  log.Begin(d.source);
  EXPECT_EQ(log.LineText(3), "");
  EXPECT_EQ(log.ProgramName(), "");
}

}  // namespace
}  // namespace tavlo::testing
