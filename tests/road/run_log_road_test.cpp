// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
// The log of a run against the hub's journal: each byte that the hub took or said, read here by hand.
#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <random>

#include "link/download.h"
#include "link/execution.h"
#include "road/journal_reader.h"
#include "session/grid.h"
#include "session/run_keep.h"
#include "session/run_log.h"
#include "session/run_rows.h"
#include "support/fake_state_folder.h"
#include "support/sim_desk.h"

namespace tavlo::testing {
namespace {

/// A session that keeps the hub's journal, with an operator at its keys and a world at its inputs.
class Day : public SimDesk {
 public:
  explicit Day(unsigned seed) : random_(seed) {
    road.log = &log;
    source.program.Axis.DriveModel = {20, 40, 11, 0, 0, 0, 0, 0, 0};
    sim.on_traffic = [this](bool to_hub, std::string_view bytes, double at) {
      const hubsim::WaitsFor waits = sim.hub.Waits();
      const bool digits = waits == hubsim::WaitsFor::Value || waits == hubsim::WaitsFor::MenuKey;
      journal.push_back({at, to_hub, std::string(bytes), digits, sim.hub.Display()});
    };
  }

  void Program() {
    const auto move = [this](int index, int axis, int steps) -> Instruction& {
      Line(index).Type = FL;
      Line(index).Drive = static_cast<std::int16_t>(axis);
      Line(index).Dist = steps;
      Line(index).Speed = 2;
      return Line(index);
    };
    const auto prompt = [this](int index, MMISub kind, const std::string& text) -> Instruction& {
      Line(index).Type = MMI;
      Line(index).SubType = kind;
      Line(index).Text = text;
      return Line(index);
    };
    const auto output = [this](int index, int axis, int number, int action, int ms) {
      Line(index).Type = SO;
      Line(index).Drive = static_cast<std::int16_t>(axis);
      Line(index).IONum = static_cast<std::int16_t>(number);
      Line(index).State = static_cast<std::int16_t>(action);
      Line(index).Time = ms;
    };
    output(0, 0, 0, 1, 10);
    move(1, 0, 30000).Proceed = true;
    prompt(2, DisplayOnly, "Cutting");
    move(3, 2, 15000);
    Line(4).Type = WT;
    Line(4).Time = 30;
    Instruction& pieces = prompt(5, GetCount, "=Pieces:");
    pieces.DistVar = 35;
    pieces.LowerInt = 1;
    pieces.UpperInt = 500;
    Line(6).Type = RP;
    Line(6).Count = 3;
    output(7, 2, 1, 3, 120);
    move(8, 1, 8000);
    Line(9).Type = WT;
    Line(9).Time = 5;
    Line(10).Type = ER;
    prompt(11, BranchYesNo, "Again?").LineNum = 14;
    Line(12).Type = WI;
    Line(12).Drive = 1;
    Line(12).IONum = 1;
    output(13, 0, 0, 0, 10);
    prompt(14, WaitEnter, "Press ENTER to go on, the blade is up now");
    Instruction& menu = prompt(15, Menu, "1 top   2 cut");
    menu.MenuKey = {false, true, true, false, false, false, false, false, false};
    menu.MenuLine = {0, 0, 6, 0, 0, 0, 0, 0, 0};
    Line(16).Type = GT;
    Line(16).LineNum = 0;
  }

  /// What the operator and the world do in so many seconds.
  void Pass(double seconds) {
    const double end = clock.now + seconds;
    while (clock.now < end && run.active != RunWindow::None) {
      sim.RunEventLoop(Between(1, 400) / 1000.0);
      Act();
    }
  }

  int Between(int least, int most) { return std::uniform_int_distribution(least, most)(random_); }

  RunLog log{clock};
  std::vector<JournalEntry> journal;

