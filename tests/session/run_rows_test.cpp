// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "session/run_rows.h"

#include <gtest/gtest.h>

#include <random>

#include "support/fake_desk.h"

namespace tavlo::testing {
namespace {

struct OneEvent : FakeDesk {
  explicit OneEvent(RunEvent event, std::int16_t hub = HubOcto) {
    source.program.HubIndex = hub;
    source.shown.rows[11].desc = "Feed 3";
    log.Begin(source);
    clock.now += 61.5;
    log.Add(std::move(event));
  }
  RunLog log{clock};
};

TEST(RunRows, EachKindOfEventHasItsRow) {
  using K = RunEventKind;
  struct Case {
    RunEvent event;
    std::string row;
  };
  const std::vector<Case> cases = {
      {{.kind = K::LineStarted, .line = 11}, "line started,12,,Feed 3,"},
      {{.kind = K::LineGoesOn, .line = 11}, "line goes on,12,,Feed 3,"},
      {{.kind = K::LineFinished, .line = 2158}, "line finished,2159,,,"},
      {{.kind = K::ProgramCounter, .line = 0, .text = "shown"}, "program counter,1,,,shown"},
      {{.kind = K::ProgramCounter, .text = "hidden"}, "program counter,,,,hidden"},
      {{.kind = K::StepDone}, "step done,,,,"},
      {{.kind = K::State, .axis = 7, .text = "nothing"}, "state,,8,,nothing"},
      {{.kind = K::Input, .axis = 0, .row = LedRow::INX, .bit = 6, .led = Led::Red},
       "input,,1,X7 (limit),on"},
      {{.kind = K::Input, .axis = 0, .row = LedRow::INlo, .bit = 0, .led = Led::Unknown},
       "input,,1,1,unknown"},
      {{.kind = K::Output, .axis = 2, .row = LedRow::OUTY, .bit = 1, .led = Led::GreenOff},
       "output,,3,Y2,off"},
      {{.kind = K::Display, .text = "How many?"}, "display,,,,How many?"},
      {{.kind = K::Key, .text = "enter"}, "key,,,enter,"},
      {{.kind = K::Control, .text = "pause"}, "control,,,pause,"},
      {{.kind = K::LimitHit, .axis = 3}, "limit,,4,,"},
      {{.kind = K::StopButton}, "stop button,,,,"},
      {{.kind = K::StackOverflow, .line = 11}, "stack overflow,12,,,"},
      {{.kind = K::StackUnderflow, .line = 0}, "stack underflow,1,,,"},
      {{.kind = K::DriveDisabled, .axis = 1}, "drive disabled,,2,,"},
      {{.kind = K::DriveFault, .axis = 1, .code = 32, .text = "over voltage"},
       "drive fault,,2,over voltage,32"},
      {{.kind = K::DriveLost, .axis = 1}, "drive lost,,2,,"},
      {{.kind = K::WrongDrive, .axis = 1, .text = "is a"}, "wrong drive,,2,is a,"},
      {{.kind = K::OldFirmware, .axis = 1, .text = "1.05"}, "old firmware,,2,,1.05"},
      {{.kind = K::HubSwitchedOn, .text = "Hub Quad"}, "hub switched on,,,,Hub Quad"},
      {{.kind = K::OtherMessage, .text = "e5010203"}, "other message,,,,e5010203"},
      {{.kind = K::End, .text = "stopped"}, "end,,,stopped,"},
  };
  for (const Case& c : cases) {
    const OneEvent d(c.event);
    EXPECT_EQ(CsvOf(RowOf(d.log, 0)), "61.500," + c.row + "\r\n");
  }
}

TEST(RunRows, TheOwnInputsOfAHubQuadAreTheHubs) {
  const RunEvent event{.kind = RunEventKind::Input, .axis = kHubQuadIO, .bit = 0, .led = Led::Green};
  EXPECT_EQ(RowOf(OneEvent(event, HubQuad).log, 0)[RunColumn::Axis], "Hub");
  EXPECT_EQ(RowOf(OneEvent(event, HubOcto).log, 0)[RunColumn::Axis], "5");
}

TEST(RunRows, FieldsAreQuotedWhereTheyMustBeAndNoTextBecomesAFormula) {
  struct Case {
    std::string_view text;
    std::string_view field;
  };
  for (const auto& [text, field] : std::vector<Case>{{"plain", "plain"},
                                                     {"a,b", "\"a,b\""},
                                                     {"say \"go\"", "\"say \"\"go\"\"\""},
                                                     {"two\nlines", "\"two\nlines\""},
                                                     {"two\r\nlines", "\"two\r\nlines\""},
                                                     {"=1+1", "'=1+1"},
                                                     {"+5", "'+5"},
                                                     {"-5", "'-5"},
                                                     {"@SUM(A1)", "'@SUM(A1)"},
                                                     {"\tx", "'\tx"},
                                                     {"'quoted'", "''quoted'"},
                                                     {"=\"x\"", "\"'=\"\"x\"\"\""},
                                                     {"a=b", "a=b"},
                                                     {"", ""}}) {
    const RunRow row{{"1.000", "display", "", "", "", std::string(text)}};
    EXPECT_EQ(CsvOf(row), "1.000,display,,,," + std::string(field) + "\r\n");
  }
}

TEST(RunRows, TheWholeLogNamesItsColumnsAndBeginsWithTheBegin) {
  FakeDesk d;
  d.source.file_name = "parts, big.TVH";
  RunLog log(d.clock);
  log.wall = [] { return std::time_t{1795351904}; };
  log.Begin(d.source);
  log.Add({.kind = RunEventKind::Key, .text = "yes"});
  log.Close();
  const std::string csv = CsvOf(log);
  EXPECT_TRUE(
      csv.starts_with("time_s,event,line,axis,what,value\r\n0.000,begin,,,\"parts, big.TVH\",2026-11-2"))
      << csv;
  EXPECT_TRUE(csv.ends_with("\r\n0.000,key,,,yes,\r\n0.000,end,,,window closed,\r\n")) << csv;
}

TEST(RunRows, WhatIsWrittenIsReadBackWhateverTheTextsAre) {
  std::mt19937 random(1);
  constexpr std::string_view kLetters = "ab,\"'=+-@\t\r\n ";
  FakeDesk d;
  RunLog log(d.clock);
  log.Begin(d.source);
  for (int i = 0; i < 2000; ++i) {
    RunEvent event{.kind = i % 2 == 0 ? RunEventKind::Display : RunEventKind::Key};
    const auto size = random() % 6;
    for (unsigned j = 0; j < size; ++j) event.text += kLetters[random() % kLetters.size()];
    log.Add(std::move(event));
  }
  std::vector<RunRow> rows = HeadOf(log);
  for (auto number = log.First(); number < log.Last(); ++number) rows.push_back(RowOf(log, number));
  EXPECT_TRUE(ReadRunRows(CsvOf(log)) == rows);
}

TEST(RunRows, ATornLastLineIsLeftOut) {
  FakeDesk d;
  RunLog log(d.clock);
  log.Begin(d.source);
  log.Add({.kind = RunEventKind::Display, .text = "a \"text\", torn"});
  const std::string csv = CsvOf(log);
  for (std::size_t size = 0; size < csv.size(); ++size) {
    const auto rows = ReadRunRows(csv.substr(0, size));
    const bool has_header = size >= std::string_view("time_s,event,line,axis,what,value\r\n").size();
    ASSERT_EQ(rows.has_value(), has_header) << size;
    if (rows) {
      EXPECT_LT(rows->size(), 2u) << size;
    }
  }
  EXPECT_EQ(ReadRunRows(csv)->size(), 2u);
}

TEST(RunRows, AnyBytesAreReadWithoutHarm) {
  std::mt19937 random(7);
  const std::string header = "time_s,event,line,axis,what,value\r\n";
  for (int i = 0; i < 3000; ++i) {
    std::string bytes = i % 3 == 0 ? "" : header;
    const auto size = random() % 200;
    for (unsigned j = 0; j < size; ++j)
      bytes += random() % 4 == 0 ? ",\"\r\n"[random() % 4] : static_cast<char>(random());
    const auto rows = ReadRunRows(bytes);
    EXPECT_EQ(rows.has_value(), bytes.starts_with(header));
  }
  EXPECT_EQ(ReadRunRows(header + "1,2,3,4,5,6,7,8\n\n"),
            (std::vector<RunRow>{{{"1", "2", "3", "4", "5", "678"}}, {}}));
  EXPECT_EQ(ReadRunRows("something else"), std::nullopt);
}

}  // namespace
}  // namespace tavlo::testing
