// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "session/run_keep.h"

#include <gtest/gtest.h>

#include "support/fake_desk.h"
#include "support/fake_state_folder.h"

namespace tavlo::testing {
namespace {

/// 2026-11-22 12:51:44 UTC.
constexpr std::time_t kMorning = 1795351904;

struct KeptRuns : FakeDesk {
  KeptRuns() {
    log.wall = [this] { return wall; };
  }
  void Step(int times = 1) {
    for (int i = 0; i < times; ++i) log.Add({.kind = RunEventKind::StepDone});
  }
  void WholeRun() {
    log.Begin(source);
    Step();
    log.Close();
    EXPECT_TRUE(keep.Keep(log));
    ++wall;
  }
  [[nodiscard]] std::string& File() { return disk.files[keep.Name()]; }

  std::time_t wall = kMorning;
  FakeStateDisk disk;
  FakeStateFolder folder{disk};
  RunLog log{clock};
  RunKeep keep{folder};
};

TEST(RunKeep, BeforeTheFirstRunThereIsNothingToKeep) {
  KeptRuns d;
  EXPECT_TRUE(d.keep.Keep(d.log));
  EXPECT_TRUE(d.disk.files.empty());
  EXPECT_EQ(d.keep.Name(), "");
}

TEST(RunKeep, ARunIsAddedToWhileItRunsAndReplacedWholeAtItsEnd) {
  KeptRuns d;
  d.log.Begin(d.source);
  ASSERT_TRUE(d.keep.Keep(d.log));
  EXPECT_EQ(d.keep.Name(), "run-20261122-125144-01.csv");
  EXPECT_EQ(d.File(), CsvOf(d.log));
  EXPECT_EQ(d.disk.writes, 1);
  for (int i = 0; i < 5; ++i) {
    d.Step(3);
    ASSERT_TRUE(d.keep.Keep(d.log));
    EXPECT_EQ(d.File(), CsvOf(d.log)) << "a crash now would lose nothing";
  }
  ASSERT_TRUE(d.keep.Keep(d.log));
  EXPECT_EQ(d.disk.writes, 1) << "nothing waits for the disk meanwhile";
  EXPECT_EQ(d.disk.appends, 5) << "nothing new, nothing written";
  d.log.Close();
  for (int i = 0; i < 3; ++i) ASSERT_TRUE(d.keep.Keep(d.log));
  EXPECT_EQ(d.disk.writes, 2);
  EXPECT_EQ(d.File(), CsvOf(d.log));
  EXPECT_TRUE(d.File().ends_with(",end,,,window closed,\r\n"));
}

TEST(RunKeep, TheTenLastRunsStay) {
  KeptRuns d;
  for (int i = 0; i < 25; ++i) d.WholeRun();
  const std::vector<std::string> names = d.keep.Names();
  ASSERT_EQ(names.size(), RunKeep::kRuns);
  EXPECT_EQ(names.front(), "run-20261122-125208-01.csv");
  EXPECT_EQ(names.back(), "run-20261122-125159-01.csv");
}

TEST(RunKeep, AFileThatIsNotOursIsNeverTouched) {
  KeptRuns d;
  const std::vector<std::string> foreign = {"notes.txt",
                                            "run-20200101-000000-01.csv.bak",
                                            "run-2020010-000000-01.csv",
                                            "run-20200101-000000-1.csv",
                                            "run-abcdefgh-000000-01.csv",
                                            "Run-20200101-000000-01.csv"};
  for (const std::string& name : foreign) d.disk.files[name] = "theirs";
  for (int i = 0; i < 15; ++i) d.WholeRun();
  for (const std::string& name : foreign) EXPECT_EQ(d.disk.files[name], "theirs") << name;
  EXPECT_EQ(d.keep.Names().size(), RunKeep::kRuns);
}

TEST(RunKeep, RunsOfOneSecondAndOfTwoComposersKeepApart) {
  KeptRuns d;
  RunLog other_log(d.clock);
  other_log.wall = d.log.wall;
  RunKeep other(d.folder);
  d.disk.claimed = {"run-20261122-125144-01.csv"};
  d.log.Begin(d.source);
  ASSERT_TRUE(d.keep.Keep(d.log));
  EXPECT_EQ(d.keep.Name(), "run-20261122-125144-02.csv") << "the first is about to be made by another";
  other_log.Begin(d.source);
  ASSERT_TRUE(other.Keep(other_log));
  EXPECT_EQ(other.Name(), "run-20261122-125144-03.csv") << "the second is there";
}

TEST(RunKeep, TheRunOfAnotherComposerThatIsUpStays) {
  KeptRuns d;
  const std::string theirs = "run-20261122-000000-01.csv";
  d.disk.files[theirs] = "going on";
  d.disk.claimed = {theirs};
  for (int i = 0; i < 15; ++i) d.WholeRun();
  EXPECT_EQ(d.disk.files[theirs], "going on");
  EXPECT_EQ(d.keep.Names().size(), RunKeep::kRuns + 1);
  d.disk.claimed.clear();
  d.WholeRun();
  EXPECT_FALSE(d.disk.files.contains(theirs));
  EXPECT_EQ(d.keep.Names().size(), RunKeep::kRuns);
}

TEST(RunKeep, AFileThatSomebodyRemovedIsMadeAnewWhole) {
  KeptRuns d;
  d.log.Begin(d.source);
  ASSERT_TRUE(d.keep.Keep(d.log));
  d.Step();
  d.disk.files.clear();
  ASSERT_TRUE(d.keep.Keep(d.log));
  EXPECT_EQ(d.File(), CsvOf(d.log));
}

TEST(RunKeep, WhatCannotBeWrittenIsToldAndWrittenAsSoonAsItCan) {
  KeptRuns d;
  d.disk.broken = "No space left on device";
  d.log.Begin(d.source);
  EXPECT_EQ(d.keep.Keep(d.log).Why(), "No space left on device");
  d.Step();
  EXPECT_EQ(d.keep.Keep(d.log).Why(), "No space left on device");
  d.log.Close();
  EXPECT_EQ(d.keep.Keep(d.log).Why(), "No space left on device");
  d.disk.broken.clear();
  EXPECT_TRUE(d.keep.Keep(d.log));
  EXPECT_EQ(d.File(), CsvOf(d.log));
}

TEST(RunKeep, AFileIsBoundedHoweverLongTheRunIs) {
  KeptRuns d;
  d.log.Begin(d.source);
  std::size_t largest = 0;
  for (int i = 0; i < 400; ++i) {
    d.Step(1000);
    ASSERT_TRUE(d.keep.Keep(d.log));
    largest = std::max(largest, d.File().size());
  }
  EXPECT_LE(largest, RunKeep::kMostBytes + 100 * 1000);
  EXPECT_GT(largest, RunKeep::kMostBytes / 2);
  d.log.Close();
  ASSERT_TRUE(d.keep.Keep(d.log));
  EXPECT_EQ(d.File(), CsvOf(d.log));
  EXPECT_NE(d.File().find(",missing,,,earlier events,350001\r\n"), std::string::npos);
}

TEST(RunKeep, EventsThatWentBeforeTheyWereKeptAreCountedInTheFile) {
  KeptRuns d;
  d.log.Begin(d.source);
  ASSERT_TRUE(d.keep.Keep(d.log));
  d.Step(static_cast<int>(RunLog::kMostEvents) + 10);
  ASSERT_TRUE(d.keep.Keep(d.log));
  EXPECT_EQ(d.File(), CsvOf(d.log));
  EXPECT_NE(d.File().find(",missing,,,earlier events,10\r\n"), std::string::npos);
}

TEST(RunKeep, AKeptRunIsReadBackAndADamagedOneIsNot) {
  KeptRuns d;
  d.source.file_name = "parts.TVH";
  d.WholeRun();
  const std::string name = d.keep.Names().front();
  EXPECT_EQ(d.keep.BeginOf(name)->cells[4], "parts.TVH");
  const auto rows = d.keep.Read(name);
  ASSERT_TRUE(rows);
  EXPECT_EQ(rows->size(), 3u);
  EXPECT_EQ((*rows)[1][RunColumn::Event], "step done");
  d.disk.files[name] = std::string("\0\xFF other bytes", 14);
  EXPECT_EQ(d.keep.BeginOf(name), std::nullopt);
  EXPECT_EQ(d.keep.Read(name), std::nullopt);
  d.disk.files.clear();
  EXPECT_EQ(d.keep.BeginOf(name), std::nullopt);
  EXPECT_EQ(d.keep.Read(name), std::nullopt);
}

}  // namespace
}  // namespace tavlo::testing