 private:
  void Act() {
    if (Between(0, 2) == 0) {
      sim.hub.SetInput(Between(0, 2), Between(0, 15), Between(0, 1) == 0, clock.now);
    }
    switch (sim.hub.Waits()) {
      case hubsim::WaitsFor::Value: return Type();
      case hubsim::WaitsFor::Enter: return PressKey(road, MmiKey::enter);
      case hubsim::WaitsFor::YesOrNo: return PressKey(road, Between(0, 2) == 0 ? MmiKey::yes : MmiKey::no);
      case hubsim::WaitsFor::MenuKey:
        return PressKey(road, Between(0, 1) == 0 ? MmiKey::Digit1 : MmiKey::Digit2);
      case hubsim::WaitsFor::Input: sim.hub.SetInput(1, Between(0, 2), Between(0, 1) == 0, clock.now); break;
      case hubsim::WaitsFor::Nothing:
      case hubsim::WaitsFor::Acknowledge:
      case hubsim::WaitsFor::Resume:
      case hubsim::WaitsFor::Motion:
      case hubsim::WaitsFor::Time: break;
    }
    Control();
  }

  void Type() {
    constexpr std::array kKeys = {MmiKey::Digit0, MmiKey::Digit1, MmiKey::Digit4, MmiKey::Digit9,
                                  MmiKey::dot,    MmiKey::bksp,   MmiKey::enter,  MmiKey::arrowleft};
    PressKey(road, kKeys[static_cast<std::size_t>(Between(0, kKeys.size() - 1))]);
  }

  void Control() {
    const bool paused = !source.run.panel.Running;
    const int chance = Between(0, 99);
    if (chance < 3) ClickPause(road);
    if (chance >= 3 && chance < 20 && paused) ClickSingleStep(road);
    if (chance >= 20 && chance < 35) ClickPlay(road);
    if (chance == 99) ClickReset(road);
  }

