// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "link/held_program.h"

#include <gtest/gtest.h>

#include <chrono>
#include <functional>

#include "codegen/encodings.h"
#include "link/com_port.h"
#include "link/download.h"
#include "link/drive_check.h"
#include "link/drive_terminal.h"
#include "link/execution.h"
#include "link/hub_messages.h"
#include "link/scripted_hub.h"
#include "link/upload.h"

namespace tavlo::testing {
namespace {

/// A hub to which a program was sent, and proven.
struct Proven : FakeDesk {
  Proven() {
    source.file_name = "/home/ann/cut.TVH";
    Line(0).Type = MMI;
    Line(0).SubType = DisplayOnly;
    Line(0).Text = "Ready";
    Line(1).Type = WT;
    Line(1).Time = 77;
    EXPECT_EQ(Download(desk), DownloadResult::Done);
  }
  [[nodiscard]] Holds Now() const { return HubHolds(source.program, source.link.held); }

  ScriptedHub hub{port};
};

TEST(HeldProgram, ADownloadThatIsProvenIsWhatTheHubHolds) {
  const Proven d;
  EXPECT_EQ(d.source.link.held.by, HubProgram::By::Download);
  EXPECT_EQ(d.source.link.held.file_name, "/home/ann/cut.TVH");
  EXPECT_EQ(d.source.link.held.at, d.source.happened.front().at);
  EXPECT_EQ(d.Now(), Holds::TheProgramShown);
}

TEST(HeldProgram, AnEditMakesItAnotherAndTakingTheEditBackTheSameAgain) {
  Proven d;
  const Program sent = d.source.program;
  for (const std::function<void()>& edit : std::vector<std::function<void()>>{
           [&] { d.Line(1).Time = 78; },
           [&] { d.Line(0).Text = "Steady"; },
           [&] { d.Line(0).Text = "Read"; },
           [&] { d.Line(199).Type = GT; },
           [&] { d.source.program.Axis.AxisName[1] = "Lift"; },
           [&] { d.source.program.LimitBranch = 7; },
       }) {
    edit();
    EXPECT_EQ(d.Now(), Holds::Another);
    d.source.program = sent;
    EXPECT_EQ(d.Now(), Holds::TheProgramShown);
  }
}

TEST(HeldProgram, IsComparedAsTheHubsModelAndFirmwareWouldHaveIt) {
  Proven d;
  d.source.program.HubVersion = 0;
  d.source.program.HubIndex = HubQuad;
  EXPECT_EQ(d.Now(), Holds::TheProgramShown) << "as a file would have it that was loaded since";
  EXPECT_EQ(d.source.program.HubIndex, HubQuad) << "comparing changes nothing";
}

TEST(HeldProgram, OneThatCannotBeCompiledIsInNoHub) {
  Proven d;
  d.Line(1).Time = -1;
  EXPECT_EQ(d.Now(), Holds::Another);
}

/// The answer of a hub to "U".
std::string Upload8194(const std::string& image) {
  const int sum = SumStr(image) % 65536;
  return image + static_cast<char>(sum / 256) + static_cast<char>(sum % 256);
}

TEST(HeldProgram, AnUploadTellsWhatTheHubHolds) {
  Proven d;
  std::string image = d.source.link.held.image;
  image[31] = 'x';
  d.port.on_output = [&](const std::string& bytes) {
    if (bytes == "C") d.port.Reply(Bytes({38, 8}));
    if (bytes == "U") d.port.Reply(Upload8194(image), 4.36);
  };
  EXPECT_EQ(Upload(d.desk), UploadResult::Done);
  EXPECT_EQ(d.source.link.held.by, HubProgram::By::Upload);
  EXPECT_EQ(d.source.link.held.bytes, 8194);
  EXPECT_EQ(d.Now(), Holds::TheProgramShown) << "what stands behind a line in its slot does not count";
  EXPECT_EQ(d.source.happened.front().text, "Upload read: 8,194 bytes in 4.4 s");
  d.Line(1).Time = 3;
  EXPECT_EQ(d.Now(), Holds::Another);
}

/// What may happen to a hub, and whether it is known afterwards what it holds.
struct FateCase {
  const char* what;
  std::function<void(Proven&)> happens;
  bool known;
};

TEST(HeldProgram, IsForgottenAtEveryChanceThatItIsAnother) {
  const auto fails_at = [](const char* place, const char* reply) {
    return [=](Proven& d) {
      d.hub.instead[place] = reply;
      EXPECT_TRUE(Download(d.desk).has_value());
    };
  };
  for (const FateCase& c : {
           FateCase{"nothing", [](Proven&) {}, true},
           FateCase{"a greeting", [](Proven& d) { DispDrive(d.desk, 38, 8); }, false},
           FateCase{"a greeting of what is no hub", [](Proven& d) { DispDrive(d.desk, 38, 16); }, false},
           FateCase{"a greeting behind the drive terminal",
                    [](Proven& d) {
                      ActivateTerminal(d.desk);
                      for (const char c : Bytes({255, 38, 8})) ProcessChar(d.desk, c);
                    },
                    false},
           FateCase{"another port", [](Proven& d) { ClickOptCom(d.desk, 3); }, false},
           FateCase{"a port that does not open",
                    [](Proven& d) {
                      d.port.open_errors[4] = "no such device";
                      ClickOptCom(d.desk, 3);
                    },
                    false},
           FateCase{"the port in use", [](Proven& d) { ClickOptCom(d.desk, 0); }, true},
           FateCase{"a lost port", [](Proven& d) { TellPortLost(d.desk); }, false},
           FateCase{"no answer to the first byte", fails_at("F", ""), false},
           FateCase{"a download that ends in its lines", fails_at("line 3", ""), false},
           FateCase{"one that ends in its settings", fails_at("system 8", ""), false},
           FateCase{"one that ends in its prompts", fails_at("pool 1", ""), false},
           FateCase{"one without a sum", fails_at("K", ""), false},
           FateCase{"one with a wrong sum", fails_at("K", "12"), false},
           FateCase{"one that is refused before its first byte",
                    [](Proven& d) {
                      d.Line(5).Type = ER;
                      EXPECT_EQ(Download(d.desk), DownloadResult::Refused);
                      d.Line(5).Type = NO;
                    },
                    true},
           FateCase{"one that cannot be compiled",
                    [](Proven& d) {
                      d.Line(1).Time = -1;
                      EXPECT_EQ(Download(d.desk), DownloadResult::CannotCompile);
                      d.Line(1).Time = 77;
                    },
                    true},
           FateCase{"the same hub again", [](Proven& d) { EXPECT_FALSE(CheckDrive(d.desk).empty()); }, true},
           FateCase{"a hub of another firmware",
                    [](Proven& d) {
                      d.hub.revision = 40;
                      EXPECT_FALSE(CheckDrive(d.desk).empty());
                    },
                    false},
           FateCase{"a hub of another model",
                    [](Proven& d) {
                      d.hub.model = 24;
                      EXPECT_FALSE(CheckDrive(d.desk).empty());
                    },
                    false},
           FateCase{"a silent hub",
                    [](Proven& d) {
                      d.hub.instead["C"] = "";
                      EXPECT_TRUE(CheckDrive(d.desk).empty());
                    },
                    false},
       }) {
    Proven d;
    c.happens(d);
    EXPECT_EQ(d.Now(), c.known ? Holds::TheProgramShown : Holds::Unknown) << c.what;
  }
}

TEST(HeldProgram, IsUnknownFromTheFirstByteOfADownloadOn) {
  Proven d;
  int seen = 0;
  d.hub.on_place = [&](const std::string& place) {
    if (place == "C") return;
    ++seen;
    EXPECT_EQ(d.Now(), Holds::Unknown) << place;
  };
  EXPECT_EQ(Download(d.desk), DownloadResult::Done);
  EXPECT_GT(seen, 200);
  EXPECT_EQ(d.Now(), Holds::TheProgramShown);
}

TEST(HeldProgram, ARunKeepsWithWhatItBegan) {
  for (const Holds holds : {Holds::TheProgramShown, Holds::Another, Holds::Unknown}) {
    Proven d;
    if (holds == Holds::Another) d.Line(1).Time = 9;
    if (holds == Holds::Unknown) ForgetHub(d.desk.link());
    EXPECT_EQ(Execute(d.desk), ExecuteResult::Ran);
    EXPECT_EQ(d.source.run.holds, holds);
  }
}

/// The slowest: all lines are prompts, whose texts fill the pool.
TEST(HeldProgram, IsComparedInWellUnderAMillisecond) {
  FakeDesk d;
  for (int line = 0; line < kLines; ++line) {
    d.Line(line).Type = MMI;
    d.Line(line).Text = "1234567";
  }
  Program copy = d.source.program;
  const HubProgram held{.by = HubProgram::By::Download, .image = ImageOf(CompileAsDownloaded(copy))};
  constexpr int kTimes = 100;
  const auto start = std::chrono::steady_clock::now();
  for (int i = 0; i < kTimes; ++i) EXPECT_EQ(HubHolds(d.source.program, held), Holds::TheProgramShown);
  const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - start;
  RecordProperty("microseconds", static_cast<int>(took.count() / kTimes * 1000));
  // Ten times what it takes where nothing is optimised and the machine has other work.
  EXPECT_LT(took.count() / kTimes, 10);
}

}  // namespace
}  // namespace tavlo::testing
