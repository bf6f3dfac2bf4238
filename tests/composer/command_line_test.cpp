// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <string>

#include "model/program_file.h"

namespace tavlo {
namespace {

struct Outcome {
  std::string text;
  int exit_code;
};

/// The real program where no display is. `stream` is what of it to read; the other one must stay empty.
Outcome RunWithoutADisplay(const std::string& arguments, const std::string& redirection) {
  const std::string command =
      "env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM -u QT_QPA_PLATFORMTHEME '" +
      std::string(TAVLO_COMPOSER) + "' " + arguments + " " + redirection;
  std::FILE* pipe = popen(command.c_str(), "r");
  if (pipe == nullptr) throw std::runtime_error("no shell");
  Outcome outcome{};
  std::array<char, 4096> part{};
  while (const std::size_t count = std::fread(part.data(), 1, part.size(), pipe)) {
    outcome.text.append(part.data(), count);
  }
  const int status = pclose(pipe);
  outcome.exit_code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  return outcome;
}

constexpr const char* kOnlyErrors = "2>&1 >/dev/null";
constexpr const char* kBoth = "2>&1";

TEST(ComposerCommandLine, TellsItsVersionWithoutADisplay) {
  const Outcome outcome = RunWithoutADisplay("--version", kBoth);
  EXPECT_EQ(outcome.text, "tavlo-composer " + VersionTextOf(kVersion) + "\n");
  EXPECT_EQ(outcome.exit_code, 0);
  EXPECT_EQ(RunWithoutADisplay("--version", kOnlyErrors).text, "");
}

TEST(ComposerCommandLine, HelpNamesEveryOptionWithoutADisplay) {
  for (const char* option :
       {"--help", "-h", "-style Fusion --help", "--platform=xcb -reverse -h --nonsense"}) {
    const Outcome outcome = RunWithoutADisplay(option, kBoth);
    EXPECT_EQ(outcome.text.rfind("Usage: tavlo-composer", 0), 0U) << option << outcome.text;
    EXPECT_NE(outcome.text.find("--help"), std::string::npos);
    EXPECT_NE(outcome.text.find("--version"), std::string::npos);
    EXPECT_EQ(outcome.exit_code, 0) << option;
  }
}

TEST(ComposerCommandLine, WhatItDoesNotKnowIsNamedAndEndsItWithTwo) {
  struct Case {
    const char* arguments;
    const char* says;
  };
  for (const Case& c :
       {Case{"--nonsense", "there is no option --nonsense"}, Case{"-x --help", "there is no option -x"},
        Case{"--", "there is no option --"}, Case{"-", "there is no option -"},
        Case{"--help=1", "there is no option --help=1"}, Case{"---style x", "there is no option ---style"},
        Case{"a.TVH -reverse b.TVH", "only one program can be opened, and b.TVH is another"},
        Case{"a.TVH --nonsense", "there is no option --nonsense"}, Case{"''", "there is no option "}}) {
    const Outcome outcome = RunWithoutADisplay(c.arguments, kOnlyErrors);
    EXPECT_EQ(outcome.text.rfind(std::string("tavlo-composer: ") + c.says, 0), 0U)
        << c.arguments << ": " << outcome.text;
    EXPECT_EQ(outcome.exit_code, 2) << c.arguments;
  }
}

TEST(ComposerCommandLine, AnAnswerThatCannotBeWrittenIsAFailure) {
  EXPECT_EQ(RunWithoutADisplay("--version", ">/dev/full").exit_code, 1);
}

}  // namespace
}  // namespace tavlo
