// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <gtest/gtest.h>

#include "link/com_port.h"
#include "link/download.h"
#include "link/execution.h"
#include "link/receive.h"
#include "link/scripted_hub.h"
#include "link/upload.h"

namespace tavlo::testing {
namespace {

const std::string kGone =
    "Comm 1 has gone.  Check the cable, then choose a comm port again.  Your program is still here and can "
    "be "
    "edited and saved.";
const std::string kGoneInARun =
    "Comm 1 has gone.  A program was running: the machine may still be moving, and its own stop is the only "
    "one left.  Check the cable, then choose a comm port again.  Your program is still here and can be "
    "edited "
    "and saved.";

ShownBox LostBox(const std::string& text) {
  return {text, "Communication Error", Buttons::OK, Icon::Exclamation, /*by_itself=*/true};
}

/// A session whose port goes when the hub has been brought to a place. The loss is told when the event loop
/// gets its next turn, inside a box or between two bytes, as the real port does.
struct LosingDesk : FakeDesk {
  explicit LosingDesk(std::string at) : place(std::move(at)) {
    hub.on_place = [this](const std::string& reached) {
      if (reached == place) port.is_open = false;
    };
    hub.instead[place] = "";
    loop.on_yield = [this] { TellOnce(); };
    boxes.on_box = [this](const ShownBox&) { TellOnce(); };
    run.on_show = [this](RunWindow window) {
      StartRun(desk, window);
      TellOnce();
    };
  }
  void TellOnce() {
    if (!port.is_open && !std::exchange(told, true)) TellPortLost(desk);
  }
  ScriptedHub hub{port};
  std::string place;
  bool told = false;
};

struct Exchange {
  const char* place;
  std::function<void(Desk&)> operation;
};

std::vector<Exchange> Exchanges() {
  const auto download = [](Desk& desk) { static_cast<void>(Download(desk)); };
  const auto upload = [](Desk& desk) { static_cast<void>(Upload(desk)); };
  const auto execute = [](Desk& desk) { static_cast<void>(Execute(desk)); };
  return {{"C", download},        {"F", download}, {"line 1", download}, {"line 150", download},
          {"system 4", download}, {"K", download}, {"pool 1", download}, {"C", upload},
          {"C", execute},         {"D", execute},  {"R", execute},       {"E", execute}};
}

TEST(PortLost, InTheMiddleOfAnExchangeGivesOnePlainMessage) {
  for (const Exchange& exchange : Exchanges()) {
    LosingDesk d(exchange.place);
    exchange.operation(d.desk);
    // The event loop's turn after the operation.
    d.TellOnce();
    EXPECT_EQ(d.boxes.shown, std::vector<ShownBox>{LostBox(kGone)}) << exchange.place;
    EXPECT_EQ(d.source.link.ComNum, 0) << exchange.place;
    EXPECT_FALSE(d.source.link.OptCom) << exchange.place;
    EXPECT_FALSE(d.source.link.Busy) << exchange.place;
    EXPECT_FALSE(d.downbox.visible || d.upbox.visible) << exchange.place;
  }
}

TEST(PortLost, WhileAnImageComesInGivesOnePlainMessageAndKeepsTheProgram) {
  LosingDesk d("nowhere");
  d.Line(7).Type = GT;
  const auto before = d.source.program.Prog;
  const auto take = d.port.on_output;
  d.port.on_output = [&](const std::string& bytes) {
    take(bytes);
    if (bytes != "U") return;
    d.port.Reply(std::string(4000, '\1'));
    d.port.is_open = false;
  };
  EXPECT_EQ(Upload(d.desk), UploadResult::Stopped);
  d.TellOnce();
  EXPECT_EQ(d.boxes.shown, std::vector<ShownBox>{LostBox(kGone)});
  EXPECT_EQ(d.source.program.Prog, before);
}

TEST(PortLost, InARunSaysThatTheMachineMayStillMoveAndAtOnce) {
  for (const char* window : {"X", "M"}) {
    LosingDesk d("nowhere");
    d.hub.window = window;
    d.run.on_show = [&](RunWindow shown) {
      StartRun(d.desk, shown);
      d.port.is_open = false;
      d.TellOnce();
      EXPECT_EQ(d.boxes.shown, std::vector<ShownBox>{LostBox(kGoneInARun)});
      EXPECT_EQ(d.run.Active(), RunWindow::None);
    };
    EXPECT_EQ(Execute(d.desk), ExecuteResult::Ran);
    EXPECT_EQ(d.boxes.shown.size(), 1u);
    EXPECT_FALSE(d.source.link.Busy);
  }
}

TEST(PortLost, AfterTheEmulatorWasClosedOnARunningProgramSaysSoToo) {
  FakeDesk d;
  StartRun(d.desk, RunWindow::fakeMMI);
  CloseRun(d.desk, RunWindow::fakeMMI);
  d.port.is_open = false;
  TellPortLost(d.desk);
  EXPECT_EQ(d.boxes.shown, std::vector<ShownBox>{LostBox(kGoneInARun)});
}

TEST(PortLost, SaysNothingOfAMachineThatWasStoppedOrHaltedBefore) {
  const std::vector<std::function<void(FakeDesk&)>> ends = {
      [](FakeDesk& d) { StopRun(d.desk, RunWindow::ExecStatus); },
      [](FakeDesk& d) { StopRun(d.desk, RunWindow::fakeMMI); },
      [](FakeDesk& d) { CloseRun(d.desk, RunWindow::ExecStatus); },
      [](FakeDesk& d) {
        d.port.Receive(Bytes({251, 0, 0, 0}));
      },
      [](FakeDesk& d) {
        d.port.Receive(Bytes({211, 1, 0, 1}));
      },
      [](FakeDesk& d) {
        d.port.Receive(Bytes({255, 38, 8, 0}));
      },
  };
  for (std::size_t i = 0; i < ends.size(); ++i) {
    FakeDesk d;
    d.port.OnComm = [&d] { NewOnComm(d.desk); };
    d.boxes.setNextAnswer(Answer::No);
    StartRun(d.desk, RunWindow::ExecStatus);
    ends[i](d);
    d.boxes.shown.clear();
    d.port.is_open = false;
    TellPortLost(d.desk);
    EXPECT_EQ(d.boxes.shown, std::vector<ShownBox>{LostBox(kGone)}) << i;
  }
}

TEST(PortLost, DuringAResetSaysOnlyThat) {
  FakeDesk d;
  d.port.on_output = [&](const std::string&) { d.port.is_open = false; };
  ResetDrive(d.desk.link(), d.desk.loop);
  TellPortLost(d.desk);
  EXPECT_EQ(d.boxes.shown, std::vector<ShownBox>{LostBox(kGone)});
}

TEST(PortLost, WithNoPortAtAllAnExchangeStillTellsItsOwnFailure) {
  const std::vector<std::function<void(Desk&)>> operations = {
      [](Desk& desk) { static_cast<void>(Download(desk)); },
      [](Desk& desk) { static_cast<void>(Upload(desk)); },
      [](Desk& desk) { static_cast<void>(Execute(desk)); },
  };
  for (const auto& operation : operations) {
    FakeDesk d;
    d.port.is_open = false;
    d.source.link.ComNum = 0;
    operation(d.desk);
    ASSERT_EQ(d.boxes.shown.size(), 1u);
    EXPECT_TRUE(d.boxes.shown[0].text.starts_with("The Tavlo Hub is not communicating.  "))
        << d.boxes.shown[0].text;
  }
}

}  // namespace
}  // namespace tavlo::testing
