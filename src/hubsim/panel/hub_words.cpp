// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/panel/hub_words.h"

#include <algorithm>
#include <array>

#include "hubsim/mount/device_link.h"
#include "hubsim/program/line_codes.h"
#include "hubsim/program/statement.h"

namespace tavlo::hubsim {
namespace {

struct KindRow {
  LineCode code;
  std::string_view words;
};

constexpr std::array<KindRow, kLineCodes> kKinds{{
    {LineCode::Feed, "feed to length"},
    {LineCode::FeedReturn, "feed and return"},
    {LineCode::FeedSensor, "feed to sensor"},
    {LineCode::FeedSensorReturn, "feed to sensor and return"},
    {LineCode::WaitTime, "wait time"},
    {LineCode::WaitInput, "wait input"},
    {LineCode::GoTo, "go to"},
    {LineCode::Repeat, "repeat"},
    {LineCode::EndRepeat, "end repeat"},
    {LineCode::SetOutput, "set output"},
    {LineCode::IfInput, "if input"},
    {LineCode::Empty, "empty"},
    {LineCode::SeekHome, "seek home"},
    {LineCode::Comment, "comment"},
    {LineCode::Prompt, "prompt"},
    {LineCode::FeedPosition, "feed to position"},
    {LineCode::MotorPower, "motor off or on"},
    {LineCode::SetPosition, "set position"},
    {LineCode::FollowKnob, "follow knob"},
    {LineCode::MotorCurrent, "motor current"},
    {LineCode::IfInputs, "if inputs"},
    {LineCode::FeedOutput, "feed with output"},
    {LineCode::FeedChange, "feed with change of speed"},
    {LineCode::WaitInputs, "wait inputs"},
    {LineCode::FeedSafety, "feed to sensor with safety distance"},
    {LineCode::ResetLoop, "reset loop"},
    {LineCode::Menu, "menu"},
    {LineCode::LearnPosition, "learn position"},
    {LineCode::Call, "call"},
    {LineCode::Return, "return"},
    {LineCode::IfMoving, "if moving"},
    {LineCode::StartStop, "start or stop motion"},
}};

constexpr bool InCodeOrder() {
  for (std::size_t i = 0; i < kKinds.size(); ++i) {
    if (static_cast<std::size_t>(kKinds[i].code) != i) return false;
  }
  return true;
}
static_assert(InCodeOrder(), "the table is indexed by the code");

constexpr std::string_view kHexDigits = "0123456789abcdef";
constexpr std::size_t kRowBytes = 16;
constexpr std::size_t kOffsetWidth = 4;

void AppendHex(std::string& text, std::uint8_t byte) {
  text += kHexDigits[byte >> 4];
  text += kHexDigits[byte & 0xF];
}

void AppendPadded(std::string& text, std::size_t number) {
  const std::string digits = std::to_string(number);
  text.append(digits.size() < kOffsetWidth ? kOffsetWidth - digits.size() : 0, ' ');
  text += digits;
}

bool IsLetter(std::uint8_t byte) {
  return (byte >= 0x20 && byte < 0x7F) || byte >= 0xA0;
}

/// A feed to length has the code 0 too, but never with a speed and an acceleration of 0.
bool IsBlank(Slot slot) {
  return std::ranges::all_of(slot, [](std::uint8_t byte) { return byte == 0; });
}

std::string AtLine(std::string words, std::string_view joint, std::optional<int> line) {
  if (line) words += std::string(joint) + "line " + std::to_string(*line + 1);
  return words;
}

}  // namespace

std::string TitleWords(const std::string& link) {
  const auto comm = CommOf(link);
  return "Simulated hub on " + (comm ? "Comm " + std::to_string(*comm) : link);
}

std::string FailureWords(const FailureRow& row) {
  std::string words(row.meaning);
  if (words[0] >= 'a' && words[0] <= 'z') words[0] = static_cast<char>(words[0] - 'a' + 'A');
  return words;
}

std::string StateWords(HubState state, std::optional<int> line) {
  switch (state) {
    case HubState::Idle: return "idle";
    case HubState::Downloading: return "downloading";
    case HubState::Passthrough: return "passthrough to the drives";
    case HubState::Running: return AtLine("running", " ", line);
    case HubState::Paused: return AtLine("paused", " in ", line);
    case HubState::Ended: return "ended";
    case HubState::Halted: return "halted";
  }
  return {};
}

std::string LineWords(Slot slot, std::uint8_t firmware) {
  if (IsBlank(slot)) return "nothing";
  const std::size_t code = slot[0] & kCodeMask;
  if (code >= kKinds.size()) return "no known line";
  std::string words(kKinds[code].words);
  if (const auto axis = AxisOf(ReadStatement(slot, firmware))) {
    words += ", axis " + std::to_string(*axis + 1);
  }
  return words;
}

std::span<const std::uint8_t> LineBytes(Slot slot, std::uint8_t firmware) {
  if (IsBlank(slot)) return {};
  std::size_t size = 1;
  while (size < slot.size() && !LineComplete(slot.first(size), firmware)) ++size;
  return slot.first(size);
}

std::string HexWords(std::span<const std::uint8_t> bytes) {
  std::string text;
  for (const std::uint8_t byte : bytes) {
    if (!text.empty()) text += ' ';
    AppendHex(text, byte);
  }
  return text;
}

std::string SettingsText(MemoryView memory) {
  std::string text;
  for (std::size_t axis = 0; axis < kAxisCount; ++axis) {
    const auto block = memory.subspan(kSystemOffset + axis * kAxisBlockSize, kAxisBlockSize);
    if (axis > 0) text += '\n';
    text += "Axis " + std::to_string(axis + 1);
    for (std::size_t at = 0; at < block.size(); at += kRowBytes) {
      text += at == 0 ? "  " : "\n        ";
      text += HexWords(block.subspan(at, kRowBytes));
    }
  }
  return text;
}

std::string PoolText(MemoryView memory) {
  const auto pool = memory.subspan(kPoolOffset, kPoolSize);
  std::string text;
  bool fresh = true;
  for (std::size_t at = 0; at < pool.size() && pool[at] != 0; ++at) {
    if (fresh) {
      if (at > 0) text += '\n';
      AppendPadded(text, at);
      text += "  ";
    }
    fresh = pool[at] == kTextEnd;
    if (fresh) continue;
    if (IsLetter(pool[at])) {
      text += static_cast<char>(pool[at]);
    } else {
      text += "\\x";
      AppendHex(text, pool[at]);
    }
  }
  return text;
}

}  // namespace tavlo::hubsim
