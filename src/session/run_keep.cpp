// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "session/run_keep.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/number_format.h"

namespace tavlo {
namespace {

/// "run-", the date and the time of the begin in UTC, a number that tells runs of one second apart.
constexpr std::string_view kPicture = "run-00000000-000000-00.csv";
constexpr int kMostOfASecond = 99;
/// The first two lines, however long the program's name is.
constexpr std::size_t kHeadBytes = 4096;
/// Files of ours are never larger; another program may have had its hands on one.
constexpr std::size_t kReadBytes = 2 * RunKeep::kMostBytes;

std::string NameFor(std::time_t began, int number) {
  std::array<char, 32> when{};
  const std::tm* const utc = std::gmtime(&began);
  const std::size_t size = utc == nullptr ? 0 : std::strftime(when.data(), when.size(), "%Y%m%d-%H%M%S", utc);
  return "run-" + std::string(when.data(), size) + "-" + Format(number, "00") + ".csv";
}

}  // namespace

bool IsRunName(std::string_view name) {
  return name.size() == kPicture.size() && std::ranges::equal(name, kPicture, [](char c, char pictured) {
           return pictured == '0' ? c >= '0' && c <= '9' : c == pictured;
         });
}

Outcome RunKeep::Keep(RunLog& log) {
  log.Settle();
  if (log.Run() == 0) return {};
  if (log.Run() != std::exchange(run_, log.Run())) {
    TakeName(log.Began());
    RemoveOldest();
    whole_ = false;
    kept_.reset();
  }
  if (whole_) return {};
  if (!log.Open()) {
    Outcome replaced = Replace(log);
    whole_ = static_cast<bool>(replaced);
    return replaced;
  }
  // Rows that went before they were kept would be missing unseen.
  if (!kept_ || *kept_ < log.First() || bytes_ > kMostBytes) return Replace(log);
  if (*kept_ == log.Last()) return {};
  // The file may have been removed.
  Outcome added = Add(log);
  return added ? std::move(added) : Replace(log);
}

/// Where no name can be claimed the folder cannot be written to, which the first write tells.
void RunKeep::TakeName(std::time_t began) {
  const std::vector<std::string> taken = folder_.Names();
  for (int number = 1; number <= kMostOfASecond; ++number) {
    name_ = NameFor(began, number);
    if (std::ranges::find(taken, name_) == taken.end() && folder_.Claim(name_)) return;
  }
}

void RunKeep::RemoveOldest() {
  std::vector<std::string> others = Names();
  std::erase(others, name_);
  for (std::size_t i = kRuns - 1; i < others.size(); ++i) {
    // That of another Composer that is up stays its own.
    if (folder_.Claim(others[i])) folder_.Remove(others[i]);
  }
}

Outcome RunKeep::Replace(const RunLog& log) {
  const std::string csv = CsvOf(log);
  Outcome replaced = folder_.Replace(name_, csv);
  kept_.reset();
  if (replaced) kept_ = log.Last();
  bytes_ = csv.size();
  return replaced;
}

Outcome RunKeep::Add(const RunLog& log) {
  std::string rows;
  for (std::uint64_t number = *kept_; number < log.Last(); ++number) rows += CsvOf(RowOf(log, number));
  Outcome added = folder_.Append(name_, rows);
  kept_ = log.Last();
  bytes_ += rows.size();
  return added;
}

std::vector<std::string> RunKeep::Names() const {
  std::vector<std::string> names = folder_.Names();
  std::erase_if(names, [](const std::string& name) { return !IsRunName(name); });
  std::ranges::sort(names, std::greater());
  return names;
}

std::optional<RunRow> RunKeep::BeginOf(const std::string& name) const {
  const auto rows = ReadRunRows(folder_.Read(name, kHeadBytes).value_or(""));
  if (!rows || rows->empty()) return std::nullopt;
  return rows->front();
}

std::optional<std::vector<RunRow>> RunKeep::Read(const std::string& name) const {
  const auto csv = folder_.Read(name, kReadBytes);
  return csv ? ReadRunRows(*csv) : std::nullopt;
}

}  // namespace tavlo
