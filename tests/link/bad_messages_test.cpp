// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
// A line that carries anything: every header with every payload that matters, and broken streams of them.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "link/hub_messages.h"
#include "link/receive.h"
#include "link/scripted_hub.h"

namespace tavlo::testing {
namespace {

/// Payload values at which something can change: axes and the next behind them, ends of nibbles, of the 200
/// lines and of 7 bits.
constexpr std::array kPayloads = {0, 1, 7, 8, 9, 12, 15, 16, 63, 64, 126, 127};

/// What a header must do, written down apart from the table that does it.
bool Acknowledged(int header) {
  return header == 254 || header == 236;
}

bool ShowsBox(int header, int b2, int b3) {
  const bool axis_exists = b2 < 8;
  switch (header) {
    case 255: return b3 != 8 && b3 != 24;
    case 252:
    case 250:
    case 249:
    case 240:
    case 212: return axis_exists;
    case 251:
    case 239:
    case 238: return true;
    default: return false;
  }
}

int RowsPainted(int header, int b2, int b3, bool stopped) {
  const bool paints = (header == 254 || header == 236 || header == 237) && !stopped;
  return paints && b2 * 16 + b3 < kLines ? 1 : 0;
}

int AxesPainted(int header, RunWindow window) {
  const bool status = (header >= 241 && header <= 248) || (header >= 221 && header <= 228) ||
                      (header >= 213 && header <= 220);
  return status && window != RunWindow::None ? 1 : 0;
}

/// A desk that answers No to every question and counts what breaks a rule.
struct WatchedDesk : FakeDesk {
  WatchedDesk() {
    port.OnComm = [this] { NewOnComm(desk); };
    boxes.on_box = [this](const ShownBox& box) {
      if (box.buttons == Buttons::YesNo) boxes.setNextAnswer(Answer::No);
    };
  }

  void Forget() {
    ForgetShown();
    port.sent.clear();
  }

