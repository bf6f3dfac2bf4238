// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <sys/stat.h>

#include "cli/companion.h"

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

}  // namespace
}  // namespace tavlo::testing
