// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
// The companion at a hub that talks when it is asked who it is.
#include "road/talking_hub.h"

#include <cstdio>
#include <random>

#include "cli/companion.h"

namespace tavlo::testing {
namespace {

constexpr int kRunsWhileItTalks = 304;
constexpr unsigned kSeed = 11;

class TalkingHubOfACommand : public Companion {
 protected:
  Outcome On(SimHub& sim, const std::vector<std::string>& arguments) {
    std::ostringstream out;
    std::ostringstream err;
    cli::Environment environment{out, err, false, nullptr, [&](const cli::PortName&) { return sim.Line(); }};
    const cli::ExitCode code = cli::RunTavlo(arguments, environment);
    return {static_cast<int>(code), out.str(), err.str()};
  }

  /// A hub that somebody has left talking. Lines are acknowledged for as long as they were looked at.
  void LeaveTalking(SimHub& sim, Talk talk, double moment) {
    ASSERT_EQ(On(sim, {"download", file_, "--port", "1"}).code, 0);
    const auto pass = [&sim](double seconds) {
      for (const double end = sim.clock.now + seconds; sim.clock.now < end;) {
        sim.port.PassTime(end - sim.clock.now);
        for (const char c : sim.port.Input()) {
          if (static_cast<unsigned char>(c) == 254) sim.port.Output("I");
        }
      }
    };
    static_cast<void>(sim.port.PortOpen(true));
    StartTalk(
        sim.port.hub, talk, [&sim](std::string_view command) { sim.port.Output(command); }, pass);
    pass(moment);
    if (talk == Talk::HalfMessage) sim.port.hub.Say("\xf1\x03");
  }

  /// Runs the command at moments of every kind of talk, with each latency.
  void RunWhileItTalks(const char* name, const std::vector<std::string>& arguments, const Outcome& expected) {
    std::mt19937 random(kSeed);
    std::uniform_real_distribution<double> moment(0, 0.2);
    int runs = 0;
    while (runs < kRunsWhileItTalks && !HasFailure()) {
      for (const Talk talk : kTalks) {
        for (const double latency : kLatencies) {
          SCOPED_TRACE(std::string(NameOf(talk)) + ", latency " + std::to_string(latency) + ", run " +
                       std::to_string(runs));
          hubsim::HubOptions options;
          options.firmware = kTalkersFirmware;
          SimHub sim(options, {true, latency});
          program = {};
          InitHardware(program.Axis);
          InitProg(program);
          WriteTalker(program, talk);
          file_ = File();
          LeaveTalking(sim, talk, moment(random));
          std::vector<std::string> words = arguments;
          words.insert(words.begin() + 1, file_);
          EXPECT_EQ(On(sim, words), expected);
          ++runs;
        }
      }
    }
    std::printf("%s: %d runs against a talking hub, seed %u, no identity misread\n", name, runs, kSeed);
  }

  std::string file_;
};

TEST_F(TalkingHubOfACommand, IsKnownForWhatItIsByVerify) {
  RunWhileItTalks("verify", {"verify", "--port", "1"}, {0, "The hub holds this program\n", ""});
}

TEST_F(TalkingHubOfACommand, IsKnownForWhatItIsByRun) {
  RunWhileItTalks("run", {"run", "--port", "1", "--for", "0", "--no-status"},
                  {0, "", "tavlo: the program runs; Ctrl-C stops it\n"});
}

}  // namespace
}  // namespace tavlo::testing
