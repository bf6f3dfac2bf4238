// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <nlohmann/json.hpp>

#include "cli/companion.h"

namespace tavlo::testing {
namespace {

using Json = nlohmann::json;

/// Line 1 is a move of one revolution a second with 10 rev/s/s both ways over 20000 steps.
struct ProfileOf : Companion {
  ProfileOf() {
    program.Axis.StepResCode[0] = 8;
    program.Axis.StepsPerUnit[0] = 20000;
    Line(1) = {.Type = FL, .Dist = 20000, .Speed = 1, .Accel = 10, .Decel = 10};
    Line(2) = {.Type = FLSO,
               .Dist = 20000,
               .Dist2 = 10000,
               .Speed = 1,
               .Accel = 10,
               .Decel = 10,
               .Speed2IsMMI = true};
    Line(3) = {.Type = WT, .Time = 100};
    Line(4) = Line(1);
    Line(4).DistIsMMI = true;
  }
  [[nodiscard]] Json JsonOf(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {"profile", File()});
    arguments.emplace_back("--json");
    const Outcome outcome = Tavlo(arguments);
    EXPECT_EQ(outcome.code, 0) << outcome.err;
    return Json::parse(outcome.out);
  }
};

TEST_F(ProfileOf, PrintsTheRowsOfTheAnalysis) {
  EXPECT_EQ(Tavlo({"profile", File(), "1"}),
            (Outcome{0,
                     "Accel\t0.100\t0.05\nat Speed\t0.900\t0.9\nDecel\t0.100\t0.05\nTotal\t1.100\t1.0\n"
                     "Peak speed\t1.0000\n",
                     ""}));
}

TEST_F(ProfileOf, PrintsWhenAnOutputIsSet) {
  const Outcome outcome = Tavlo({"profile", File(), "2"});
  EXPECT_EQ(outcome.code, 0);
  EXPECT_TRUE(outcome.out.ends_with("Peak speed\t1.0000\nOutput set\t0.550\t0.5\n")) << outcome.out;
}

TEST_F(ProfileOf, JsonGivesShapeRowsPointsAndAxes) {
  const Json json = JsonOf({"1"});
  EXPECT_EQ(json["shape"], "PlotTrap1");
  EXPECT_EQ(json["rows"].size(), 4U);
  EXPECT_EQ(json["rows"][0], (Json{{"label", "Accel"}, {"time", "0.100"}, {"distance", "0.05"}}));
  EXPECT_EQ(json["peakSpeed"], "1.0000");
  EXPECT_EQ(json["points"].size(), 22U);
  EXPECT_NEAR(json["points"][21][0].get<double>(), 1.1, 1e-6);
  EXPECT_NEAR(json["points"][21][2].get<double>(), 20000, 0.1) << "steps";
  EXPECT_EQ(
      json["xAxis"],
      (Json{{"divisions", 3}, {"step", 0.5}, {"labels", {"0", "0.5", "1", "1.5"}}, {"caption", "sec"}}));
  EXPECT_EQ(json["yAxis"]["labels"], (Json{"0.0", "0.2", "0.4", "0.6", "0.8", "1.0"}));
  EXPECT_EQ(json["yAxis"]["caption"], "r e v / s e c");
  EXPECT_FALSE(json.contains("output"));
}

TEST_F(ProfileOf, JsonGoesOverTheDistance) {
  const Json json = JsonOf({"1", "--over", "distance"});
  EXPECT_EQ(json["xAxis"]["caption"], "rev");
  EXPECT_EQ(json["xAxis"]["labels"], (Json{"0", "0.2", "0.4", "0.6", "0.8", "1"}));
}

TEST_F(ProfileOf, JsonGivesTheOutput) {
  const Json json = JsonOf({"2"});
  EXPECT_EQ(json["output"]["time"], "0.550");
  EXPECT_EQ(json["output"]["distance"], "0.5");
  ASSERT_EQ(json["output"]["points"].size(), 4U);
  EXPECT_EQ(json["output"]["points"][3][1], 1);
  EXPECT_EQ(json["yAxis"]["caption"], "R e v / s e c");
}

constexpr const char* kCant =
    "Analysis of this move can't be done, because speed or distance is an MMI variable and is therefore "
    "unknown at "
    "this time.";

TEST_F(ProfileOf, AMoveThatCannotBeKnownSaysSo) {
  EXPECT_EQ(Tavlo({"profile", File(), "4"}), (Outcome{0, std::string(kCant) + "\n", ""}));
  EXPECT_EQ(JsonOf({"4"}), (Json{{"shape", nullptr}, {"message", kCant}}));
}

TEST_F(ProfileOf, ALineOfAnotherKindHasNone) {
  EXPECT_EQ(Tavlo({"profile", File(), "3"}),
            (Outcome{2, "", "tavlo: line 3 is a line of kind WT; a profile has FL, FLCS and FLSO alone\n"}));
}

TEST_F(ProfileOf, TheNumberOfTheLineIsChecked) {
  for (const char* line : {"0", "201", "1.5", "one", "-1"}) {
    const Outcome outcome = Tavlo({"profile", File(), line});
    EXPECT_EQ(outcome.code, 2) << line;
    EXPECT_EQ(outcome.out, "") << line;
  }
  EXPECT_EQ(Tavlo({"profile", File()}).code, 2);
  EXPECT_EQ(Tavlo({"profile", File(), "1", "--over", "speed"}).code, 2);
}

TEST_F(ProfileOf, WritesTheGraphAndThePoints) {
  const std::string svg = folder.Path("graph.svg");
  const std::string csv = folder.Path("points.csv");
  EXPECT_EQ(Tavlo({"profile", File(), "2", "--svg", svg, "--csv", csv}).code, 0);
  const std::string picture = folder.Read("graph.svg");
  EXPECT_TRUE(picture.starts_with("<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 640 400\""))
      << picture;
  EXPECT_TRUE(picture.ends_with("</svg>\n"));
  EXPECT_NE(picture.find(">High</text>"), std::string::npos);
  const std::string points = folder.Read("points.csv");
  EXPECT_TRUE(points.starts_with("seconds,rev/s,steps\n0,0,0\n")) << points;
  EXPECT_EQ(std::count(points.begin(), points.end(), '\n'), 23);
}

TEST_F(ProfileOf, TheGraphGoesToStandardOutputAlone) {
  const Outcome outcome = Tavlo({"profile", File(), "1", "--svg", "-"});
  EXPECT_TRUE(outcome.out.starts_with("<svg ")) << outcome.out;
  EXPECT_TRUE(outcome.out.ends_with("</svg>\n"));
  EXPECT_EQ(Tavlo({"profile", File(), "1", "--svg", "-", "--json"}).code, 2);
}

}  // namespace
}  // namespace tavlo::testing