  [[nodiscard]] bool OutOfRange() const {
    const auto bad_line = [](int line) { return line < 0 || line >= kLines; };
    const auto bad_axis = [](int axis) { return axis < 0 || axis >= kAxes; };
    const auto bad_place = [&](const std::optional<int>& line) { return line && bad_line(*line); };
    return std::ranges::any_of(view.rows, bad_line) || std::ranges::any_of(view.scrolls, bad_line) ||
           std::ranges::any_of(view.counters, bad_place) || std::ranges::any_of(run.statuses, bad_axis);
  }
};

struct Situation {
  const char* name;
  RunWindow window;
  bool stopped;
};

constexpr std::array kSituations = {
    Situation{"no run window", RunWindow::None, false},
    Situation{"status window", RunWindow::ExecStatus, false},
    Situation{"emulator", RunWindow::fakeMMI, false},
    Situation{"after Stop", RunWindow::None, true},
};

/// Why a message was handled wrongly; nothing when it was handled as it must be.
std::string Complaint(WatchedDesk& d, const Situation& situation, const std::array<int, 4>& m) {
  d.Forget();
  d.run.active = situation.window;
  d.source.link.Stopped = situation.stopped;
  HandleMsg(d.desk, Bytes({m[0], m[1], m[2], m[3]}));
  const bool acknowledges = Acknowledged(m[0]) && !situation.stopped;
  const auto acknowledged = std::ranges::count(d.port.sent, std::string("I"));
  if (d.OutOfRange()) return "painted out of range";
  if (acknowledged != (acknowledges ? 1 : 0)) return "acknowledged wrongly";
  if (d.boxes.shown.size() != (ShowsBox(m[0], m[1], m[2]) ? 1U : 0U)) return "a box too many or too few";
  if (static_cast<int>(d.view.rows.size()) != RowsPainted(m[0], m[1], m[2], situation.stopped))
    return "rows painted wrongly";
  if (static_cast<int>(d.run.statuses.size()) != AxesPainted(m[0], situation.window))
    return "lights painted wrongly";
  const bool faulted = m[0] == 211 && m[1] < kAxes;
  if (d.run.faults.size() != (faulted ? 1U : 0U)) return "fault panel wrong";
  if (!acknowledges && m[0] != 255 && !d.port.sent.empty()) return "something went out";
  return "";
}

class EveryHeader : public ::testing::TestWithParam<Situation> {};

TEST_P(EveryHeader, WithEveryPayloadStaysInRangeAndIsAcknowledgedWhereItMustBe) {
  WatchedDesk d;
  int messages = 0;
  for (int header = 128; header <= 255; ++header) {
    for (int b2 = 0; b2 < 128; ++b2) {
      for (const int b3 : kPayloads) {
        for (const int b4 : kPayloads) {
          ++messages;
          const std::string complaint = Complaint(d, GetParam(), {header, b2, b3, b4});
          ASSERT_EQ(complaint, "") << header << ' ' << b2 << ' ' << b3 << ' ' << b4;
        }
      }
    }
  }
  EXPECT_EQ(messages, 128 * 128 * 144);
}

INSTANTIATE_TEST_SUITE_P(BadMessages, EveryHeader, ::testing::ValuesIn(kSituations),
                         [](const auto& situation) {
                           std::string name = situation.param.name;
                           std::erase(name, ' ');
                           return name;
                         });

TEST(BadMessages, AnAxisThatThereIsNotIsLostWithoutAWord) {
  for (const int axis : {8, 9, 127}) {
    for (const int header : {252, 250, 249, 240, 212, 211}) {
      WatchedDesk d;
      d.run.active = RunWindow::ExecStatus;
      HandleMsg(d.desk, Bytes({header, axis, 1, 1}));
      EXPECT_TRUE(d.boxes.shown.empty()) << header << ' ' << axis;
      EXPECT_TRUE(d.run.faults.empty()) << header << ' ' << axis;
      EXPECT_EQ(d.run.active, RunWindow::ExecStatus) << header << ' ' << axis;
    }
  }
}

TEST(BadMessages, TheLastLineThatTheWireCanNamePaintsNothing) {
  for (const int header : {254, 236, 237}) {
    WatchedDesk d;
    // 127 * 16 + 127
    HandleMsg(d.desk, Bytes({header, 127, 127, 0}));
    EXPECT_TRUE(d.view.rows.empty()) << header;
    EXPECT_TRUE(d.view.scrolls.empty()) << header;
    EXPECT_EQ(d.port.sent.size(), Acknowledged(header) ? 1U : 0U) << header;
  }
}

TEST(BadMessages, AMessageCutAnywhereIsDroppedAndTheNextIsWhole) {
  const std::string whole = Bytes({254, 1, 2, 0});
  for (int header = 128; header <= 255; ++header) {
    for (std::size_t cut = 1; cut < 4; ++cut) {
      WatchedDesk d;
      d.port.Receive(Bytes({header, 1, 8, 1}).substr(0, cut) + whole);
      EXPECT_EQ(d.view.scrolls, std::vector<int>{18}) << header << " cut behind byte " << cut;
      EXPECT_EQ(d.port.AllSent(), "I") << header;
      EXPECT_TRUE(d.boxes.shown.empty()) << header;
      EXPECT_FALSE(d.source.link.InMsg) << header;
    }
  }
}

TEST(BadMessages, AHeaderInsideAMessageStartsANewOne) {
  for (std::size_t at = 1; at < 4; ++at) {
    for (int header = 128; header <= 255; ++header) {
      WatchedDesk d;
      std::string message = Bytes({254, 1, 2, 0});
      message[at] = static_cast<char>(static_cast<unsigned char>(header));
      d.port.Receive(message);
      EXPECT_TRUE(d.port.sent.empty()) << header << " at " << at;
      EXPECT_TRUE(d.source.link.InMsg) << header << " at " << at;
      EXPECT_EQ(d.source.link.MsgBuf.size(), 4 - at) << header << " at " << at;
    }
  }
}

/// The framing as it is told: counts the whole messages that are answered, and keeps the text between.
struct Reading {
  int acknowledged = 0;
  std::string text;
};

Reading Read(const std::string& stream) {
  Reading reading;
  std::string message;
  for (const char c : stream) {
    const bool header = static_cast<unsigned char>(c) >= 128;
    if (header) {
      message = c;
    } else if (message.empty()) {
      reading.text += c;
    } else {
      message += c;
    }
    if (message.size() < 4) continue;
    if (Acknowledged(static_cast<unsigned char>(message[0]))) ++reading.acknowledged;
    message.clear();
  }
  return reading;
}

/// Pieces of messages, whole ones, payload without a header and display text, one behind another.
std::string BrokenStream(std::mt19937& random) {
  std::string stream;
  for (int piece = 0; piece < 30; ++piece) {
    // No halt: it would end the display.
    constexpr std::array kHeaders = {254, 254, 236, 237, 235, 241, 213, 221, 200, 128, 253};
    const int header = kHeaders[random() % kHeaders.size()];
    const auto payload = [&random] { return static_cast<int>(random() % 128); };
    const std::string message = Bytes({header, payload(), payload(), payload()});
    switch (random() % 4) {
      case 0: stream += message; break;
      case 1: stream += message.substr(0, 1 + random() % 3); break;
      case 2: stream += message + message; break;
      case 3: stream += std::string(1 + random() % 3, static_cast<char>('a' + random() % 26)); break;
    }
  }
  return stream;
}

/// Characters of the text that a display keeps, in whatever rows.
std::string Shown(const Source& source) {
  std::string shown;
  for (const std::string& line : source.display.textline) shown += line;
  std::erase_if(shown, [](char c) { return c < 'a' || c > 'z'; });
  std::ranges::sort(shown);
  return shown;
}

TEST(BadMessages, BrokenAndMergedMessagesInAnyPiecesAreReadByTheSameRules) {
  std::mt19937 random(4);
  int messages = 0;
  for (int round = 0; round < 2000; ++round) {
    SCOPED_TRACE(round);
    WatchedDesk d;
    d.run.active = RunWindow::fakeMMI;
    d.source.display.MMIActive = true;
    const std::string stream = BrokenStream(random);
    for (std::size_t at = 0; at < stream.size();) {
      const std::size_t size = 1 + random() % 9;
      d.port.Receive(stream.substr(at, size));
      at += size;
    }
    const Reading reading = Read(stream);
    ASSERT_EQ(d.port.AllSent(), std::string(static_cast<std::size_t>(reading.acknowledged), 'I'));
    ASSERT_FALSE(d.OutOfRange());
    messages += reading.acknowledged;
    // Payload that has lost its header is text too; without an escape or a backspace it can be compared.
    if (reading.text.find_first_of("\x1B\b") != std::string::npos) continue;
    Source expected;
    expected.display.textline[0] = reading.text;
    EXPECT_EQ(Shown(d.source), Shown(expected));
  }
  EXPECT_GT(messages, 10000);
}

TEST(BadMessages, DisplayTextBetweenMessagesIsShownAndLeavesThemWhole) {
  WatchedDesk d;
  d.run.active = RunWindow::fakeMMI;
  d.source.display.MMIActive = true;
  d.port.Receive("He" + Bytes({254, 0, 3, 0}) + "ll" + Bytes({236, 0, 4}) + '\0' + "o");
  EXPECT_EQ(d.source.display.textline[0], "Hello");
  EXPECT_EQ(d.view.scrolls, (std::vector<int>{3, 4}));
  EXPECT_EQ(d.port.AllSent(), "II");
}

TEST(BadMessages, EveryByteInEveryStateOfTheEscapesLeavesTheCursorOnTheDisplay) {
  WatchedDesk d;
  d.source.display.MMIActive = true;
  std::mt19937 random(5);
  constexpr std::string_view kLikely = "\x1B\x1BYEKM \"#$\b\n\r";
  for (int i = 0; i < 200000; ++i) {
    const char c = random() % 2 == 0 ? kLikely[random() % kLikely.size()] : static_cast<char>(random() % 128);
    Char2MMI(d.desk.source.display, d.desk.run, c);
    ASSERT_GE(d.source.display.CurRow, 0);
    ASSERT_LE(d.source.display.CurRow, 3);
    ASSERT_TRUE(d.source.display.EscPending || !d.source.display.RowPending);
    ASSERT_TRUE(d.source.display.RowPending || !d.source.display.RowGot);
  }
}

}  // namespace
}  // namespace tavlo::testing