  std::mt19937 random_;
};

/// How each run of the hour ends.
using Ending = std::function<void(Day&)>;

/// Does it until it has an effect.
void Until(Day& day, const std::function<bool()>& act) {
  for (int i = 0; i < 1000; ++i) {
    if (act()) return day.sim.RunEventLoop(0.1);
    day.Pass(0.3);
  }
  ADD_FAILURE() << "it never took effect";
}

std::vector<std::pair<std::string, Ending>> Endings() {
  const auto limit = [](Answer answer) {
    return [answer](Day& day) {
      day.boxes.setNextAnswer(answer);
      Until(day, [&] { return day.sim.hub.HitLimit(2, day.clock.now); });
    };
  };
  return {
      {"stop",
       [](Day& day) {
         // What the hub said last has arrived before the operator stops it.
         day.sim.DeliverEvents();
         StopRun(day.road, day.run.active);
       }},
      {"limit, reset declined", limit(Answer::No)},
      {"limit, reset", limit(Answer::Yes)},
      {"fault", [](Day& day) { Until(day, [&] { return day.sim.hub.Fail(0, 32, day.clock.now); }); }},
      {"stop button",
       [](Day& day) {
         day.boxes.setNextAnswer(Answer::No);
         Until(day, [&] { return day.sim.hub.PressStop(day.clock.now); });
       }},
      {"hub switched on",
       [](Day& day) {
         day.sim.hub.PowerUp(day.clock.now);
         day.sim.RunEventLoop(0.1);
       }},
  };
}

std::vector<ExpectedRow> LoggedRows(const RunLog& log) {
  std::vector<ExpectedRow> rows;
  for (auto number = log.First(); number < log.Last(); ++number) {
    const RunRow row = RowOf(log, number);
    std::string rest = row.cells[1];
    for (std::size_t i = 2; i < row.cells.size(); ++i) rest += "|" + row.cells[i];
    rows.push_back({std::stod(row.cells[0]), rest});
  }
  return rows;
}

/// The first difference in words; empty if there is none.
std::string Difference(const std::vector<ExpectedRow>& log, const std::vector<ExpectedRow>& journal) {
  const auto told = [](const ExpectedRow& row) { return std::to_string(row.seconds) + " " + row.rest; };
  for (std::size_t i = 0; i < std::max(log.size(), journal.size()); ++i) {
    const std::string where = "row " + std::to_string(i) + ": ";
    if (i >= log.size()) return where + "the log has none, the journal says " + told(journal[i]);
    if (i >= journal.size()) return where + "the journal has none, the log says " + told(log[i]);
    const bool same =
        log[i].rest == journal[i].rest && std::abs(log[i].seconds - journal[i].seconds) < 0.0011;
    if (!same) return where + "the log says " + told(log[i]) + ", the journal " + told(journal[i]);
  }
  return {};
}

std::vector<std::string> LineTexts(const Source& source) {
  std::vector<std::string> texts;
  for (const tavlo::Row& row : source.shown.rows) texts.push_back(row.desc);
  return texts;
}

TEST(RunLogRoad, AnHourOfRunsIsInTheLogEventByEventAsTheHubsJournalHasIt) {
  constexpr unsigned kSeed = 20261122;
  constexpr double kRunSeconds = 600;
  Day day(kSeed);
  // The first run passes midnight.
  day.clock.now = 86000;
  FakeStateDisk disk;
  FakeStateFolder folder{disk};
  RunKeep keep(folder);
  day.Program();
  ShowProgram(day.road);
  ASSERT_EQ(Download(day.road), DownloadResult::Done)
      << (day.boxes.shown.empty() ? "" : day.boxes.shown.back().text);
  const std::vector<std::string> texts = LineTexts(day.source);
  std::map<std::string, int> kinds;
  for (const auto& ending : Endings()) {
    SCOPED_TRACE("seed " + std::to_string(kSeed) + ", run that ends by " + ending.first);
    day.journal.clear();
    day.run.on_show = [&](RunWindow window) {
      StartRun(day.road, window);
      for (int i = 0; i < 60; ++i) {
        day.Pass(kRunSeconds / 60);
        ASSERT_TRUE(keep.Keep(day.log));
        ASSERT_EQ(day.run.active, window) << "it ended by itself: " << day.boxes.shown.back().text;
      }
      ending.second(day);
    };
    ASSERT_EQ(Execute(day.road), ExecuteResult::Ran);
    ASSERT_FALSE(day.log.Open());
    ASSERT_TRUE(keep.Keep(day.log));
    const auto journal = RowsOfJournal(day.journal, texts);
    EXPECT_EQ(Difference(LoggedRows(day.log), journal), "");
    EXPECT_EQ(day.log.First(), 0u) << "nothing is missing";
    EXPECT_GT(journal.size(), 1000u);
    EXPECT_TRUE(disk.files[keep.Name()] == CsvOf(day.log));
    for (const ExpectedRow& row : journal) ++kinds[row.rest.substr(0, row.rest.find('|'))];
    // What a fault, a switch or a stop has left in the hub.
    day.sim.hub.PowerUp(day.clock.now);
    day.sim.RunEventLoop(0.1);
  }
  for (const char* kind : {"line started", "line goes on", "line finished", "program counter", "step done",
                           "state", "input", "output", "display", "key", "control", "limit", "stop button",
                           "drive fault", "hub switched on", "end"}) {
    EXPECT_GT(kinds[kind], 0) << kind << " never happened, so nothing is proven of it";
  }
  EXPECT_EQ(keep.Names().size(), Endings().size());
}

TEST(RunLogRoad, TheSameBytesAndBoxesPassWithAndWithoutALog) {
  std::array<std::string, 2> sent;
  for (std::size_t logged = 0; logged < sent.size(); ++logged) {
    Day day(5);
    if (logged == 0) day.road.log = nullptr;
    day.Program();
    ASSERT_EQ(Download(day.road), DownloadResult::Done);
    day.run.on_show = [&](RunWindow window) {
      StartRun(day.road, window);
      day.Pass(300);
      StopRun(day.road, window);
    };
    ASSERT_EQ(Execute(day.road), ExecuteResult::Ran);
    for (const JournalEntry& entry : day.journal) {
      sent[logged] += (entry.to_hub ? "<" : ">") + std::to_string(entry.at) + entry.bytes;
    }
    for (const ShownBox& box : day.boxes.shown) sent[logged] += box.title + box.text;
  }
  EXPECT_TRUE(sent[0] == sent[1]);
}

}  // namespace
}  // namespace tavlo::testing
