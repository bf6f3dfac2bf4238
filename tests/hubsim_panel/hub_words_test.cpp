// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/panel/hub_words.h"

#include <gtest/gtest.h>

#include "hubsim/mount/device_link.h"
#include "hubsim/program/line_codes.h"
#include "hubsim/wire_lines.h"

namespace tavlo::hubsim {
namespace {

constexpr std::uint8_t kFirmware = 38;

std::array<std::uint8_t, kSlotSize> SlotOf(const std::string& line) {
  std::array<std::uint8_t, kSlotSize> slot{};
  std::copy(line.begin(), line.end(), slot.begin());
  return slot;
}

TEST(HubWords, TheTitleNamesTheCommOrElseTheLink) {
  const std::string folder = RuntimeFolder();
  EXPECT_EQ(TitleWords(folder + "/comm1"), "Simulated hub on Comm 1");
  EXPECT_EQ(TitleWords(CommLink(8)), "Simulated hub on Comm 8");
  for (const std::string& path : {folder + "/comm0", folder + "/comm9", std::string("/tmp/comm1")}) {
    EXPECT_EQ(TitleWords(path), "Simulated hub on " + path);
  }
}

TEST(HubWords, EachStateHasItsWord) {
  EXPECT_EQ(StateWords(HubState::Idle, {}), "idle");
  EXPECT_EQ(StateWords(HubState::Downloading, {}), "downloading");
  EXPECT_EQ(StateWords(HubState::Running, 11), "running line 12");
  EXPECT_EQ(StateWords(HubState::Running, {}), "running");
  EXPECT_EQ(StateWords(HubState::Paused, 0), "paused in line 1");
  EXPECT_EQ(StateWords(HubState::Paused, {}), "paused");
  EXPECT_EQ(StateWords(HubState::Ended, {}), "ended");
  EXPECT_EQ(StateWords(HubState::Halted, {}), "halted");
  EXPECT_EQ(StateWords(HubState::Passthrough, {}), "passthrough to the drives");
}

TEST(HubWords, ALineIsToldWithItsAxis) {
  EXPECT_EQ(LineWords(SlotOf(FeedLength({.axis = 2})), kFirmware), "feed to length, axis 3");
  EXPECT_EQ(LineWords(SlotOf(FeedLength({.axis = 0, .wait = kProceed})), kFirmware),
            "feed to length, axis 1");
  EXPECT_EQ(LineWords(SlotOf(WaitTime(100)), kFirmware), "wait time");
  EXPECT_EQ(LineWords(SlotOf(Empty()), kFirmware), "empty");
}

TEST(HubWords, ASlotThatWasNeverFilledIsNothing) {
  EXPECT_EQ(LineWords(SlotOf({}), kFirmware), "nothing");
  EXPECT_TRUE(LineBytes(SlotOf({}), kFirmware).empty());
}

TEST(HubWords, EveryFirstByteHasWordsAndALength) {
  for (int first = 0; first < 256; ++first) {
    const auto slot = SlotOf(Bytes({first, 9, 127, 255}));
    EXPECT_FALSE(LineWords(slot, kFirmware).empty()) << first;
    const std::size_t size = LineBytes(slot, kFirmware).size();
    EXPECT_GE(size, 1U) << first;
    EXPECT_LE(size, static_cast<std::size_t>(kSlotSize)) << first;
    EXPECT_EQ(LineWords(slot, kFirmware) == "no known line", (first & kCodeMask) >= kLineCodes) << first;
  }
}

TEST(HubWords, OnlyTheBytesOfTheLineAreShown) {
  const auto slot = SlotOf(WaitTime(300));
  EXPECT_EQ(HexWords(LineBytes(slot, kFirmware)), "04 01 2c");
}

TEST(HubWords, ThePoolIsARowAText) {
  std::array<std::uint8_t, kMemorySize> memory{};
  const std::string pool =
      "Width\xFF"
      "2\x1B"
      "E\xFF"
      "\xB5m";
  std::copy(pool.begin(), pool.end(), memory.begin() + kPoolOffset);
  EXPECT_EQ(PoolText(memory), "   0  Width\n   6  2\\x1bE\n  10  \xB5m");
  EXPECT_EQ(PoolText(std::array<std::uint8_t, kMemorySize>{}), "");
}

TEST(HubWords, APoolWithoutAnEndStopsAtTheMemorysEnd) {
  std::array<std::uint8_t, kMemorySize> memory{};
  std::fill(memory.begin() + kPoolOffset, memory.end(), static_cast<std::uint8_t>('x'));
  EXPECT_EQ(PoolText(memory).size(), 6U + kPoolSize);
}

TEST(HubWords, TheSettingsAreTwoRowsAnAxis) {
  std::array<std::uint8_t, kMemorySize> memory{};
  memory[kSystemOffset + 32 + 16] = 0xAB;
  const std::string text = SettingsText(memory);
  EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 15);
  const std::string second = text.substr(text.find("Axis 2"));
  EXPECT_EQ(second.substr(second.find('\n') + 1, 10), "        ab");
}

}  // namespace
}  // namespace tavlo::hubsim
