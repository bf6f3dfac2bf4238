// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <nlohmann/json.hpp>

#include "cli/companion.h"

namespace tavlo::testing {
namespace {

using hubsim::Failure;

class Identify : public Companion {
 protected:
  Outcome IdentifyHub(const std::string& more = "--port=1") {
    return Tavlo({"identify", "--port", "1", more});
  }
};

TEST_F(Identify, PrintsModelFirmwareAndTheDrivesOfEachAxis) {
  program.Axis.DriveModel[0] = 15;
  program.Axis.DriveModel[1] = 30;
  for (int axis = 2; axis < 8; ++axis) program.Axis.DriveModel[axis] = 0;
  PutIntoHub();
  hub.port.hub.SetFailure({Failure::MissingDrive, 2});
  EXPECT_EQ(Tavlo({"identify", "--port", "1"}), (Outcome{0,
                                                         "Tavlo Hub-Octo, firmware 1.38\n"
                                                         "Axis  Expected        Plugged in      Firmware\n"
                                                         "1     Zenu-A-p        Zenu-A-p        2.00\n"
                                                         "2     Pelmar-L-x      none            -\n"
                                                         "3     none            none            -\n"
                                                         "4     none            none            -\n"
                                                         "5     none            none            -\n"
                                                         "6     none            none            -\n"
                                                         "7     none            none            -\n"
                                                         "8     none            none            -\n",
                                                         ""}));
  EXPECT_EQ(hub.port.sent, "SCDR") << "to a prompt the question would be a key";
}

TEST_F(Identify, AsksAHubAtAPromptOnlyBehindAStop) {
  Line(1).Type = MMI;
  Line(1).SubType = WaitEnter;
  Line(1).Text = "Jog to the mark";
  Line(1).JogOn = Line(1).JogLR = true;
  Line(1).JogLRDrive = 0;
  Line(1).JogLRSpeed = 1;
  Line(1).JogLRAccel = 100;
  PutIntoHub();
  for (const bool stop : {true, false}) {
    hub.port.Output("M");
    hub.clock.now += 1;
    hub.port.hub.Advance(hub.clock.now);
    hub.port.Output("I");
    ASSERT_EQ(hub.port.hub.Waits(), hubsim::WaitsFor::Enter);
    std::vector<std::string> arguments = {"identify", "--port", "1"};
    if (!stop) arguments.emplace_back("--no-stop");
    hub.port.sent.clear();
    const double before = hub.port.hub.Axis(0).position_steps;
    EXPECT_EQ(Tavlo(arguments).code, stop ? 0 : 6);
    EXPECT_EQ(hub.port.hub.Axis(0).position_steps == before, stop) << "the axis moves";
    EXPECT_TRUE(stop ? hub.port.sent.ends_with("SCDR") : hub.port.sent == "C") << hub.port.sent;
    EXPECT_EQ(hub.port.sent.front(), stop ? 'S' : 'C') << "to the prompt the question would be a key";
  }
}

TEST_F(Identify, JsonGivesNamesAndCodes) {
  program.Axis.DriveModel[0] = 15;
  for (int axis = 1; axis < 8; ++axis) program.Axis.DriveModel[axis] = 0;
  PutIntoHub();
  const Outcome outcome = Tavlo({"identify", "--port", "1", "--json"});
  EXPECT_EQ(outcome.code, 0);
  EXPECT_EQ(outcome.err, "");
  const std::string start =
      "{\"model\":\"Tavlo Hub-Octo\",\"modelCode\":8,\"firmware\":\"1.38\",\"axes\":["
      "{\"axis\":1,\"expectedCode\":15,\"expected\":\"Zenu-A-p\",\"pluggedCode\":15,\"plugged\":\"Zenu-A-p\","
      "\"firmware\":\"2.00\"},"
      "{\"axis\":2,\"expectedCode\":0,\"expected\":\"none\",\"pluggedCode\":0,\"plugged\":\"none\","
      "\"firmware\":null},";
  EXPECT_EQ(outcome.out.substr(0, start.size()), start);
  EXPECT_EQ(nlohmann::json::parse(outcome.out)["axes"].size(), 8u);
}

TEST_F(Identify, AHubOfFourAxesHasFourRows) {
  QuadCompanion quad;
  EXPECT_EQ(cli::RunTavlo({"identify", "--port", "1"}, quad.environment), cli::ExitCode::Done);
  EXPECT_EQ(quad.out.str().substr(0, 24), "Hub Quad, firmware 1.38\n");
  EXPECT_EQ(std::ranges::count(quad.out.str(), '\n'), 6);
}

TEST_F(Identify, AHubThatDoesNotAnswerOrAnswersWronglyIsToldAndEndsWithSix) {
  struct Row {
    Failure mode;
    std::string message;
  };
  const std::string silent =
      "Communication Error: The Tavlo Hub is not communicating.  Is it connected to the right port and "
      "turned "
      "on?  Do you have the right comm port selected?  Perhaps cycling power will help.";
  const std::string no_drives =
      "The Tavlo Hub is not responding to the D command.  Is it connected to the right port and turned on?";
  const std::string no_revisions =
      "The Tavlo Hub is not responding (R).  Is it connected to the right port and turned on?";
  const std::vector<Row> rows = {
      {Failure::SilentC, kGivesTime + silent},
      {Failure::OneByteC, kGivesTime + silent},
      {Failure::UnknownModel, "tavlo: the device answers as model 16, which is no known hub"},
      {Failure::SilentD, no_drives},
      {Failure::ShortD, no_drives},
      {Failure::SilentR, no_revisions},
      {Failure::ShortR, no_revisions},
  };
  for (const Row& row : rows) {
    hub.port.hub.SetFailure({row.mode, 1});
    EXPECT_EQ(Tavlo({"identify", "--port", "1"}), (Outcome{6, "", row.message + "\n"}))
        << hubsim::RowOf(row.mode).name;
  }
}

TEST_F(Identify, ADriveThatNoListKnowsIsShownAsSuch) {
  program.Axis.DriveModel[0] = 15;
  PutIntoHub();
  hub.port.hub.SetFailure({Failure::UnknownDrive, 1});
  const Outcome outcome = Tavlo({"identify", "--port", "1"});
  EXPECT_EQ(outcome.code, 0);
  EXPECT_NE(outcome.out.find("1     Zenu-A-p        unknown type    2.00\n"), std::string::npos)
      << outcome.out;
}

}  // namespace
}  // namespace tavlo::testing
