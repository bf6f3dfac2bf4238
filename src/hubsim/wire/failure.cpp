// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/wire/failure.h"

#include <algorithm>
#include <charconv>

namespace tavlo::hubsim {
namespace {

constexpr char kSpurious = '~';
constexpr std::size_t kBytesPerDrive = 2;
constexpr std::size_t kBytesPerRevision = 3;
constexpr char kNoSuchIdentity = '\xC8';
constexpr char kNoSuchModel = 16;

bool CountsAnswers(Reply reply) {
  return reply == Reply::Line || reply == Reply::System || reply == Reply::Pool;
}

void ReplaceAt(std::string& bytes, std::size_t index, char value) {
  if (index < bytes.size()) bytes[index] = value;
}

void TurnLast(std::string& bytes) {
  if (!bytes.empty()) bytes.back() = static_cast<char>(bytes.back() ^ 1);
}

}  // namespace

std::optional<FailurePlan> ParseFailure(std::string_view text) {
  const std::size_t colon = text.find(':');
  const std::string_view name = text.substr(0, colon);
  const auto* row = std::ranges::find(kFailures, name, &FailureRow::name);
  if (row == kFailures.end()) return std::nullopt;
  FailurePlan plan{row->mode, 1};
  if (colon == std::string_view::npos) return plan;
  const std::string_view number = text.substr(colon + 1);
  const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), plan.at);
  const bool whole = error == std::errc() && end == number.data() + number.size() && plan.at >= 1;
  if (!whole || row->parameter == Parameter::None) return std::nullopt;
  return plan;
}

SpoiledReply SpoilReply(const FailurePlan& plan, Reply reply, std::int64_t index, std::string bytes) {
  const FailureRow& row = RowOf(plan.mode);
  if (row.reply != reply || (CountsAnswers(reply) && index != plan.at)) return {std::move(bytes), 0};
  const auto at = static_cast<std::size_t>(plan.at);
  switch (row.spoil) {
    case Spoil::Nothing: break;
    case Spoil::Silence: bytes.clear(); break;
    case Spoil::Late: return {std::move(bytes), kLateSeconds};
    case Spoil::OneByte: bytes.resize(std::min<std::size_t>(bytes.size(), 1)); break;
    case Spoil::LastGone: bytes.resize(bytes.empty() ? 0 : bytes.size() - 1); break;
    case Spoil::OneMore:
    case Spoil::Glued: bytes += kSpurious; break;
    case Spoil::LastWrong: TurnLast(bytes); break;
    case Spoil::Other: bytes = std::string(1, kSpurious); break;
    case Spoil::FirstN: bytes.resize(std::min(bytes.size(), at)); break;
    case Spoil::Model16: ReplaceAt(bytes, 1, kNoSuchModel); break;
    case Spoil::Strange: ReplaceAt(bytes, at * kBytesPerDrive - 1, kNoSuchIdentity); break;
    case Spoil::Missing: ReplaceAt(bytes, at * kBytesPerDrive - 1, '\0'); break;
    case Spoil::Letters:
      for (std::size_t i = 1; i <= kBytesPerRevision; ++i) ReplaceAt(bytes, at * kBytesPerRevision - i, '?');
      break;
  }
  return {std::move(bytes), 0};
}

}  // namespace tavlo::hubsim
