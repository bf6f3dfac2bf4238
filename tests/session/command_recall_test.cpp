// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "session/command_recall.h"

#include <gtest/gtest.h>

namespace tavlo {
namespace {

TEST(CommandRecall, WalksFromTheNewestToTheOldestAndBackToWhatWasBeingWritten) {
  CommandRecall recall;
  EXPECT_EQ(recall.Older("draft"), std::nullopt);
  EXPECT_EQ(recall.Newer(), std::nullopt);
  for (const char* command : {"1VE5", "1DI4000", "1FL"}) recall.Add(command);
  EXPECT_EQ(recall.Newer(), std::nullopt);
  EXPECT_EQ(recall.Older("2V"), "1FL");
  EXPECT_EQ(recall.Older("1FL"), "1DI4000");
  EXPECT_EQ(recall.Older("1DI4000"), "1VE5");
  EXPECT_EQ(recall.Older("1VE5"), std::nullopt);
  EXPECT_EQ(recall.Newer(), "1DI4000");
  EXPECT_EQ(recall.Newer(), "1FL");
  EXPECT_EQ(recall.Newer(), "2V");
  EXPECT_EQ(recall.Newer(), std::nullopt);
}

TEST(CommandRecall, WhatIsEnteredEndsTheWalk) {
  CommandRecall recall;
  recall.Add("a");
  recall.Add("b");
  EXPECT_EQ(recall.Older(""), "b");
  EXPECT_EQ(recall.Older("b"), "a");
  recall.Add("a");
  EXPECT_EQ(recall.Older(""), "a");
  EXPECT_EQ(recall.Older("a"), "b");
}

TEST(CommandRecall, KeepsNeitherEmptyCommandsNorTheSameOneTwiceInARow) {
  CommandRecall recall;
  for (const char* command : {"a", "a", "", "a"}) recall.Add(command);
  EXPECT_EQ(recall.Older(""), "a");
  EXPECT_EQ(recall.Older("a"), std::nullopt);
}

TEST(CommandRecall, KeepsTheLastHundred) {
  CommandRecall recall;
  for (int i = 1; i <= 130; ++i) recall.Add(std::to_string(i));
  std::string oldest;
  int count = 0;
  while (const auto command = recall.Older("")) {
    oldest = *command;
    ++count;
  }
  EXPECT_EQ(count, 100);
  EXPECT_EQ(oldest, "31");
}

}  // namespace
}  // namespace tavlo
