// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "cli/sim_line.h"
#include "cli/tavlo.h"
#include "model/program_file.h"
#include "support/temp_folder.h"

namespace tavlo::testing {

/// What is told while a hub that does not answer is given its time.
inline const std::string kGivesTime =
    "tavlo: the hub does not answer; an interrupted command may have left it waiting for more: giving it "
    "time\n"
    "tavlo: taking the hub out of the drives' passthrough, in case it is still in it\n";

/// What is told when a program begins to run.
inline const std::string kRuns = "tavlo: the program runs; Ctrl-C stops it\n";

/// What a command left behind.
struct Outcome {
  int code = 0;
  std::string out;
  std::string err;
  bool operator==(const Outcome&) const = default;
};

inline void PrintTo(const Outcome& outcome, std::ostream* out) {
  *out << "exit " << outcome.code << "\nout: " << outcome.out << "err: " << outcome.err;
}

/// The companion in this process, its hub in memory.
class Companion : public ::testing::Test {
 protected:
  Companion() {
    InitHardware(program.Axis);
    InitProg(program);
  }

  Instruction& Line(int number) { return program.Prog[number - 1]; }

  /// Writes the program to a file and gives its name.
  std::string File(const std::string& name = "program.TVH") {
    return folder.Write(name, WriteHubProg(program, 0));
  }

  Outcome Tavlo(const std::vector<std::string>& arguments) {
    std::ostringstream out;
    std::ostringstream err;
    cli::Environment environment{out,
                                 err,
                                 err_is_terminal,
                                 read_line,
                                 [this](const cli::PortName& name) {
                                   hub.name = name;
                                   return hub.Line();
                                 },
                                 feed};
    const cli::ExitCode code = cli::RunTavlo(arguments, environment);
    return {static_cast<int>(code), out.str(), err.str()};
  }

  /// Puts the program into the hub and forgets what passed over the line.
  void PutIntoHub() {
    ASSERT_EQ(Tavlo({"download", File(), "--port", "1"}).code, 0);
    hub.port.sent.clear();
  }

  TempFolder folder;
  Program program;
  SimHub hub;
  bool err_is_terminal = false;
  std::function<std::optional<std::string>()> read_line;
  cli::Feed* feed = nullptr;
};

/// What the companion runs in before a hub of four axes, and what it has said there.
struct QuadCompanion {
  static hubsim::HubOptions Options() {
    hubsim::HubOptions options;
    options.model = hubsim::HubModel::Quad;
    return options;
  }
  SimHub hub{Options()};
  std::ostringstream out;
  std::ostringstream err;
  cli::Environment environment{out, err, false, nullptr, [this](const cli::PortName&) { return hub.Line(); }};
};

}  // namespace tavlo::testing
