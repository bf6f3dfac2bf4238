// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <nlohmann/json.hpp>

#include "cli/companion.h"
#include "codegen/compile.h"

namespace tavlo::testing {
namespace {

using hubsim::Failure;

const std::string kNotCorrect =
    "Your program did not upload correctly.  Make sure the cable connections are secure and that you are not "
    "working around electrical noise, such as a welder, a high powered motor or big relays.\n";

std::string StoppedAfter(int count) {
  return "The Tavlo Hub stopped responding after " + std::to_string(count) +
         " chars.  Is it connected to the right port and turned on?\n";
}

class UploadCommand : public Companion {
 protected:
  UploadCommand() {
    Line(1).Type = FL;
    Line(1).Dist = 12345;
    Line(2).Type = MMI;
    Line(2).SubType = DisplayOnly;
    Line(2).Text = "Ready";
    program.Axis.AxisName[0] = "Lift";
  }
  Outcome Upload(std::vector<std::string> more = {}) {
    std::vector<std::string> arguments = {"upload", Copy(), "--port", "1"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return Tavlo(arguments);
  }
  [[nodiscard]] std::string Copy() const { return folder.Path("copy.TVH"); }
  [[nodiscard]] std::string HubImage() const {
    const auto memory = hub.port.hub.MemoryImage();
    return {memory.begin(), memory.end()};
  }
};

TEST_F(UploadCommand, WritesTheHubsProgramToAFile) {
  PutIntoHub();
  EXPECT_EQ(Upload(),
            (Outcome{0, "Uploaded 2 lines from the Tavlo Hub-Octo, firmware 1.38, to " + Copy() + "\n", ""}));
  EXPECT_EQ(hub.port.sent, "SCCUC");
  EXPECT_EQ(Tavlo({"show", Copy()}).out, Tavlo({"show", File()}).out);
  EXPECT_EQ(Tavlo({"compile", Copy(), "-o", folder.Path("image")}).code, 0);
  EXPECT_TRUE(folder.Read("image") == HubImage());
}

TEST_F(UploadCommand, JsonGivesWhatWasRead) {
  PutIntoHub();
  const Outcome outcome = Upload({"--json"});
  EXPECT_EQ(outcome.code, 0);
  const auto json = nlohmann::ordered_json::parse(outcome.out);
  EXPECT_EQ(json.dump(), "{\"firmware\":\"1.38\",\"model\":\"Tavlo Hub-Octo\",\"lineCount\":2,\"file\":\"" +
                             Copy() + "\",\"seconds\":" + json["seconds"].dump() + "}");
  EXPECT_GE(json["seconds"].get<double>(), 0);
}

TEST_F(UploadCommand, TheFileOfAHubOfFourAxesIsForThatModel) {
  QuadCompanion quad;
  program.HubIndex = HubQuad;
  Line(3).Type = WI;
  Line(3).Drive = kHubQuadIO;
  ASSERT_EQ(cli::RunTavlo({"download", File(), "--port", "1"}, quad.environment), cli::ExitCode::Done);
  ASSERT_EQ(cli::RunTavlo({"upload", Copy(), "--port", "1"}, quad.environment), cli::ExitCode::Done);
  EXPECT_NE(Tavlo({"show", Copy()}).out.find("3\tHub:Wait for Input 1"), std::string::npos);
  EXPECT_NE(quad.out.str().find("from the Hub Quad, firmware 1.38"), std::string::npos);
}

TEST_F(UploadCommand, AFileThatIsThereIsReplacedAndNothingOfItComesThrough) {
  Program other = program;
  other.Axis.StepResCode[0] = 5;
  other.Prog[9].Type = CM;
  other.Prog[9].Text = "of another program";
  folder.Write("copy.TVH", WriteHubProg(other, 0));
  PutIntoHub();
  EXPECT_EQ(Upload().code, 0);
  const std::string replaced = folder.Read("copy.TVH");
  std::filesystem::remove(Copy());
  EXPECT_EQ(Upload().code, 0);
  EXPECT_TRUE(replaced == folder.Read("copy.TVH"));
}

TEST_F(UploadCommand, EachFailureIsToldByItsExitCodeAndLeavesTheFileThatIsThere) {
  struct Row {
    Failure mode;
    int at;
    int code;
    std::string message;
  };
  const std::string silent =
      "Communication Error: The Tavlo Hub is not communicating.  Is it connected to the right port and "
      "turned "
      "on?  Perhaps cycling power will help.\n";
  const std::vector<Row> rows = {
      {Failure::SilentU, 1, 6, StoppedAfter(0)},
      {Failure::ShortU, 8193, 6, StoppedAfter(8193)},
      {Failure::WrongU, 1, 7, kNotCorrect},
      {Failure::SilentC, 1, 6, kGivesTime + silent},
  };
  PutIntoHub();
  folder.Write("copy.TVH", "what is there");
  for (const Row& row : rows) {
    hub.clock.now += 10;
    hub.port.hub.SetFailure({row.mode, row.at});
    EXPECT_EQ(Upload(), (Outcome{row.code, "", row.message})) << hubsim::RowOf(row.mode).name;
    EXPECT_EQ(folder.Read("copy.TVH"), "what is there");
  }
  hub.clock.now += 10;
  hub.port.hub.SetFailure({});
  EXPECT_EQ(Upload().code, 0) << "the next one goes through";
}

TEST_F(UploadCommand, BytesThatNoLineCanHaveAreToldAndNothingIsWritten) {
  Line(1).Type = SO;
  Line(1).State = 2;
  Line(1).Time = 5000;
  PutIntoHub();
  EXPECT_EQ(Upload(), (Outcome{6, "", kNotCorrect}));
  EXPECT_FALSE(std::filesystem::exists(Copy()));
}

TEST_F(UploadCommand, ADriveModelThatThereIsNotIsToldAndTheProgramKeptAllTheSame) {
  // No command sends such a program: it goes to the hub by hand.
  program.Axis.DriveModel[2] = 77;
  program.HubVersion = 1.38F;
  const CompiledProgram compiled = CompileProgram(program);
  ASSERT_EQ(hub.port.PortOpen(true).Why(), "");
  hub.port.Output("S");
  hub.port.Output("F");
  for (const std::string& line : compiled.lines) hub.port.Output(line);
  hub.port.Output(compiled.system);
  hub.port.Output(compiled.pool);
  ASSERT_EQ(hub.port.PortOpen(false).Why(), "");
  const Outcome outcome = Upload();
  EXPECT_EQ(outcome.code, 0);
  EXPECT_EQ(outcome.err, "tavlo: " + Copy() + ": axis 3 has the drive model 77, which there is not\n");
  EXPECT_NE(folder.Read("copy.TVH").find("\r\n77,"), std::string::npos);
}

TEST_F(UploadCommand, ACableThatComesOffIsToldAsTheLossOfThePort) {
  PutIntoHub();
  hub.port.hub.SetFailure({Failure::UnplugTx, 1000});
  const Outcome outcome = Upload();
  EXPECT_EQ(outcome.code, 5);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.err, "tavlo: the port has gone; check the cable\n");
  EXPECT_FALSE(std::filesystem::exists(Copy()));
}

TEST_F(UploadCommand, AnInterruptionWritesNothing) {
  PutIntoHub();
  hub.port.hub.SetFailure({Failure::SilentU, 1});
  hub.InterruptIn(0.3);
  EXPECT_EQ(Upload(), (Outcome{130, "",
                               "tavlo: the hub sends on to the end of its memory; leave it alone for five "
                               "seconds\ntavlo: interrupted\n"}));
  EXPECT_FALSE(std::filesystem::exists(Copy()));
}

TEST_F(UploadCommand, AFileThatCannotBeWrittenEndsWithFourAndSaysWhy) {
  PutIntoHub();
  const std::string file = folder.Path("no/such/folder/copy.TVH");
  EXPECT_EQ(Tavlo({"upload", file, "--port", "1"}),
            (Outcome{4, "", "tavlo: cannot write " + file + ": No such file or directory\n"}));
}

TEST_F(UploadCommand, ATerminalSeesTheBarAndThenNothingOfIt) {
  PutIntoHub();
  err_is_terminal = true;
  const Outcome outcome = Upload();
  EXPECT_NE(outcome.err.find("[##############################] program, 0 s left"), std::string::npos);
  EXPECT_EQ(outcome.err.substr(outcome.err.size() - 4), "\r\x1b[K");
}

}  // namespace
}  // namespace tavlo::testing
