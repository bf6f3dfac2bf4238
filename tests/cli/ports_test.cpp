// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <sys/stat.h>

#include "cli/companion.h"
#include "cli/piecewise_feed.h"

namespace tavlo::testing {
namespace {

class Ports : public Companion {
 protected:
  /// The comm links of this test alone.
  void SetUp() override {
    setenv("XDG_RUNTIME_DIR", folder.Path().c_str(), 1);
    comm_folder_ = folder.Path("tavlo-composer");
    std::filesystem::create_directory(comm_folder_);
    for (int comm = 1; comm <= 8; ++comm) {
      if (comm != 5) folder.Write("tavlo-composer/comm" + std::to_string(comm), "");
    }
  }
  [[nodiscard]] std::string Link(int comm) const { return comm_folder_ + "/comm" + std::to_string(comm); }

  std::string comm_folder_;
};

TEST_F(Ports, ListsTheEightCommsWithTheirDevices) {
  folder.Write("tavlo-composer/comm5", "");
  std::string rows;
  for (int comm = 1; comm <= 8; ++comm) {
    rows += "Comm " + std::to_string(comm) + "\t" + Link(comm) + "\tthere\n";
  }
  EXPECT_EQ(Tavlo({"ports"}), (Outcome{0, rows, ""}));
}

TEST_F(Ports, JsonListsTheSame) {
  folder.Write("tavlo-composer/comm5", "");
  const Outcome outcome = Tavlo({"ports", "--json"});
  EXPECT_EQ(outcome.code, 0);
  EXPECT_EQ(outcome.out.substr(0, 10), "{\"ports\":[");
  for (int comm = 1; comm <= 8; ++comm) {
    const std::string row =
        "{\"comm\":" + std::to_string(comm) + ",\"device\":\"" + Link(comm) + "\",\"exists\":true}";
    EXPECT_NE(outcome.out.find(row), std::string::npos) << row;
  }
}

TEST_F(Ports, ACommWithoutALinkStandsForAnotherDeviceOrIsMissing) {
  const Outcome outcome = Tavlo({"ports"});
  EXPECT_EQ(outcome.code, 0);
  const bool missing = outcome.out.find("Comm 5\t" + Link(5) + "\tmissing\n") != std::string::npos;
  const bool other = outcome.out.find("Comm 5\t/dev/") != std::string::npos;
  EXPECT_NE(missing, other) << outcome.out;
}

TEST_F(Ports, ADoubtAboutTheFolderOfTheLinksIsToldForEachCommThatStandsForSomethingElse) {
  std::filesystem::permissions(comm_folder_, std::filesystem::perms(0777));
  const Outcome outcome = Tavlo({"ports"});
  EXPECT_EQ(outcome.code, 0);
  for (int comm = 1; comm <= 8; ++comm) {
    EXPECT_NE(
        outcome.err.find("tavlo: Comm " + std::to_string(comm) + ": others can write in " + comm_folder_ +
                         ", so its link comm" + std::to_string(comm) + " was not followed\n"),
        std::string::npos)
        << outcome.err;
  }
  EXPECT_NE(Tavlo({"ports", "--json"}).out.find("\"doubt\":\"others can write in "), std::string::npos);
}

/// A hub behind a device that has a name.
class PortOfResults : public Companion {
 protected:
  void SetUp() override {
    PutIntoHub();
    hub.device = "/dev/hub7";
  }
};

TEST_F(PortOfResults, EveryResultNamesThePortAndItsDevice) {
  const std::string copy = folder.Path("copy.TVH");
  const std::vector<std::vector<std::string>> commands = {
      {"identify"}, {"download", File()}, {"upload", copy}, {"verify", File()}};
  for (std::vector<std::string> command : commands) {
    command.insert(command.end(), {"--port", "1"});
    const std::string row = "Port: Comm 1 (/dev/hub7)\n";
    const Outcome in_words = Tavlo(command);
    EXPECT_TRUE(in_words.out.ends_with(row)) << command[0] << in_words.out;
    command.emplace_back("--json");
    const Outcome as_json = Tavlo(command);
    EXPECT_TRUE(as_json.out.ends_with(",\"port\":\"Comm 1\",\"device\":\"/dev/hub7\"}\n")) << as_json.out;
    command[command.size() - 2] = "/dev/hub7";
    EXPECT_TRUE(Tavlo(command).out.ends_with(",\"port\":\"/dev/hub7\",\"device\":\"/dev/hub7\"}\n"));
  }
}

TEST_F(PortOfResults, ARunAndATerminalNameThemToo) {
  for (std::vector<std::string> command : {std::vector<std::string>{"run", "--for", "1"}, {"terminal"}}) {
    PiecewiseFeed nothing;
    nothing.ended = true;
    feed = &nothing;
    command.insert(command.end(), {"--port", "1", "--json"});
    const Outcome outcome = Tavlo(command);
    EXPECT_NE(outcome.err.find(" on Comm 1 (/dev/hub7); "), std::string::npos) << outcome.err;
    EXPECT_TRUE(outcome.out.ends_with(",\"port\":\"Comm 1\",\"device\":\"/dev/hub7\"}\n")) << outcome.out;
  }
}

TEST_F(PortOfResults, AHubThatDoesNotAnswerIsToldWithThePortAndItsDevice) {
  hub.port.hub.SetFailure({hubsim::Failure::SilentC, 1});
  for (std::vector<std::string> command : {std::vector<std::string>{"identify"},
                                           {"download", File()},
                                           {"upload", folder.Path("copy.TVH")},
                                           {"verify", File()},
                                           {"run"},
                                           {"terminal"}}) {
    command.insert(command.end(), {"--port", "1"});
    const Outcome outcome = Tavlo(command);
    EXPECT_EQ(outcome.code, 6) << command[0];
    EXPECT_TRUE(outcome.err.ends_with("tavlo: the port is Comm 1 (/dev/hub7)\n")) << outcome.err;
  }
}

TEST_F(PortOfResults, ADeviceThatIsInDoubtIsToldBeforeAnythingElse) {
  hub.doubt = "nobody knows";
  EXPECT_TRUE(
      Tavlo({"identify", "--port", "1"}).err.starts_with("tavlo: Comm 1 is /dev/hub7: nobody knows\n"));
}

}  // namespace
}  // namespace tavlo::testing
