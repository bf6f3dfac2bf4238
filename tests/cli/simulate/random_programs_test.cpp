// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <random>

#include "cli/simulate/simulated.h"

namespace tavlo::testing {
namespace {

constexpr int kPrograms = 300;
constexpr int kLinesOfOne = 25;
constexpr double kLimit = 100;

/// Programs of all kinds of lines in any order, in a world in which anything may happen.
class RandomPrograms : public Simulated {
 protected:
  int Below(int end) { return static_cast<int>(random_() % static_cast<unsigned>(end)); }
  bool OneIn(int count) { return Below(count) == 0; }

  Instruction AnyLine() {
    constexpr std::array kTypes = {FL,  FR,   FS,   FSR, WT,  WI, GT, II, SH, MMI, FP, ED, SP, FE, CC,
                                   III, FLSO, FLCS, WII, FSS, LP, CL, RT, IM, SS,  SO, WT, FL, GT};
    Instruction line = OfType(kTypes[static_cast<std::size_t>(Below(static_cast<int>(kTypes.size())))]);
    line.Drive = static_cast<std::int16_t>(Below(3));
    line.Dist = Below(200000);
    line.Dist2 = Below(line.Dist + 1);
    line.SafetyDist = Below(400000);
    line.Speed = static_cast<float>(Below(400) + 1) / 40;
    line.Speed2 = static_cast<float>(Below(400) + 1) / 40;
    line.RetSpeed = line.Speed;
    line.Accel = Below(500) + 1;
    line.Decel = Below(500) + 1;
    line.JogSpeed = line.Speed;
    line.JogAccel = line.Accel;
    line.Dir = static_cast<std::int16_t>(Below(2));
    line.State = static_cast<std::int16_t>(Below(4));
    line.IONum = static_cast<std::int16_t>(Below(4));
    line.Time = Below(200);
    line.LineNum = static_cast<std::int16_t>(Below(kLinesOfOne));
    line.InMask = static_cast<std::int16_t>(Below(16));
    line.InState = static_cast<std::int16_t>(Below(16));
    line.WaitAND = OneIn(2);
    line.MotorOn = !OneIn(5);
    line.Current = 1;
    // A hub takes a knob line that goes on at once for one of another length.
    line.Proceed = line.Type != FE && OneIn(3);
    line.JogOn = OneIn(2);
    line.SubType = static_cast<std::int16_t>(line.Type == SS ? Below(4) : GetCount + Below(4));
    line.Text = "Random";
    line.UpperInt = 100;
    return line;
  }
  std::string AnyScript() {
    std::string script;
    for (int row = 0; row < 12; ++row) {
      const std::string axis = "axis " + std::to_string(Below(3) + 1);
      const std::string cue = OneIn(2) ? "at " + std::to_string(Below(30))
                                       : "when line " + std::to_string(Below(kLinesOfOne) + 1) + " after 0." +
                                             std::to_string(Below(10));
      const std::string input = axis + " input " + std::to_string(Below(4) + 1);
      const std::array<std::string, 8> acts = {
          input + " low", input + " high", input + " low for 0.3", "key enter",
          "key yes",      "type 7",        axis + " wheel 90",     OneIn(9) ? axis + " limit" : "key no"};
      script += cue + " " + acts[static_cast<std::size_t>(Below(8))] + "\n";
    }
    return script;
  }

  std::mt19937 random_{20261122};
};

/// What holds of every time line.
void ExpectSound(const nlohmann::json& document) {
  const double total = document["total"];
  EXPECT_LE(total, kLimit);
  double last = 0;
  for (const auto& line : document["lines"]) {
    EXPECT_GE(line["start"], last) << "in the order of their starts";
    last = line["start"];
    EXPECT_LE(last, total);
    if (line["end"].is_null()) {
      EXPECT_NE(document["ended"], "end") << line;
      continue;
    }
    EXPECT_GE(line["end"], line["start"]) << line;
    EXPECT_LE(line["end"], total) << line;
  }
  bool waits = false;
  for (const auto& wait : document["waits"]) {
    EXPECT_NE(wait["freedBy"], "") << wait;
    waits = waits || wait["end"].is_null();
  }
  EXPECT_TRUE(waits || document["ended"] != "waits");
  EXPECT_FALSE(waits && document["ended"] == "end");
}

TEST_F(RandomPrograms, ComeToAnEndAndToASoundTimeLine) {
  std::map<std::string, int> ended;
  for (int number = 0; number < kPrograms; ++number) {
    SCOPED_TRACE(number);
    InitProg(program);
    for (int line = 1; line < kLinesOfOne; ++line) Line(line) = AnyLine();
    Line(kLinesOfOne - 1) = To(GT, kLinesOfOne + 10);
    Line(kLinesOfOne) = OfType(RT);
    const Json document = SimulateJson(AnyScript(), {"--for", "100", "--yes", "--svg", folder.Path("a.svg")});
    if (!document.contains("ended")) {
      ++ended["refused"];
      EXPECT_EQ(document["error"]["code"], 3);
      continue;
    }
    ++ended[document["ended"]];
    ExpectSound(document);
    if (HasFailure()) break;
  }
  for (const char* ending : {"end", "halt", "waits", "limit"}) EXPECT_GT(ended[ending], 0) << ending;
  EXPECT_LT(ended["refused"], kPrograms * 9 / 10);
  for (const auto& [ending, count] : ended) RecordProperty(ending, count);
}

}  // namespace
}  // namespace tavlo::testing
