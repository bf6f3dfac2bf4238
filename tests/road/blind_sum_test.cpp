// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
// Changes that a 16-bit sum of bytes cannot see. They are the wire's, told in docs/hub-protocol.md; each test
// shows that nothing else stands in their way, so that nobody takes the proof for more than it is.
#include <gtest/gtest.h>

#include "codegen/compile.h"
#include "codegen/one_line.h"
#include "link/download.h"
#include "link/upload.h"
#include "road/faulty_line.h"
#include "support/send_program.h"

namespace tavlo::testing {
namespace {

constexpr float kUsualFirmware = 1.38F;
/// Where the distance of the first line stands: behind "F" in a download, behind the slot's first byte in a
/// memory.
constexpr std::size_t kFirstLine = 1;

/// A session with a feed on its first line and a prompt on its second.
struct BlindDesk : FaultyDesk {
  BlindDesk() {
    Line(0).Type = FL;
    Line(0).Dist = 70000;
    Line(1).Type = CM;
    Line(1).Text = "a text";
    source.program.HubVersion = kUsualFirmware;
    Program copy = source.program;
    image = ImageOf(CompileProgram(copy));
  }
  std::string image;
};

void SwapTwo(std::string& bytes, std::size_t at) {
  std::swap(bytes[at], bytes[at + 1]);
}
void OneUpOneDown(std::string& bytes, std::size_t at) {
  ++bytes[at];
  --bytes[at + 1];
}

using Change = void (*)(std::string& bytes, std::size_t at);
constexpr std::array<Change, 2> kChanges = {SwapTwo, OneUpOneDown};

TEST(BlindSum, TwoChangesOfALineThatCancelPassADownload) {
  for (const Change change : kChanges) {
    BlindDesk d;
    d.line.garble = [&](Way way, std::size_t first, std::string& bytes) {
      if (way == Way::ToHub && first == kFirstLine) change(bytes, bytes.find('\x11'));
    };
    EXPECT_EQ(SendProgram(d.road, kUsualFirmware), DownloadResult::Done);
    EXPECT_TRUE(d.boxes.shown.empty());
    EXPECT_FALSE(d.ImageInHub() == d.image);
  }
}

TEST(BlindSum, TwoChangesOfALineThatCancelPassAnUpload) {
  for (const Change change : kChanges) {
    BlindDesk d;
    ASSERT_EQ(SendProgram(d.road, kUsualFirmware), DownloadResult::Done);
    d.line.garble = [&](Way way, std::size_t, std::string& bytes) {
      if (way == Way::FromHub && bytes.size() == kUploadBytes) change(bytes, bytes.find('\x11'));
    };
    EXPECT_EQ(UploadProg(d.road, kUsualFirmware), UploadResult::Done);
    EXPECT_TRUE(d.boxes.shown.empty());
    EXPECT_NE(d.source.program.Prog[0].Dist, 70000);
  }
}

TEST(BlindSum, OneChangeAloneIsSeen) {
  BlindDesk d;
  d.line.garble = [&](Way way, std::size_t first, std::string& bytes) {
    if (way == Way::ToHub && first == kFirstLine) ++bytes[bytes.find('\x11')];
  };
  EXPECT_EQ(SendProgram(d.road, kUsualFirmware), DownloadResult::WrongSum);
  d.line.garble = nullptr;
  ASSERT_EQ(SendProgram(d.road, kUsualFirmware), DownloadResult::Done);
  d.line.garble = [&](Way way, std::size_t, std::string& bytes) {
    if (way == Way::FromHub && bytes.size() == kUploadBytes) ++bytes[bytes.find('\x11')];
  };
  EXPECT_EQ(UploadProg(d.road, kUsualFirmware), UploadResult::WrongSum);
}

TEST(BlindSum, AZeroTooManyInATextPassesADownload) {
  BlindDesk d;
  d.line.garble = [&](Way way, std::size_t, std::string& bytes) {
    if (way != Way::ToHub) return;
    if (const std::size_t at = bytes.find("text"); at != std::string::npos) bytes.insert(at, 1, '\0');
  };
  EXPECT_EQ(SendProgram(d.road, kUsualFirmware), DownloadResult::Done);
  EXPECT_TRUE(d.boxes.shown.empty());
  EXPECT_FALSE(d.ImageInHub() == d.image);
}

}  // namespace
}  // namespace tavlo::testing
