// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <regex>

#include "cli/simulate/simulated.h"

namespace tavlo::testing {
namespace {

class Tracks : public Simulated {
 protected:
  std::string Picture(const std::string& script = {}, std::vector<std::string> more = {}) {
    const std::string path = folder.Path("tracks.svg");
    more.insert(more.end(), {"--svg", path});
    EXPECT_LE(Simulate(script, more).code, 9);
    return folder.Read("tracks.svg");
  }
  static int Count(const std::string& text, const std::string& pattern) {
    const std::regex regex(pattern);
    return static_cast<int>(
        std::distance(std::sregex_iterator(text.begin(), text.end(), regex), std::sregex_iterator()));
  }
  /// The corners of the curves, a row each.
  static std::vector<std::string> Curves(const std::string& picture) {
    std::vector<std::string> curves;
    const std::regex regex("<polyline points=\"([^\"]*)\"");
    for (std::sregex_iterator match(picture.begin(), picture.end(), regex), end; match != end; ++match) {
      curves.push_back((*match)[1]);
    }
    return curves;
  }
  /// The places of the texts that are written from one side: x, y and the text.
  struct Label {
    double x;
    double y;
    std::string text;
  };
  static std::vector<Label> Labels(const std::string& picture, const std::string& anchor) {
    std::vector<Label> labels;
    const std::regex regex("<text x=\"([^\"]*)\" y=\"([^\"]*)\" text-anchor=\"" + anchor + "\"[^>]*>([^<]*)");
    for (std::sregex_iterator match(picture.begin(), picture.end(), regex), end; match != end; ++match) {
      labels.push_back({std::stod((*match)[1]), std::stod((*match)[2]), (*match)[3]});
    }
    return labels;
  }
};

TEST_F(Tracks, AnAxisThatMovesHasATrack) {
  Line(1) = Revolution(0);
  Line(2) = Revolution(2);
  Line(2).Dir = 1;
  program.Axis.AxisName[0] = "A & B";
  const std::string picture = Picture();
  EXPECT_TRUE(picture.starts_with("<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 960 "));
  EXPECT_TRUE(picture.ends_with("</svg>\n"));
  EXPECT_EQ(Curves(picture).size(), 2U);
  EXPECT_NE(picture.find(">A &amp; B, rev/s</text>"), std::string::npos) << picture;
  EXPECT_NE(picture.find(">Axis 3, rev/s</text>"), std::string::npos) << picture;
  EXPECT_EQ(picture.find("Axis 2"), std::string::npos);
  EXPECT_NE(picture.find(">-1.0</text>"), std::string::npos) << "counter-clockwise is below 0";
}

TEST_F(Tracks, ThePictureIsWellFormed) {
  Line(1) = Revolution();
  Line(2) = With(WI, 1);
  for (const std::string& picture : {Picture("at 3 axis 1 input 1 low"), Picture()}) {
    std::vector<std::string> open;
    const std::regex tag("<(/?)([a-z]+)((?: [a-zA-Z0-9:-]+=\"[^\"<]*\")*)(/?)>");
    std::string rest = std::regex_replace(picture, tag, "");
    EXPECT_EQ(rest.find_first_of("<>"), std::string::npos) << rest;
    for (std::sregex_iterator match(picture.begin(), picture.end(), tag), end; match != end; ++match) {
      if ((*match)[1] == "/") {
        ASSERT_FALSE(open.empty());
        EXPECT_EQ(open.back(), (*match)[2]);
        open.pop_back();
      } else if ((*match)[4] != "/") {
        open.push_back((*match)[2]);
      }
    }
    EXPECT_TRUE(open.empty());
  }
}

TEST_F(Tracks, ACurveHasTheCornersOfItsMove) {
  Line(1) = Revolution();
  // 1.1 s on an axis of 1.5 s: 850 units wide from 84 on. Speeds from 0 to 1 rev/s: 120 units high.
  EXPECT_EQ(Curves(Picture()).front(), "84,198 140.67,78 650.67,78 707.33,198");
}

TEST_F(Tracks, ARestIsDrawnToo) {
  Line(1) = Revolution();
  Line(2) = WaitTime(100);
  Line(3) = Revolution();
  const std::string curve = Curves(Picture()).front();
  EXPECT_EQ(std::count(curve.begin(), curve.end(), ' '), 7) << curve;
}

TEST_F(Tracks, ACutDropsToZeroAtOnce) {
  Line(1) = Revolution();
  Line(1).Proceed = true;
  Line(2) = WaitTime(200);
  const std::string curve = Curves(Picture("at 0.75 axis 1 fault 1")).front();
  // 0.75 s on an axis of 0.8 s.
  EXPECT_TRUE(curve.ends_with(" 880.88,78 880.88,198")) << curve;
}

TEST_F(Tracks, WaitsAreHatchedAndLinesAreNumbered) {
  Line(1) = Revolution();
  Line(2) = With(WI, 1);
  const std::string picture = Picture("at 3 axis 1 input 1 low");
  EXPECT_EQ(Count(picture, "<rect [^>]*fill=\"url\\(#waits\\)\""), 2) << "the wait and the legend";
  EXPECT_EQ(Count(picture, ">waits for the world</text>"), 1);
  EXPECT_EQ(Count(picture, "text-anchor=\"middle\">1</text>"), 2) << "the line and the second";
  Line(2) = WaitTime(100);
  EXPECT_EQ(Count(Picture(), "#waits"), 0);
}

TEST_F(Tracks, LabelsDoNotCollide) {
  constexpr double kLetters = 12;
  Line(1) = Revolution();
  Line(2) = Revolution();
  Line(2).Dir = 1;
  Line(3) = Revolution(1);
  Line(3).Speed = 3;
  Line(4) = Revolution(1);
  Line(4).Dir = 1;
  for (const float speed : {0.05F, 0.3F, 1.0F, 1.7F, 6.0F, 19.0F, 49.0F}) {
    Line(1).Speed = Line(2).Speed = speed;
    Line(2).Accel = Line(2).Decel = Line(1).Accel = Line(1).Decel = 3000;
    auto labels = Labels(Picture(), "end");
    ASSERT_GT(labels.size(), 4U);
    std::ranges::sort(labels, {}, &Label::y);
    for (std::size_t i = 1; i < labels.size(); ++i) {
      EXPECT_GE(labels[i].y - labels[i - 1].y, kLetters) << labels[i].text << " at a speed of " << speed;
    }
  }
}

TEST_F(Tracks, AnHourTakesNoMorePointsThanCanBeSeen) {
  Line(1) = Revolution();
  Line(1).Dist = 2000;
  Line(2) = To(GT, 1);
  const std::string picture = Picture();
  EXPECT_LT(picture.size(), 100000U);
  EXPECT_GT(Count(picture, "<polyline"), 0);
}

TEST_F(Tracks, AnAxisThatHasOnlyJustBegunToMoveIsDrawn) {
  Line(1) = With(SH, 2);
  Line(1).Speed = 1;
  Line(1).Accel = Line(1).Decel = 10;
  EXPECT_TRUE(Picture().ends_with("</svg>\n"));
  const std::string picture = Picture("at 0 axis 1 input 5 low");
  EXPECT_TRUE(picture.ends_with("</svg>\n"));
  EXPECT_EQ(Curves(Picture("at 2 axis 1 input 5 low")).size(), 1U);
}

TEST_F(Tracks, AProgramWithoutAMoveSaysSo) {
  Line(1) = WaitTime(10);
  EXPECT_NE(Picture().find(">No axis moves.</text>"), std::string::npos);
}

TEST_F(Tracks, ThePictureGoesToStandardOutputAlone) {
  Line(1) = Revolution();
  const Outcome outcome = Simulate({}, {"--svg", "-"});
  EXPECT_TRUE(outcome.out.starts_with("<svg ")) << outcome.out;
  EXPECT_TRUE(outcome.out.ends_with("</svg>\n"));
  EXPECT_EQ(Simulate({}, {"--svg", "-", "--json"}).code, 2);
  EXPECT_EQ(Simulate({}, {"--svg", folder.Path("program.TVH")}).code, 4);
}

}  // namespace
}  // namespace tavlo::testing
