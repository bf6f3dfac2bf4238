// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <fstream>
#include <iterator>
#include <regex>
#include <set>

#include "cli/companion.h"
#include "model/kinds.h"

namespace tavlo::testing {
namespace {

std::string TextOf(const std::string& path) {
  std::ifstream file(std::string(TAVLO_SOURCE_DIR) + "/" + path);
  EXPECT_TRUE(file) << path;
  return {std::istreambuf_iterator<char>(file), {}};
}

/// A manual page with its escaped hyphens as they print.
std::string ManualPage() {
  std::string text = TextOf("packaging/tavlo.1");
  std::erase(text, '\\');
  return text;
}

/// What a command's help lists: commands of the whole, or options.
std::set<std::string> Listed(const std::string& help, const std::string& pattern) {
  std::set<std::string> found;
  const std::regex row(pattern);
  for (std::sregex_iterator match(help.begin(), help.end(), row), end; match != end; ++match) {
    found.insert((*match)[1]);
  }
  return found;
}

class Documents : public Companion {
 protected:
  std::set<std::string> Commands() { return Listed(Tavlo({"--help"}).out, "\n  ([a-z]+) +[A-Z]"); }
};

TEST_F(Documents, TellEveryCommandAndEveryOption) {
  const std::string guide = TextOf("docs/command-line.md");
  const std::string page = ManualPage();
  const std::set<std::string> commands = Commands();
  ASSERT_EQ(commands.size(), 17U);
  for (const std::string& command : commands) {
    EXPECT_NE(guide.find("\ntavlo " + command), std::string::npos) << command;
    EXPECT_NE(page.find(".B tavlo " + command), std::string::npos) << command;
    EXPECT_NE(page.find(".TP\n.B " + command + "\n"), std::string::npos) << command;
    for (const std::string& option : Listed(Tavlo({"help", command}).out, "(--[a-z-]+)")) {
      if (option == "--help") continue;
      EXPECT_NE(guide.find('`' + option), std::string::npos) << command << ' ' << option;
      EXPECT_NE(page.find(option), std::string::npos) << command << ' ' << option;
    }
  }
}

TEST_F(Documents, ListEveryMnemonic) {
  const std::string guide = TextOf("docs/command-line.md");
  for (int type = 0; type < kTypes; ++type) {
    EXPECT_NE(guide.find("| `" + std::string(Mnemonic(type)) + "` | "), std::string::npos) << Mnemonic(type);
  }
}

TEST_F(Documents, ListEveryCodeOfALineOnTheWire) {
  const std::string page = TextOf("docs/hub-protocol.md");
  for (int type = 0; type < kTypes; ++type) {
    const std::regex row("\\| " + std::to_string(type) + " \\| [a-z ]+ \\| [0-9bw]");
    EXPECT_TRUE(std::regex_search(page, row)) << "no row of code " << type << ", " << Mnemonic(type);
  }
}

TEST_F(Documents, TellWhatStopsAMachineAndHowAWaitReads) {
  const std::string guide = TextOf("docs/command-line.md");
  for (const char* words : {"## What stops a machine", "`Wait 0.05 seconds`", "TAVLO_PORT"}) {
    EXPECT_NE(guide.find(words), std::string::npos) << words;
  }
  const std::string page = ManualPage();
  for (const char* section : {".SH ENVIRONMENT", ".SH EXAMPLES"}) {
    EXPECT_NE(page.find(section), std::string::npos) << section;
  }
}

}  // namespace
}  // namespace tavlo::testing
